#include "platform/windows/FoundEntries.h"

#include "platform/Folders.h"
#include "platform/windows/WidePath.h"

namespace zv {

FoundEntries::FoundEntries(const std::string& folder)
    : m_find(::FindFirstFileW(widePath(inFolder(folder, "*")).c_str(), &m_entry))
{
}

FoundEntries::~FoundEntries()
{
    if (m_find != INVALID_HANDLE_VALUE)
        ::FindClose(m_find);
}

bool FoundEntries::next()
{
    // The root of an empty drive holds not even itself.
    DWORD reason = m_find == INVALID_HANDLE_VALUE ? ::GetLastError() : ERROR_SUCCESS;
    if (reason == ERROR_FILE_NOT_FOUND)
        reason = ERROR_NO_MORE_FILES;
    while (reason == ERROR_SUCCESS) {
        if (!m_isFirst && !::FindNextFileW(m_find, &m_entry)) {
            reason = ::GetLastError();
            break;
        }
        m_isFirst = false;
        const std::wstring_view found = m_entry.cFileName;
        if (found != L"." && found != L"..")
            return true;
    }
    m_atEnd = reason == ERROR_NO_MORE_FILES;
    ::SetLastError(reason);
    return false;
}

std::string FoundEntries::name() const
{
    const std::string name = textOf(m_entry.cFileName);
    return wideText(name) == m_entry.cFileName ? name : textOf(m_entry.cAlternateFileName);
}

} // namespace zv
