#pragma once

#include <atomic>
#include <unknwn.h>

// Nobody deletes a COM object through its interface, so interfaces have no destructor.
#pragma GCC diagnostic ignored "-Wnon-virtual-dtor"

namespace zv {

/// Counts for a COM object, which deletes itself with the last one.
template <class Interface> class Counted : public Interface {
public:
    virtual ~Counted() = default;
    ULONG STDMETHODCALLTYPE AddRef() override { return ++m_count; }
    ULONG STDMETHODCALLTYPE Release() override
    {
        const ULONG left = --m_count;
        if (left == 0)
            delete this;
        return left;
    }
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID wanted, void** object) override
    {
        const bool known = wanted == IID_IUnknown || wanted == __uuidof(Interface);
        *object = known ? this : nullptr;
        if (known)
            AddRef();
        return known ? S_OK : E_NOINTERFACE;
    }

private:
    std::atomic<ULONG> m_count{1};
};

} // namespace zv
