#include "platform/windows/ComServer.h"

#include "platform/Text.h"
#include "platform/windows/ComClasses.h"
#include "platform/windows/ComCounted.h"
#include "platform/windows/ComMembers.h"
#include "platform/windows/ComValue.h"
#include "platform/windows/LastError.h"
#include "platform/windows/WidePath.h"

#include <algorithm>
#include <oleauto.h>
#include <optional>
#include <type_traits>
#include <vector>
#include <windows.h>

namespace zv {

namespace {

/// The class of this program, whatever the name under which it is asked for.
constexpr CLSID kProgramClass = {
    0x9d4b1d7a, 0x52c1, 0x4a0e, {0x8f, 0x3b, 0x61, 0x0c, 0x7e, 0x25, 0xd9, 0x14}};

std::string guidText(const CLSID& id)
{
    wchar_t text[64] = {};
    const int length = ::StringFromGUID2(id, text, static_cast<int>(std::size(text)));
    return std::string(text, text + std::max(0, length - 1));
}

Error comFailure(HRESULT result)
{
    return {ErrorCode::Failed, systemText(static_cast<unsigned long>(result))};
}

std::wstring ownPath()
{
    std::wstring path(32 * 1024, L'\0');
    path.resize(::GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size())));
    return path;
}

bool writeClassKey(const std::string& key, const std::wstring& value)
{
    return ::RegSetKeyValueW(classesRoot(), wideText("Software\\Classes\\" + key).c_str(), nullptr, REG_SZ,
                             value.c_str(),
                             static_cast<DWORD>((value.size() + 1) * sizeof(wchar_t))) == ERROR_SUCCESS;
}

/// Makes the name known to the user's programs. Nothing is written over another program's name.
Result<void> registerName(const std::string& progId)
{
    CLSID found{};
    if (SUCCEEDED(::CLSIDFromProgID(wideText(progId).c_str(), &found)) && found != kProgramClass)
        return Error{ErrorCode::Denied, "another program is installed as " + progId};
    const std::string id = guidText(kProgramClass);
    if (!writeClassKey(progId, wideText(progId)) || !writeClassKey(progId + "\\CLSID", wideText(id)) ||
        !writeClassKey("CLSID\\" + id, L"Zelvora Bench") ||
        !writeClassKey("CLSID\\" + id + "\\LocalServer32", L"\"" + ownPath() + L"\""))
        return Error{ErrorCode::Failed, "the name " + progId + " cannot be registered for this user"};
    return {};
}

} // namespace

struct ComServer::State {
    Ask ask;
    Wait wait;
    bool ended = false;
    /// The members that were asked for by name, in capitals; a member's number is its place, counted from 1.
    std::vector<std::string> members;
    std::vector<DWORD> running, factories;

    /// The answer to a request, waited for. Nothing when the program ends first.
    std::optional<wire::Content> answerTo(const wire::Request& request)
    {
        if (ended)
            return std::nullopt;
        const auto answer = std::make_shared<std::optional<wire::Content>>();
        ask(request, [answer](const wire::Answer& given) { *answer = given.content; });
        if (!*answer && !wait([answer] { return answer->has_value(); }))
            return std::nullopt;
        return *answer;
    }
    DISPID memberOf(const std::string& name)
    {
        const std::string capitals = upper(name);
        const auto found = std::find(members.begin(), members.end(), capitals);
        const auto place = found - members.begin();
        if (found == members.end())
            members.push_back(capitals);
        return static_cast<DISPID>(place) + 1;
    }
};

namespace {

/// An argument as it is asked with; nothing for a kind of value that has no place there.
std::optional<wire::Value> wireValue(const VARIANT& variant)
{
    const auto value =
        fromVariant(variant, [](const ComPointer<IDispatch>&) { return AutomationObjectPtr(); });
    if (!value || std::holds_alternative<AutomationObjectPtr>(*value))
        return std::nullopt;
    return std::visit(
        [](const auto& one) -> wire::Value {
            using One = std::decay_t<decltype(one)>;
            if constexpr (std::is_same_v<One, std::string>)
                return toUtf8(wide(one));
            else if constexpr (std::is_same_v<One, AutomationObjectPtr>)
                return {};
            else
                return one;
        },
        *value);
}

BSTR bstrOf(const std::string& utf8)
{
    const std::u16string text = fromUtf8(utf8);
    return ::SysAllocStringLen(std::wstring(text.begin(), text.end()).c_str(),
                               static_cast<UINT>(text.size()));
}

HRESULT failureOf(const wire::Failure& failure, EXCEPINFO* exception)
{
    SCODE code = E_FAIL;
    switch (failure.code) {
    case wire::FailureCode::UnknownName:
        return DISP_E_MEMBERNOTFOUND;
    case wire::FailureCode::Busy:
        return RPC_E_CALL_REJECTED;
    case wire::FailureCode::Cancelled:
        code = E_ABORT;
        break;
    case wire::FailureCode::BadArgument:
        code = E_INVALIDARG;
        break;
    case wire::FailureCode::Failed:
        break;
    }
    if (exception != nullptr) {
        *exception = {};
        exception->scode = code;
        exception->bstrSource = bstrOf("AutoCAD");
        exception->bstrDescription = bstrOf(failure.description);
    }
    return DISP_E_EXCEPTION;
}

} // namespace

/// One object of the program, by its number; 0 is the application.
class ServedObject final : public Counted<IDispatch> {
public:
    ServedObject(std::shared_ptr<ComServer::State> state, std::int64_t number)
        : m_state(std::move(state)), m_number(number)
    {
    }
    ~ServedObject() override
    {
        if (m_number != 0)
            static_cast<void>(m_state->answerTo(request(wire::Operation::Release)));
    }

    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override
    {
        *count = 0;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR* names, UINT count, LCID,
                                            DISPID* members) override
    {
        // Arguments have no names here.
        if (count != 1)
            return DISP_E_UNKNOWNNAME;
        const std::wstring name(names[0]);
        members[0] = m_state->memberOf(toUtf8(std::u16string(name.begin(), name.end())));
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE Invoke(DISPID member, REFIID, LCID, WORD kind, DISPPARAMS* parameters,
                                     VARIANT* result, EXCEPINFO* exception, UINT*) override;

private:
    wire::Request request(wire::Operation operation, const std::string& name = {}) const
    {
        wire::Request made;
        made.operation = operation;
        made.object = m_number;
        made.name = name;
        return made;
    }
    /// Gives the answer to a request away as COM wants it.
    HRESULT settle(const wire::Request& request, VARIANT* result, EXCEPINFO* exception) const;
    HRESULT give(const wire::Value& value, VARIANT* result) const;
    ComPointer<IDispatch> object(const wire::Value& value) const;

    const std::shared_ptr<ComServer::State> m_state;
    const std::int64_t m_number;
};

namespace {

/// Hands the application out to who creates it.
class Factory final : public Counted<IClassFactory> {
public:
    explicit Factory(std::shared_ptr<ComServer::State> state) : m_state(std::move(state)) {}

    HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown* outer, REFIID wanted, void** object) override
    {
        *object = nullptr;
        if (outer != nullptr)
            return CLASS_E_NOAGGREGATION;
        const auto application = ComPointer<IDispatch>::adopt(new ServedObject(m_state, 0));
        return application->QueryInterface(wanted, object);
    }
    HRESULT STDMETHODCALLTYPE LockServer(BOOL) override { return S_OK; }

private:
    std::shared_ptr<ComServer::State> m_state;
};

} // namespace

ComPointer<IDispatch> ServedObject::object(const wire::Value& value) const
{
    const auto* const number = std::get_if<wire::ObjectNumber>(&value);
    return number != nullptr ? ComPointer<IDispatch>::adopt(new ServedObject(m_state, number->number))
                             : ComPointer<IDispatch>();
}

HRESULT ServedObject::give(const wire::Value& value, VARIANT* result) const
{
    if (result == nullptr)
        return S_OK;
    ::VariantInit(result);
    if (const auto* const text = std::get_if<std::string>(&value)) {
        result->vt = VT_BSTR;
        result->bstrVal = bstrOf(*text);
        return S_OK;
    }
    if (const ComPointer<IDispatch> given = object(value)) {
        given->AddRef();
        result->vt = VT_DISPATCH;
        result->pdispVal = given.get();
        return S_OK;
    }
    const AutomationValue plain = std::visit(
        [](const auto& one) -> AutomationValue {
            if constexpr (std::is_same_v<std::decay_t<decltype(one)>, wire::ObjectNumber>)
                return {};
            else
                return one;
        },
        value);
    Result<ComValue> made = toVariant(plain, [](const AutomationObjectPtr&) { return nullptr; });
    if (!made)
        return E_OUTOFMEMORY;
    *result = made->release();
    return S_OK;
}

HRESULT ServedObject::settle(const wire::Request& request, VARIANT* result, EXCEPINFO* exception) const
{
    const std::optional<wire::Content> content = m_state->answerTo(request);
    if (!content)
        return RPC_E_DISCONNECTED;
    if (const auto* const failure = std::get_if<wire::Failure>(&*content))
        return failureOf(*failure, exception);
    if (const auto* const value = std::get_if<wire::Value>(&*content))
        return give(*value, result);
    std::vector<ComPointer<IDispatch>> members;
    for (const wire::Value& one : std::get<wire::Values>(*content)) {
        if (ComPointer<IDispatch> member = object(one))
            members.push_back(std::move(member));
    }
    if (result == nullptr)
        return S_OK;
    ::VariantInit(result);
    result->vt = VT_UNKNOWN;
    result->punkVal = new ComMembers(std::move(members));
    return S_OK;
}

HRESULT ServedObject::Invoke(DISPID member, REFIID, LCID, WORD kind, DISPPARAMS* parameters, VARIANT* result,
                             EXCEPINFO* exception, UINT*)
{
    // The last count may go while the program turns its events for this call.
    const auto held = ComPointer<IDispatch>::share(this);
    if (member == DISPID_NEWENUM)
        return settle(request(wire::Operation::Items), result, exception);
    if (member < 1 || static_cast<std::size_t>(member) > m_state->members.size())
        return DISP_E_MEMBERNOTFOUND;
    const std::string name = m_state->members[static_cast<std::size_t>(member) - 1];
    wire::Values arguments;
    for (UINT index = parameters->cArgs; index-- > 0;) {
        const auto value = wireValue(parameters->rgvarg[index]);
        if (!value)
            return DISP_E_TYPEMISMATCH;
        arguments.push_back(*value);
    }
    if ((kind & (DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF)) != 0) {
        if (arguments.size() != 1)
            return DISP_E_BADPARAMCOUNT;
        wire::Request put = request(wire::Operation::Set, name);
        put.value = arguments.front();
        return settle(put, result, exception);
    }
    // Some languages do not tell a property from a call; what has arguments is a call to them.
    if ((kind & DISPATCH_PROPERTYGET) != 0 && arguments.empty()) {
        const HRESULT got = settle(request(wire::Operation::Get, name), result, exception);
        if (got != DISP_E_MEMBERNOTFOUND || (kind & DISPATCH_METHOD) == 0)
            return got;
    }
    wire::Request call = request(wire::Operation::Call, name);
    call.arguments = std::move(arguments);
    return settle(call, result, exception);
}

ComServer::ComServer(Ask ask, Wait wait) : m_state(std::make_shared<State>())
{
    m_state->ask = std::move(ask);
    m_state->wait = std::move(wait);
}

ComServer::~ComServer()
{
    m_state->ended = true;
    for (const DWORD one : m_state->running)
        ::RevokeActiveObject(one, nullptr);
    for (const DWORD one : m_state->factories)
        ::CoRevokeClassObject(one);
}

Result<void> ComServer::open(const std::string& progId)
{
    if (const auto registered = registerName(progId); !registered)
        return registered.error();
    // All names are of one class, which is found once.
    if (!m_state->running.empty())
        return {};
    ComPointer<IUnknown> other;
    if (SUCCEEDED(::GetActiveObject(kProgramClass, nullptr, other.out())))
        return Error{ErrorCode::Busy, "this program runs already as " + progId};
    const auto application = ComPointer<IDispatch>::adopt(new ServedObject(m_state, 0));
    DWORD door = 0;
    HRESULT opened = ::RegisterActiveObject(application.get(), kProgramClass, ACTIVEOBJECT_STRONG, &door);
    if (FAILED(opened))
        return comFailure(opened);
    m_state->running.push_back(door);
    const auto factory = ComPointer<IClassFactory>::adopt(new Factory(m_state));
    opened =
        ::CoRegisterClassObject(kProgramClass, factory.get(), CLSCTX_LOCAL_SERVER, REGCLS_MULTIPLEUSE, &door);
    if (FAILED(opened))
        return comFailure(opened);
    m_state->factories.push_back(door);
    return {};
}

} // namespace zv
