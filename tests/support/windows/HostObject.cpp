#include "support/windows/HostObject.h"

#include "platform/Text.h"
#include "platform/windows/ComCounted.h"
#include "platform/windows/ComMembers.h"

#include <algorithm>
#include <iterator>
#include <oleauto.h>

namespace zv::test {

namespace {

// The names that the host knows; the place in the list is the number of the member, counted from 1.
const char* const kMembers[] = {"version",     "caption",     "visible",        "activedocument",
                                "blocks",      "utility",     "objectsnapmode", "activespace",
                                "name",        "isxref",      "islayout",       "sendcommand",
                                "getvariable", "setvariable", "getpoint",       "translatecoordinates",
                                "getstring",   "application", "documents",      "open",
                                "add",         "close"};

BSTR bstr(const std::string& utf8)
{
    const std::u16string text = fromUtf8(utf8);
    return ::SysAllocStringLen(std::wstring(text.begin(), text.end()).c_str(),
                               static_cast<UINT>(text.size()));
}

std::string utf8Of(BSTR text)
{
    return toUtf8(std::u16string(text, text + ::SysStringLen(text)));
}

bool readPoint(const VARIANT& value, AutomationPoint& point)
{
    double* numbers = nullptr;
    if (value.vt != (VT_ARRAY | VT_R8) || ::SafeArrayGetDim(value.parray) != 1 ||
        value.parray->rgsabound[0].cElements != 3 ||
        FAILED(::SafeArrayAccessData(value.parray, reinterpret_cast<void**>(&numbers))))
        return false;
    point = {numbers[0], numbers[1], numbers[2]};
    ::SafeArrayUnaccessData(value.parray);
    return true;
}

/// An argument in the words of the local carrier. What no host takes is told by its number.
wire::Value received(const VARIANT& value)
{
    AutomationPoint point;
    if (readPoint(value, point))
        return point;
    switch (value.vt) {
    case VT_EMPTY:
        return {};
    case VT_ERROR:
        if (value.scode == DISP_E_PARAMNOTFOUND)
            return MissingArgument{};
        break;
    case VT_BOOL:
        return value.boolVal != VARIANT_FALSE;
    case VT_I4:
        return std::int64_t{value.lVal};
    case VT_R8:
        return value.dblVal;
    case VT_BSTR:
        return utf8Of(value.bstrVal);
    default:
        break;
    }
    return "of type " + std::to_string(value.vt);
}

/// One object of the host.
class HostObject final : public Counted<IDispatch> {
public:
    HostObject(HostModel& model, HostLife& life, const HostModel::Object& object)
        : m_model(model), m_life(life), m_object(object)
    {
    }

    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override
    {
        *count = 0;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR* names, UINT count, LCID,
                                            DISPID* members) override;
    HRESULT STDMETHODCALLTYPE Invoke(DISPID member, REFIID, LCID, WORD kind, DISPPARAMS* parameters,
                                     VARIANT* answer, EXCEPINFO* exception, UINT*) override;

private:
    HostModel::Reply replyTo(DISPID member, WORD kind, const DISPPARAMS& parameters);
    HostModel::Reply called(const DISPPARAMS& parameters);
    HRESULT answerWith(const HostModel::Reply& reply, VARIANT* answer, EXCEPINFO* exception);
    void put(const HostModel::Value& value, VARIANT& answer);

    HostModel& m_model;
    HostLife& m_life;
    HostModel::Object m_object;
    std::string m_spelling;  ///< Of the name last looked up, for the transcript.
    bool m_rejected = false; ///< The two ways of being busy take turns.
};

HRESULT HostObject::GetIDsOfNames(REFIID, LPOLESTR* names, UINT count, LCID, DISPID* members)
{
    if (count != 1)
        return DISP_E_UNKNOWNNAME;
    const std::wstring name(names[0]);
    m_spelling = toUtf8(std::u16string(name.begin(), name.end()));
    const std::string wanted = lowered(m_spelling);
    const auto* const found = std::find(std::begin(kMembers), std::end(kMembers), wanted);
    const bool known = found != std::end(kMembers);
    members[0] = known ? static_cast<DISPID>(found - std::begin(kMembers)) + 1 : DISPID_UNKNOWN;
    return known ? S_OK : DISP_E_UNKNOWNNAME;
}

HRESULT HostObject::Invoke(DISPID member, REFIID, LCID, WORD kind, DISPPARAMS* parameters, VARIANT* answer,
                           EXCEPINFO* exception, UINT*)
{
    if (m_life.ends)
        ::TerminateProcess(::GetCurrentProcess(), 1);
    return answerWith(replyTo(member, kind, *parameters), answer, exception);
}

HostModel::Reply HostObject::replyTo(DISPID member, WORD kind, const DISPPARAMS& parameters)
{
    if (member == DISPID_NEWENUM)
        return m_model.items(m_object);
    if (member < 1 || member > static_cast<DISPID>(std::size(kMembers)))
        return {HostModel::Outcome::UnknownName, {}, {}};
    if (kind == DISPATCH_PROPERTYGET)
        return m_model.get(m_object, m_spelling);
    if (kind == DISPATCH_METHOD)
        return called(parameters);
    const bool isPut = kind == DISPATCH_PROPERTYPUT && parameters.cArgs == 1 && parameters.cNamedArgs == 1 &&
                       parameters.rgdispidNamedArgs[0] == DISPID_PROPERTYPUT;
    if (!isPut)
        return {HostModel::Outcome::Failed, {}, "no proper way to set a property"};
    return m_model.set(m_object, m_spelling, received(parameters.rgvarg[0]));
}

HostModel::Reply HostObject::called(const DISPPARAMS& parameters)
{
    wire::Values arguments;
    for (UINT index = parameters.cArgs; index-- > 0;)
        arguments.push_back(received(parameters.rgvarg[index]));
    return m_model.call(m_object, m_spelling, arguments);
}

void putPlain(const wire::Value& value, VARIANT& answer)
{
    if (const auto* truth = std::get_if<bool>(&value)) {
        answer.vt = VT_BOOL;
        answer.boolVal = *truth ? VARIANT_TRUE : VARIANT_FALSE;
    } else if (const auto* whole = std::get_if<std::int64_t>(&value)) {
        // CAD programs give their variables in this short form.
        answer.vt = VT_I2;
        answer.iVal = static_cast<SHORT>(*whole);
    } else if (const auto* number = std::get_if<double>(&value)) {
        answer.vt = VT_R8;
        answer.dblVal = *number;
    } else if (const auto* text = std::get_if<std::string>(&value)) {
        answer.vt = VT_BSTR;
        answer.bstrVal = bstr(*text);
    } else if (const auto* point = std::get_if<AutomationPoint>(&value)) {
        answer.vt = VT_ARRAY | VT_R8;
        answer.parray = ::SafeArrayCreateVector(VT_R8, 0, 3);
        double numbers[] = {point->x, point->y, point->z};
        for (LONG index = 0; index < 3; ++index)
            ::SafeArrayPutElement(answer.parray, &index, &numbers[index]);
    }
}

/// The ways in which programs tell that the user did not answer, by turns: Esc as AutoCAD tells it and as
/// others do, and Enter.
SCODE nextCancelled()
{
    static const SCODE kWays[] = {0, E_ABORT, static_cast<SCODE>(0x80210020)};
    static std::size_t next = 0;
    return kWays[next++ % std::size(kWays)];
}

HRESULT HostObject::answerWith(const HostModel::Reply& reply, VARIANT* answer, EXCEPINFO* exception)
{
    switch (reply.outcome) {
    case HostModel::Outcome::DieAfter:
        m_life.ends = true;
        [[fallthrough]];
    case HostModel::Outcome::Answer:
        if (answer != nullptr)
            put(reply.value, *answer);
        return S_OK;
    case HostModel::Outcome::UnknownName:
        return DISP_E_MEMBERNOTFOUND;
    case HostModel::Outcome::Busy:
        m_rejected = !m_rejected;
        return m_rejected ? RPC_E_CALL_REJECTED : RPC_E_SERVERCALL_RETRYLATER;
    case HostModel::Outcome::Silent:
        // It still answers others, as a program does that asks its user something.
        for (;;)
            serveCalls(INFINITE);
    case HostModel::Outcome::Garbage:
        if (answer != nullptr)
            answer->vt = VT_CY;
        return S_OK;
    case HostModel::Outcome::TooLong:
        return RPC_E_SERVERFAULT;
    case HostModel::Outcome::Die:
        ::TerminateProcess(::GetCurrentProcess(), 1);
        return RPC_E_SERVERFAULT;
    default:
        if (exception != nullptr) {
            exception->scode = reply.outcome == HostModel::Outcome::Cancelled ? nextCancelled() : E_FAIL;
            exception->bstrDescription = bstr(reply.text);
        }
        return DISP_E_EXCEPTION;
    }
}

void HostObject::put(const HostModel::Value& value, VARIANT& answer)
{
    if (const auto* plain = std::get_if<wire::Value>(&value)) {
        putPlain(*plain, answer);
    } else if (const auto* object = std::get_if<HostModel::Object>(&value)) {
        answer.vt = VT_DISPATCH;
        answer.pdispVal = makeHostObject(m_model, m_life, *object);
    } else if (const auto* objects = std::get_if<std::vector<HostModel::Object>>(&value)) {
        answer.vt = VT_UNKNOWN;
        std::vector<ComPointer<IDispatch>> members;
        for (const HostModel::Object& member : *objects)
            members.push_back(ComPointer<IDispatch>::adopt(makeHostObject(m_model, m_life, member)));
        answer.punkVal = new ComMembers(std::move(members));
    }
}

} // namespace

IDispatch* makeHostObject(HostModel& model, HostLife& life, const HostModel::Object& object)
{
    return new HostObject(model, life, object);
}

void serveCalls(DWORD timeoutMs)
{
    ::MsgWaitForMultipleObjects(0, nullptr, FALSE, timeoutMs, QS_ALLINPUT);
    for (MSG message; ::PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE);)
        ::DispatchMessageW(&message);
}

} // namespace zv::test
