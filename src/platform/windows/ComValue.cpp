#include "platform/windows/ComValue.h"

#include "platform/Text.h"
#include "platform/Utf8.h"

#include <algorithm>
#include <array>
#include <limits>
#include <oleauto.h>

namespace zv {

namespace {

constexpr ULONG kCoordinates = 3;

/// A safe array that is destroyed unless it is given away.
class DoubleArray {
public:
    DoubleArray() : m_array(::SafeArrayCreateVector(VT_R8, 0, kCoordinates)) {}
    ~DoubleArray()
    {
        if (m_array != nullptr)
            ::SafeArrayDestroy(m_array);
    }
    DoubleArray(const DoubleArray&) = delete;
    DoubleArray& operator=(const DoubleArray&) = delete;

    bool fill(const AutomationPoint& point)
    {
        void* data = nullptr;
        if (m_array == nullptr || FAILED(::SafeArrayAccessData(m_array, &data)))
            return false;
        const std::array<double, kCoordinates> numbers = {point.x, point.y, point.z};
        std::copy(numbers.begin(), numbers.end(), static_cast<double*>(data));
        ::SafeArrayUnaccessData(m_array);
        return true;
    }
    SAFEARRAY* release() { return std::exchange(m_array, nullptr); }

private:
    SAFEARRAY* m_array;
};

struct ToVariant {
    const std::function<IDispatch*(const AutomationObjectPtr&)>& dispatchOf;

    Result<ComValue> operator()(std::monostate) const { return ComValue(); }
    Result<ComValue> operator()(MissingArgument) const
    {
        return made(VT_ERROR, [](VARIANT& v) { v.scode = DISP_E_PARAMNOTFOUND; });
    }
    Result<ComValue> operator()(bool truth) const
    {
        return made(VT_BOOL, [&](VARIANT& v) { v.boolVal = truth ? VARIANT_TRUE : VARIANT_FALSE; });
    }
    Result<ComValue> operator()(std::int64_t whole) const
    {
        using Limits = std::numeric_limits<LONG>;
        if (whole < Limits::min() || whole > Limits::max())
            return made(VT_I8, [&](VARIANT& v) { v.llVal = whole; });
        return made(VT_I4, [&](VARIANT& v) { v.lVal = static_cast<LONG>(whole); });
    }
    Result<ComValue> operator()(double number) const
    {
        return made(VT_R8, [&](VARIANT& v) { v.dblVal = number; });
    }
    Result<ComValue> operator()(const std::string& text) const
    {
        const Result<BSTR> units = toBstr(text);
        if (!units)
            return units.error();
        return made(VT_BSTR, [&](VARIANT& v) { v.bstrVal = *units; });
    }
    Result<ComValue> operator()(const AutomationPoint& point) const
    {
        DoubleArray array;
        if (!array.fill(point))
            return Error{ErrorCode::Failed, "there is no memory for a point"};
        return made(VT_ARRAY | VT_R8, [&](VARIANT& v) { v.parray = array.release(); });
    }
    Result<ComValue> operator()(const AutomationObjectPtr& object) const
    {
        IDispatch* const dispatch = dispatchOf(object);
        if (dispatch == nullptr)
            return Error{ErrorCode::Failed, "the object belongs to another program"};
        dispatch->AddRef();
        return made(VT_DISPATCH, [&](VARIANT& v) { v.pdispVal = dispatch; });
    }

private:
    template <class Fill> static Result<ComValue> made(int kind, Fill fill)
    {
        ComValue value;
        value.get()->vt = static_cast<VARTYPE>(kind);
        fill(*value.get());
        return value;
    }
};

/// Whether no byte in the text was left undecoded.
bool isValid(std::u16string_view text)
{
    while (!text.empty()) {
        const std::size_t length = decodeUtf16(text).length;
        if (length == 0)
            return false;
        text.remove_prefix(length);
    }
    return true;
}

bool isWhole(VARTYPE kind)
{
    constexpr std::array kWholeKinds = {VT_I1, VT_I2, VT_I4, VT_I8, VT_INT, VT_UI1, VT_UI2, VT_UI4, VT_UINT};
    return std::find(kWholeKinds.begin(), kWholeKinds.end(), kind) != kWholeKinds.end();
}

Error unknownKind()
{
    return {ErrorCode::Failed, "the program answered with a kind of value that is not known"};
}

Result<AutomationValue> pointOf(SAFEARRAY* array)
{
    LONG low = 0, high = 0;
    VARTYPE kind = VT_EMPTY;
    void* data = nullptr;
    if (array == nullptr || ::SafeArrayGetDim(array) != 1 || FAILED(::SafeArrayGetVartype(array, &kind)) ||
        kind != VT_R8 || FAILED(::SafeArrayGetLBound(array, 1, &low)) ||
        FAILED(::SafeArrayGetUBound(array, 1, &high)) || std::int64_t{high} - low + 1 != kCoordinates ||
        FAILED(::SafeArrayAccessData(array, &data)))
        return unknownKind();
    const double* const numbers = static_cast<const double*>(data);
    const AutomationPoint point{numbers[0], numbers[1], numbers[2]};
    ::SafeArrayUnaccessData(array);
    return AutomationValue(point);
}

Result<AutomationValue> objectOf(IUnknown* object,
                                 const std::function<AutomationObjectPtr(ComPointer<IDispatch>)>& wrap)
{
    if (object == nullptr)
        return AutomationValue(AutomationObjectPtr());
    ComPointer<IDispatch> dispatch;
    if (FAILED(object->QueryInterface(IID_IDispatch, dispatch.outVoid())))
        return unknownKind();
    return AutomationValue(wrap(std::move(dispatch)));
}

} // namespace

ComValue::ComValue()
{
    ::VariantInit(&m_variant);
}

ComValue::~ComValue()
{
    ::VariantClear(&m_variant);
}

ComValue::ComValue(ComValue&& other) noexcept : m_variant(other.release()) {}

VARIANT ComValue::release()
{
    const VARIANT content = m_variant;
    ::VariantInit(&m_variant);
    return content;
}

Result<ComValue> toVariant(const AutomationValue& value,
                           const std::function<IDispatch*(const AutomationObjectPtr&)>& dispatchOf)
{
    return std::visit(ToVariant{dispatchOf}, value);
}

Result<AutomationValue> fromVariant(const VARIANT& variant,
                                    const std::function<AutomationObjectPtr(ComPointer<IDispatch>)>& wrap)
{
    ComValue held;
    if (FAILED(::VariantCopyInd(held.get(), const_cast<VARIANT*>(&variant))))
        return unknownKind();
    const VARIANT& v = held.variant();
    ComValue whole;
    if (isWhole(v.vt) && SUCCEEDED(::VariantChangeType(whole.get(), held.get(), 0, VT_I8)))
        return AutomationValue(std::int64_t{whole.variant().llVal});
    switch (v.vt) {
    case VT_EMPTY:
    case VT_NULL:
        return AutomationValue();
    case VT_ERROR:
        if (v.scode == DISP_E_PARAMNOTFOUND)
            return AutomationValue(MissingArgument{});
        return unknownKind();
    case VT_BOOL:
        return AutomationValue(v.boolVal != VARIANT_FALSE);
    case VT_R4:
        return AutomationValue(double{v.fltVal});
    case VT_R8:
        return AutomationValue(v.dblVal);
    case VT_BSTR:
        return AutomationValue(bstrText(v.bstrVal));
    case VT_ARRAY | VT_R8:
        return pointOf(v.parray);
    case VT_DISPATCH:
    case VT_UNKNOWN:
        return objectOf(v.punkVal, wrap);
    default:
        return unknownKind();
    }
}

Result<BSTR> toBstr(std::string_view text)
{
    const std::u16string units = wide(text);
    if (!isValid(units))
        return Error{ErrorCode::Failed, "the text cannot be sent, for it is not valid text"};
    const std::wstring copy(units.begin(), units.end());
    const BSTR made = ::SysAllocStringLen(copy.data(), static_cast<UINT>(copy.size()));
    if (made == nullptr)
        return Error{ErrorCode::Failed, "there is no memory for a text"};
    return made;
}

std::string bstrText(BSTR text)
{
    return narrow(std::u16string(text, text + ::SysStringLen(text)));
}

} // namespace zv
