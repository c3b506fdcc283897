#pragma once

#include "platform/windows/ComCounted.h"
#include "platform/windows/ComPointer.h"

#include <algorithm>
#include <cstddef>
#include <oaidl.h>
#include <utility>
#include <vector>

namespace zv {

/// Walks over the members of a collection.
class ComMembers final : public Counted<IEnumVARIANT> {
public:
    explicit ComMembers(std::vector<ComPointer<IDispatch>> objects, std::size_t next = 0)
        : m_objects(std::move(objects)), m_next(next)
    {
    }
    HRESULT STDMETHODCALLTYPE Next(ULONG wanted, VARIANT* members, ULONG* given) override
    {
        ULONG count = 0;
        for (; count < wanted && m_next < m_objects.size(); ++count, ++m_next) {
            m_objects[m_next]->AddRef();
            members[count].vt = VT_DISPATCH;
            members[count].pdispVal = m_objects[m_next].get();
        }
        if (given != nullptr)
            *given = count;
        return count == wanted ? S_OK : S_FALSE;
    }
    HRESULT STDMETHODCALLTYPE Skip(ULONG count) override
    {
        const std::size_t left = m_objects.size() - m_next;
        m_next += std::min<std::size_t>(count, left);
        return count <= left ? S_OK : S_FALSE;
    }
    HRESULT STDMETHODCALLTYPE Reset() override
    {
        m_next = 0;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE Clone(IEnumVARIANT** other) override
    {
        *other = new ComMembers(m_objects, m_next);
        return S_OK;
    }

private:
    std::vector<ComPointer<IDispatch>> m_objects;
    std::size_t m_next;
};

} // namespace zv
