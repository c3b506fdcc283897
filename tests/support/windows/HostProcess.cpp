#include "support/HostProcess.h"

#include "platform/Files.h"
#include "platform/HostEvents.h"
#include "platform/windows/ComAutomation.h"
#include "platform/windows/ComClasses.h"
#include "platform/windows/WidePath.h"
#include "support/TemporaryFolder.h"
#include "support/TestCarrier.h"

#include <chrono>
#include <functional>
#include <objbase.h>
#include <set>
#include <windows.h>

namespace zv::test {

namespace {

constexpr std::chrono::seconds kLongestStart{60};
constexpr const char* kHost = "AutoCAD.Application";

void setText(HKEY root, const std::wstring& key, const std::wstring& text)
{
    ::RegSetKeyValueW(root, key.c_str(), nullptr, REG_SZ, text.c_str(),
                      static_cast<DWORD>((text.size() + 1) * sizeof(wchar_t)));
}

std::wstring hostCommand(const std::string& script)
{
    return wideText("\"" ZELVORA_SCRIPTED_HOST "\" \"" + script + "\"");
}

/// Attaches again and again until `isEnough` of whether it went.
void attachUntil(const std::function<bool(bool)>& isEnough)
{
    const std::unique_ptr<EventPump> pump = testPump();
    const std::unique_ptr<Automation> carrier = testCarrier(*pump);
    const auto deadline = std::chrono::steady_clock::now() + kLongestStart;
    while (!isEnough(bool(carrier->attach(kHost))) && std::chrono::steady_clock::now() < deadline)
        pump->wait(-1, 5);
}

} // namespace

struct HostPlace::State {
    TemporaryFolder folder;
    HANDLE host = nullptr;
    int scripts = 0;
    std::set<std::wstring> keys; ///< To be deleted at the end.

    std::string writeScript(const std::string& script)
    {
        const std::string path = folder.file("script" + std::to_string(++scripts));
        static_cast<void>(writeFile(path, "transcript " + folder.file("transcript") + "\n" + script));
        return path;
    }

    void write(const std::wstring& key, const std::wstring& sub, const std::wstring& text)
    {
        const std::wstring path = L"Software\\Classes\\" + key;
        keys.insert(path);
        setText(classesRoot(), path + sub, text);
    }

    /// Gives the name a class of its own, so that a host of an earlier test is not found under it.
    std::wstring registerName(const std::string& progId)
    {
        GUID id{};
        static_cast<void>(::CoCreateGuid(&id));
        wchar_t text[40];
        ::StringFromGUID2(id, text, static_cast<int>(std::size(text)));
        write(wideText(progId), L"\\CLSID", text);
        write(std::wstring(L"CLSID\\") + text, L"\\ProgID", wideText(progId));
        return text;
    }
};

HostPlace::HostPlace() : m_state(std::make_unique<State>())
{
    m_state->registerName(kHost);
}

HostPlace::~HostPlace()
{
    end();
    for (const std::wstring& key : m_state->keys)
        ::RegDeleteTreeW(classesRoot(), key.c_str());
}

void HostPlace::run(const std::string& script)
{
    m_state->registerName(kHost);
    std::wstring command = hostCommand(m_state->writeScript("listen AutoCAD.Application\n" + script));
    STARTUPINFOW start{};
    start.cb = sizeof start;
    PROCESS_INFORMATION process{};
    if (!::CreateProcessW(nullptr, command.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &start,
                          &process))
        return;
    ::CloseHandle(process.hThread);
    m_state->host = process.hProcess;
    attachUntil([this](bool attached) {
        return attached || ::WaitForSingleObject(m_state->host, 0) != WAIT_TIMEOUT;
    });
}

void HostPlace::end()
{
    if (m_state->host == nullptr)
        return;
    ::TerminateProcess(m_state->host, 1);
    ::WaitForSingleObject(m_state->host, INFINITE);
    ::CloseHandle(m_state->host);
    m_state->host = nullptr;
    // The system still lists a program for a moment that was killed.
    attachUntil([](bool attached) { return !attached; });
}

void HostPlace::install(const std::string& progId, const std::string& script)
{
    const std::string path = m_state->writeScript(script);
    const std::wstring id = m_state->registerName(progId);
    m_state->write(L"CLSID\\" + id, L"\\LocalServer32", hostCommand(path));
}

std::string HostPlace::transcript() const
{
    return readFile(m_state->folder.file("transcript")).valueOr("");
}

std::unique_ptr<EventPump> testPump()
{
    return std::make_unique<PlainEventPump>();
}

std::unique_ptr<Automation> testCarrier(EventPump& pump, CarrierPatience patience)
{
    return comAutomation(pump, std::move(patience));
}

} // namespace zv::test
