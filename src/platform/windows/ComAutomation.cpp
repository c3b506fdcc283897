#include "platform/windows/ComAutomation.h"

#include "platform/Text.h"
#include "platform/windows/ComValue.h"
#include "platform/windows/LastError.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <objbase.h>
#include <oleauto.h>

namespace zv {

namespace {

/// COM on this thread, for as long as this lives. A thread that has chosen another apartment keeps it.
class Apartment {
public:
    Apartment() : m_entered(::CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED | COINIT_DISABLE_OLE1DDE)) {}
    Apartment(const Apartment&) = delete;
    Apartment& operator=(const Apartment&) = delete;
    ~Apartment()
    {
        if (SUCCEEDED(m_entered))
            ::CoUninitialize();
    }

private:
    HRESULT m_entered;
};

/// What a carrier and all objects that it gave out share.
struct ComLink {
    ComLink(EventPump& events, CarrierPatience howPatient) : pump(events), patience(howPatient) {}
    Apartment apartment;
    EventPump& pump;
    CarrierPatience patience;
};

template <std::size_t count> bool isOneOf(HRESULT result, const std::array<HRESULT, count>& list)
{
    return std::find(list.begin(), list.end(), result) != list.end();
}

/// The kind of a failure. Codes tell it, for the texts are in the language of the system.
ErrorCode kindOf(HRESULT result)
{
    static const std::array kBusy = {RPC_E_CALL_REJECTED, RPC_E_SERVERCALL_RETRYLATER};
    static const std::array kCancelled = {E_ABORT, HRESULT_FROM_WIN32(ERROR_CANCELLED)};
    static const std::array kLost = {RPC_E_DISCONNECTED,
                                     RPC_E_SERVERFAULT,
                                     RPC_E_SERVER_DIED,
                                     RPC_E_SERVER_DIED_DNE,
                                     CO_E_OBJNOTCONNECTED,
                                     HRESULT_FROM_WIN32(RPC_S_SERVER_UNAVAILABLE),
                                     HRESULT_FROM_WIN32(RPC_S_CALL_FAILED),
                                     HRESULT_FROM_WIN32(RPC_S_CALL_FAILED_DNE),
                                     HRESULT_FROM_WIN32(RPC_S_COMM_FAILURE)};
    static const std::array kNotFound = {MK_E_UNAVAILABLE,
                                         CO_E_CLASSSTRING,
                                         REGDB_E_CLASSNOTREG,
                                         CO_E_APPNOTFOUND,
                                         HRESULT_FROM_WIN32(ERROR_FILE_NOT_FOUND),
                                         HRESULT_FROM_WIN32(ERROR_PATH_NOT_FOUND),
                                         DISP_E_UNKNOWNNAME,
                                         DISP_E_MEMBERNOTFOUND};
    if (isOneOf(result, kBusy))
        return ErrorCode::Busy;
    if (isOneOf(result, kCancelled))
        return ErrorCode::Cancelled;
    if (isOneOf(result, kLost))
        return ErrorCode::Lost;
    if (isOneOf(result, kNotFound))
        return ErrorCode::NotFound;
    return ErrorCode::Failed;
}

Error comError(HRESULT result)
{
    std::string text = systemText(static_cast<unsigned long>(result));
    if (text.empty())
        text = "the program reports the error " + std::to_string(result);
    return {kindOf(result), std::move(text)};
}

/// What a program tells about a call that went wrong, its texts freed at the end.
class Exception {
public:
    Exception() = default;
    Exception(const Exception&) = delete;
    Exception& operator=(const Exception&) = delete;
    ~Exception()
    {
        ::SysFreeString(m_info.bstrSource);
        ::SysFreeString(m_info.bstrDescription);
        ::SysFreeString(m_info.bstrHelpFile);
    }
    EXCEPINFO* get() { return &m_info; }

    Error error()
    {
        if (m_info.pfnDeferredFillIn != nullptr)
            m_info.pfnDeferredFillIn(&m_info);
        Error error = comError(m_info.scode != 0 ? m_info.scode : DISP_E_EXCEPTION);
        // Only these two speak of the call itself; the rest is about something inside the program.
        if (error.code != ErrorCode::Busy && error.code != ErrorCode::Cancelled)
            error.code = ErrorCode::Failed;
        if (std::string told = bstrUtf8(m_info.bstrDescription); !told.empty())
            error.text = std::move(told);
        return error;
    }

private:
    EXCEPINFO m_info{};
};

/// The arguments of one call, last one first.
class Arguments {
public:
    void add(ComValue value) { m_values.push_back(value.release()); }
    Arguments() = default;
    Arguments(const Arguments&) = delete;
    Arguments& operator=(const Arguments&) = delete;
    ~Arguments()
    {
        for (VARIANT& value : m_values)
            ::VariantClear(&value);
    }
    DISPPARAMS parameters(WORD kind)
    {
        static DISPID put = DISPID_PROPERTYPUT;
        DISPPARAMS parameters{};
        parameters.rgvarg = m_values.data();
        parameters.cArgs = static_cast<UINT>(m_values.size());
        if (kind == DISPATCH_PROPERTYPUT) {
            parameters.rgdispidNamedArgs = &put;
            parameters.cNamedArgs = 1;
        }
        return parameters;
    }

private:
    std::vector<VARIANT> m_values;
};

class ComObject final : public AutomationObject {
public:
    ComObject(std::shared_ptr<ComLink> link, ComPointer<IDispatch> dispatch)
        : m_link(std::move(link)), m_dispatch(std::move(dispatch))
    {
    }

    Result<AutomationValue> get(std::string_view name) override
    {
        return invoke(name, DISPATCH_PROPERTYGET, {});
    }
    Result<void> set(std::string_view name, const AutomationValue& value) override
    {
        if (const auto done = invoke(name, DISPATCH_PROPERTYPUT, {value}); !done)
            return done.error();
        return {};
    }
    Result<AutomationValue> call(std::string_view name,
                                 const std::vector<AutomationValue>& arguments) override
    {
        return invoke(name, DISPATCH_METHOD, arguments);
    }
    Result<std::vector<AutomationValue>> items() override
    {
        return untilFree(m_link->pump, m_link->patience.busyMs, [&] { return itemsOnce(); });
    }

private:
    Result<AutomationValue> invoke(std::string_view name, WORD kind,
                                   const std::vector<AutomationValue>& arguments);
    Result<DISPID> memberOf(std::string_view name);
    Result<ComValue> invokeMember(DISPID member, WORD kind, Arguments& arguments);
    Result<std::vector<AutomationValue>> itemsOnce();
    Result<AutomationValue> valueOf(const VARIANT& variant);

    std::shared_ptr<ComLink> m_link; ///< Outlives the interface, which needs the apartment.
    ComPointer<IDispatch> m_dispatch;
};

Result<AutomationValue> ComObject::invoke(std::string_view name, WORD kind,
                                          const std::vector<AutomationValue>& arguments)
{
    const auto dispatchOf = [](const AutomationObjectPtr& object) -> IDispatch* {
        const auto* const own = dynamic_cast<const ComObject*>(object.get());
        return own != nullptr ? own->m_dispatch.get() : nullptr;
    };
    Arguments sent;
    for (auto argument = arguments.rbegin(); argument != arguments.rend(); ++argument) {
        Result<ComValue> value = toVariant(*argument, dispatchOf);
        if (!value)
            return value.error();
        sent.add(std::move(*value));
    }
    return untilFree(m_link->pump, m_link->patience.busyMs, [&]() -> Result<AutomationValue> {
        const Result<DISPID> member = memberOf(name);
        if (!member)
            return member.error();
        const Result<ComValue> answer = invokeMember(*member, kind, sent);
        if (!answer)
            return answer.error();
        return valueOf(answer->variant());
    });
}

Result<DISPID> ComObject::memberOf(std::string_view name)
{
    std::wstring text = widePath(name);
    LPOLESTR names = text.data();
    DISPID member = DISPID_UNKNOWN;
    const HRESULT found = m_dispatch->GetIDsOfNames(IID_NULL, &names, 1, LOCALE_USER_DEFAULT, &member);
    if (FAILED(found))
        return comError(found);
    return member;
}

Result<ComValue> ComObject::invokeMember(DISPID member, WORD kind, Arguments& arguments)
{
    DISPPARAMS parameters = arguments.parameters(kind);
    ComValue answer;
    Exception exception;
    const HRESULT done =
        m_dispatch->Invoke(member, IID_NULL, LOCALE_USER_DEFAULT, kind, &parameters,
                           kind == DISPATCH_PROPERTYPUT ? nullptr : answer.get(), exception.get(), nullptr);
    if (done == DISP_E_EXCEPTION)
        return exception.error();
    if (FAILED(done))
        return comError(done);
    return answer;
}

Result<std::vector<AutomationValue>> ComObject::itemsOnce()
{
    Arguments none;
    const Result<ComValue> answer =
        invokeMember(DISPID_NEWENUM, DISPATCH_PROPERTYGET | DISPATCH_METHOD, none);
    if (!answer)
        return answer.error();
    const VARIANT& held = answer->variant();
    ComPointer<IEnumVARIANT> members;
    if ((held.vt != VT_UNKNOWN && held.vt != VT_DISPATCH) || held.punkVal == nullptr ||
        FAILED(held.punkVal->QueryInterface(IID_IEnumVARIANT, members.outVoid())))
        return Error{ErrorCode::Failed, "the program answered with something that is no collection"};
    std::vector<AutomationValue> values;
    for (;;) {
        ComValue member;
        ULONG count = 0;
        const HRESULT next = members->Next(1, member.get(), &count);
        if (FAILED(next))
            return comError(next);
        if (next != S_OK || count != 1)
            return values;
        Result<AutomationValue> value = valueOf(member.variant());
        if (!value)
            return value.error();
        values.push_back(std::move(*value));
    }
}

Result<AutomationValue> ComObject::valueOf(const VARIANT& variant)
{
    return fromVariant(variant, [this](ComPointer<IDispatch> object) -> AutomationObjectPtr {
        return std::make_shared<ComObject>(m_link, std::move(object));
    });
}

class ComCarrier final : public Automation {
public:
    ComCarrier(EventPump& pump, CarrierPatience patience) : m_link(std::make_shared<ComLink>(pump, patience))
    {
    }

    Result<AutomationObjectPtr> attach(const std::string& progId) override
    {
        return application(progId, [](const CLSID& program, ComPointer<IDispatch>& dispatch) {
            ComPointer<IUnknown> running;
            HRESULT result = ::GetActiveObject(program, nullptr, running.out());
            if (SUCCEEDED(result))
                result = running->QueryInterface(IID_IDispatch, dispatch.outVoid());
            // A program that was killed leaves its entry behind for a moment.
            return kindOf(result) == ErrorCode::Lost ? MK_E_UNAVAILABLE : result;
        });
    }

    Result<AutomationObjectPtr> create(const std::string& progId) override
    {
        return application(progId, [](const CLSID& program, ComPointer<IDispatch>& dispatch) {
            return ::CoCreateInstance(program, nullptr, CLSCTX_LOCAL_SERVER, IID_IDispatch,
                                      dispatch.outVoid());
        });
    }

private:
    template <class Find> Result<AutomationObjectPtr> application(const std::string& progId, Find find)
    {
        CLSID program{};
        if (const HRESULT known = ::CLSIDFromProgID(widePath(progId).c_str(), &program); FAILED(known))
            return Error{ErrorCode::NotFound, comError(known).text};
        return untilFree(m_link->pump, m_link->patience.busyMs, [&]() -> Result<AutomationObjectPtr> {
            ComPointer<IDispatch> dispatch;
            if (const HRESULT found = find(program, dispatch); FAILED(found))
                return comError(found);
            return AutomationObjectPtr(std::make_shared<ComObject>(m_link, std::move(dispatch)));
        });
    }

    std::shared_ptr<ComLink> m_link;
};

} // namespace

std::unique_ptr<Automation> comAutomation(EventPump& pump, CarrierPatience patience)
{
    return std::make_unique<ComCarrier>(pump, patience);
}

std::unique_ptr<Automation> systemAutomation(EventPump& pump)
{
    return comAutomation(pump, CarrierPatience{});
}

} // namespace zv
