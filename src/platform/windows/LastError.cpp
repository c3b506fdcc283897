#include "platform/windows/LastError.h"

#include "platform/windows/WidePath.h"

#include <windows.h>

namespace zv {

Error lastError(std::string_view path)
{
    const DWORD reason = ::GetLastError();
    ErrorCode code = ErrorCode::Failed;
    if (reason == ERROR_FILE_NOT_FOUND || reason == ERROR_PATH_NOT_FOUND || reason == ERROR_INVALID_NAME)
        code = ErrorCode::NotFound;
    else if (reason == ERROR_ACCESS_DENIED || reason == ERROR_WRITE_PROTECT ||
             reason == ERROR_SHARING_VIOLATION)
        code = ErrorCode::Denied;
    return Error{code, std::string(path) + ": " + systemText(reason)};
}

std::string systemText(unsigned long code)
{
    wchar_t text[256];
    DWORD count = ::FormatMessageW(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS, nullptr, code,
                                   0, text, static_cast<DWORD>(std::size(text)), nullptr);
    while (count > 0 && (text[count - 1] == L'\n' || text[count - 1] == L'\r' || text[count - 1] == L'.'))
        --count;
    return textOf(std::wstring_view(text, count));
}

} // namespace zv
