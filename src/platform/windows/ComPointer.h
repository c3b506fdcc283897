#pragma once

#include <unknwn.h>
#include <utility>

namespace zv {

/// Holds one count on a COM object.
template <class T> class ComPointer {
public:
    ComPointer() = default;
    /// Takes over the count that `object` came with.
    static ComPointer adopt(T* object)
    {
        ComPointer pointer;
        pointer.m_object = object;
        return pointer;
    }
    /// Adds a count of its own.
    static ComPointer share(T* object)
    {
        if (object != nullptr)
            object->AddRef();
        return adopt(object);
    }
    ComPointer(const ComPointer& other) : ComPointer(share(other.m_object)) {}
    ComPointer(ComPointer&& other) noexcept : m_object(std::exchange(other.m_object, nullptr)) {}
    ComPointer& operator=(ComPointer other) noexcept
    {
        std::swap(m_object, other.m_object);
        return *this;
    }
    ~ComPointer()
    {
        if (m_object != nullptr)
            m_object->Release();
    }

    T* get() const { return m_object; }
    T* operator->() const { return m_object; }
    explicit operator bool() const { return m_object != nullptr; }
    /// Where a call puts an object; only for a pointer that holds none.
    T** out() { return &m_object; }
    void** outVoid() { return reinterpret_cast<void**>(&m_object); }

private:
    T* m_object = nullptr;
};

} // namespace zv
