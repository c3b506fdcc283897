#pragma once

#include "platform/Automation.h"
#include "platform/windows/ComPointer.h"

#include <functional>
#include <oaidl.h>

namespace zv {

/// A VARIANT, cleared at the end of its life.
class ComValue {
public:
    ComValue();
    ~ComValue();
    ComValue(const ComValue&) = delete;
    ComValue& operator=(const ComValue&) = delete;
    ComValue(ComValue&& other) noexcept;

    VARIANT* get() { return &m_variant; }
    const VARIANT& variant() const { return m_variant; }
    /// Gives the content away, to be cleared by someone else.
    VARIANT release();

private:
    VARIANT m_variant;
};

/// The value as another program takes it. An object goes out as what `dispatchOf` says, null refuses it.
/// Errors: Failed, a text that has no wide form, or an object of another carrier.
Result<ComValue> toVariant(const AutomationValue& value,
                           const std::function<IDispatch*(const AutomationObjectPtr&)>& dispatchOf);

/// What another program answered; `wrap` makes an object of its dispatch interface. An answer by reference is
/// followed. Errors: Failed, a kind of value that has no place here.
Result<AutomationValue>
fromVariant(const VARIANT& variant,
            const std::function<AutomationObjectPtr(ComPointer<IDispatch> object)>& wrap);

/// A text as automation takes it, to be freed by the caller. Errors: Failed, it has no wide form.
Result<BSTR> toBstr(std::string_view text);
/// In the program's own text; null is an empty one.
std::string bstrText(BSTR text);

} // namespace zv
