#include "platform/windows/ComClasses.h"

namespace zv {

HKEY classesRoot()
{
    static const HKEY root = [] {
        const wchar_t* const probe = L"Software\\Classes\\Zelvora.Probe";
        ::RegSetKeyValueW(HKEY_CURRENT_USER, probe, nullptr, REG_SZ, L"", sizeof(wchar_t));
        HKEY seen = nullptr;
        const bool merged = ::RegOpenKeyW(HKEY_CLASSES_ROOT, L"Zelvora.Probe", &seen) == ERROR_SUCCESS;
        if (merged)
            ::RegCloseKey(seen);
        ::RegDeleteTreeW(HKEY_CURRENT_USER, probe);
        return merged ? HKEY_CURRENT_USER : HKEY_LOCAL_MACHINE;
    }();
    return root;
}

} // namespace zv
