#include "platform/HelpSystem.h"

#include "platform/windows/WidePath.h"

#define WIN32_LEAN_AND_MEAN
#include <windows.h>

namespace zv {
namespace {

using HtmlHelpCall = HWND(WINAPI*)(HWND caller, LPCWSTR file, UINT command, DWORD_PTR data);

/// What a search starts with. Its own size field holds 32, the size that the viewer knows on every system.
struct SearchQuery {
    int size = 32;
    BOOL unicode = TRUE;
    LPCWSTR words = nullptr;
    LONG proximity = 0;
    BOOL stemmed = FALSE;
    BOOL titleOnly = FALSE;
    BOOL execute = FALSE;
    LPCWSTR window = nullptr;
};

/// The handle as a number of 32 bits, of which the system uses no more on any machine.
std::int32_t numberOf(HWND window)
{
    return static_cast<std::int32_t>(reinterpret_cast<INT_PTR>(window));
}

HWND windowOf(std::int32_t handle)
{
    return reinterpret_cast<HWND>(static_cast<INT_PTR>(handle));
}

/// HtmlHelp, brought in at the first call: a system without it only lacks help.
class HtmlHelp : public HelpSystem {
public:
    std::int32_t show(const std::string& path, HelpCommand command, std::uint32_t contextId) override
    {
        const HtmlHelpCall call = entry();
        // The viewer itself would tell of a missing file in a message box.
        if (call == nullptr || GetFileAttributesW(widePath(path).c_str()) == INVALID_FILE_ATTRIBUTES)
            return 0;
        SearchQuery query;
        DWORD_PTR data = 0;
        if (command == HelpCommand::DisplaySearch)
            data = reinterpret_cast<DWORD_PTR>(&query);
        else if (command == HelpCommand::HelpContext)
            data = contextId;
        return numberOf(call(GetDesktopWindow(), wideText(path).c_str(), static_cast<UINT>(command), data));
    }

    bool isWindow(std::int32_t handle) override { return IsWindow(windowOf(handle)) != FALSE; }

    void close(std::int32_t handle) override { SendMessageW(windowOf(handle), WM_CLOSE, 0, 0); }

private:
    HtmlHelpCall entry()
    {
        if (m_module == nullptr)
            m_module = LoadLibraryExW(L"HHCtrl.ocx", nullptr, LOAD_LIBRARY_SEARCH_SYSTEM32);
        if (m_module == nullptr)
            return nullptr;
        return reinterpret_cast<HtmlHelpCall>(
            reinterpret_cast<void (*)()>(GetProcAddress(m_module, "HtmlHelpW")));
    }

    // Never freed: the viewer's own windows and threads outlive any one call.
    HMODULE m_module = nullptr;
};

} // namespace

std::unique_ptr<HelpSystem> makeHelpSystem()
{
    return std::make_unique<HtmlHelp>();
}

} // namespace zv
