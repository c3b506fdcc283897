#include "support/HostModel.h"
#include "support/windows/HostObject.h"

#include <chrono>
#include <io.h>
#include <oleauto.h>
#include <windows.h>

// A scripted host over COM, in a process of its own: ComHost SCRIPT [-Embedding].

// Nobody deletes a COM object through its interface, so interfaces have no destructor.
#pragma GCC diagnostic ignored "-Wnon-virtual-dtor"

namespace {

using namespace zv::test;

/// Hands out the application to who creates it.
class Factory final : public IClassFactory {
public:
    explicit Factory(IDispatch* application) : m_application(application) {}

    // It lives as long as the process, so nobody counts.
    ULONG STDMETHODCALLTYPE AddRef() override { return 2; }
    ULONG STDMETHODCALLTYPE Release() override { return 1; }
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID wanted, void** object) override
    {
        const bool known = wanted == IID_IUnknown || wanted == IID_IClassFactory;
        *object = known ? this : nullptr;
        return known ? S_OK : E_NOINTERFACE;
    }
    HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown* outer, REFIID wanted, void** object) override
    {
        *object = nullptr;
        return outer != nullptr ? CLASS_E_NOAGGREGATION : m_application->QueryInterface(wanted, object);
    }
    HRESULT STDMETHODCALLTYPE LockServer(BOOL) override { return S_OK; }

private:
    IDispatch* m_application;
};

/// The names under which the host is found.
class Doors {
public:
    explicit Doors(IDispatch* application) : m_application(application), m_factory(application) {}

    /// False when the name has no class, or the system is not ready for it; it can be tried again.
    bool open(const std::string& name)
    {
        CLSID program{};
        DWORD running = 0, factory = 0;
        if (FAILED(::CLSIDFromProgID(std::wstring(name.begin(), name.end()).c_str(), &program)) ||
            FAILED(::RegisterActiveObject(m_application, program, ACTIVEOBJECT_STRONG, &running)))
            return false;
        m_running.push_back(running);
        if (SUCCEEDED(::CoRegisterClassObject(program, &m_factory, CLSCTX_LOCAL_SERVER, REGCLS_MULTIPLEUSE,
                                              &factory)))
            m_classes.push_back(factory);
        return true;
    }
    void closeAll()
    {
        for (const DWORD door : m_running)
            ::RevokeActiveObject(door, nullptr);
        for (const DWORD door : m_classes)
            ::CoRevokeClassObject(door);
    }

private:
    IDispatch* m_application;
    Factory m_factory;
    std::vector<DWORD> m_running, m_classes;
};

} // namespace

int main(int argc, char** argv)
{
    if (argc < 2)
        return 2;
    HostModel model(argv[1]);
    ::Sleep(static_cast<DWORD>(model.delayMs));
    if (FAILED(::CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED)))
        return 3;
    HostLife life;
    Doors doors(makeHostObject(model, life, HostModel::Object{}));
    const auto start = std::chrono::steady_clock::now();
    while (!life.ends) {
        const auto passed = std::chrono::steady_clock::now() - start;
        std::erase_if(model.listening, [&](const HostModel::Listening& door) {
            return passed >= std::chrono::milliseconds(door.afterMs) && doors.open(door.name);
        });
        serveCalls(model.listening.empty() ? 100 : 20);
        // The test that wrote the script takes it away when it has ended.
        if (::_access(argv[1], 0) != 0)
            break;
    }
    // Nobody may find a host that is about to end, but its last answer still goes out.
    doors.closeAll();
    serveCalls(life.ends ? 200 : 0);
    ::TerminateProcess(::GetCurrentProcess(), 0);
}
