#include "platform/Desktop.h"

#include "platform/Text.h"

#include <windows.h>

namespace zv {

bool activateWindowByTitle(const std::string& title)
{
    const std::u16string text = wide(title);
    const HWND window = FindWindowW(nullptr, reinterpret_cast<const wchar_t*>(text.c_str()));
    if (window == nullptr)
        return false;
    if (IsIconic(window))
        ShowWindow(window, SW_RESTORE);
    return SetForegroundWindow(window) != 0;
}

} // namespace zv
