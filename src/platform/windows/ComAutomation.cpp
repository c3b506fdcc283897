#include "platform/windows/ComAutomation.h"

#include "platform/Text.h"
#include "platform/windows/ComThread.h"
#include "platform/windows/ComValue.h"
#include "platform/windows/LastError.h"
#include "platform/windows/WidePath.h"

#include <algorithm>
#include <array>
#include <future>
#include <iterator>
#include <mutex>
#include <objbase.h>
#include <oleauto.h>
#include <optional>

namespace zv {

namespace {

using std::chrono::milliseconds;

/// How often a longer wait looks whether the answer is there.
constexpr int kTurnMs = 10;

/// What a carrier and all objects that it gave out share.
class ComLink {
public:
    ComLink(EventPump& events, CarrierPatience howPatient) : m_waiting(events, std::move(howPatient)) {}

    /// Does `task` on the COM thread until the program is no longer busy, the caller's events turning
    /// meanwhile. `task` must own all that it uses, for a call that is given up is left to itself. With a
    /// limit so is one that takes longer. Errors: Cancelled, the wait was given up; Failed, the limit has
    /// passed.
    template <class Task>
    auto ask(Task task, std::optional<milliseconds> limit = std::nullopt) -> decltype(task())
    {
        return untilFree(m_waiting, [&]() -> decltype(task()) {
            const auto begun = m_waiting.patience.now();
            auto answer = begin(task);
            std::optional<ShownWait> shown;
            while (!isThere(answer)) {
                if (m_waiting.isGivenUp()) {
                    leaveThread();
                    return Waiting::givenUp();
                }
                if (limit && m_waiting.patience.now() - begun >= *limit) {
                    leaveThread();
                    return Error{ErrorCode::Failed, "the program did not answer in time"};
                }
                if (!shown)
                    shown.emplace(m_waiting.pump);
                m_waiting.pump.wait(-1, kTurnMs);
            }
            return answer.get();
        });
    }
    /// The same for the start of a program.
    template <class Task> auto askToStart(Task task) -> decltype(task())
    {
        return ask(std::move(task), milliseconds(m_waiting.patience.createMs));
    }
    /// Does `task` some time later, with nobody waiting.
    void post(std::function<void()> task) { thread()->post(std::move(task)); }

    void beginAction(int limitMs) { m_waiting.beginAction(limitMs); }
    bool isGivenUp() const { return m_waiting.isGivenUp(); }

private:
    /// What a call that was left to itself comes to is given back on its own thread.
    std::shared_ptr<ComThread> thread()
    {
        const std::lock_guard lock(m_mutex);
        return m_thread;
    }
    /// The new thread stands before the old one is let go, so that the apartment that both are in stays.
    void leaveThread()
    {
        auto next = std::make_shared<ComThread>();
        const std::lock_guard lock(m_mutex);
        m_thread.swap(next);
    }
    template <class Task> auto begin(Task task) -> std::future<decltype(task())>
    {
        auto answer = thread()->start(std::move(task));
        answer.wait_for(milliseconds(kQuietMs));
        return answer;
    }
    template <class Answer> static bool isThere(const std::future<Answer>& answer)
    {
        return answer.wait_for(milliseconds(0)) == std::future_status::ready;
    }

    Waiting m_waiting;
    std::mutex m_mutex;
    std::shared_ptr<ComThread> m_thread = std::make_shared<ComThread>();
};

template <std::size_t count> bool isOneOf(HRESULT result, const std::array<HRESULT, count>& list)
{
    return std::find(list.begin(), list.end(), result) != list.end();
}

/// AutoCAD's own code for a prompt that was answered with Enter or a word in place of what was asked for.
constexpr HRESULT kKeywordInput = static_cast<HRESULT>(0x80210020);

/// The kind of a failure. Codes tell it, for the texts are in the language of the system.
ErrorCode kindOf(HRESULT result)
{
    static const std::array kBusy = {RPC_E_CALL_REJECTED, RPC_E_SERVERCALL_RETRYLATER};
    static const std::array kCancelled = {E_ABORT, HRESULT_FROM_WIN32(ERROR_CANCELLED), kKeywordInput};
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

    /// `fromPrompt`: the call had put a question to the user.
    Error error(bool fromPrompt)
    {
        if (m_info.pfnDeferredFillIn != nullptr)
            m_info.pfnDeferredFillIn(&m_info);
        const bool hasCode = m_info.scode != 0 && m_info.scode != DISP_E_EXCEPTION;
        Error error = comError(hasCode ? m_info.scode : DISP_E_EXCEPTION);
        // Esc is the one failure of a prompt to which AutoCAD gives no code of its own.
        if (fromPrompt && !hasCode)
            error.code = ErrorCode::Cancelled;
        // Only these two speak of the call itself; the rest is about something inside the program.
        if (error.code != ErrorCode::Busy && error.code != ErrorCode::Cancelled)
            error.code = ErrorCode::Failed;
        if (std::string told = bstrText(m_info.bstrDescription); !told.empty())
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

/// An interface of the program. It is given back in the apartment that it came from.
class Held {
public:
    Held(std::shared_ptr<ComLink> link, ComPointer<IDispatch> dispatch)
        : m_link(std::move(link)), m_dispatch(std::move(dispatch))
    {
    }
    ~Held()
    {
        m_link->post([held = std::move(m_dispatch)] {});
    }
    Held(const Held&) = delete;
    Held& operator=(const Held&) = delete;

    const std::shared_ptr<ComLink>& link() const { return m_link; }
    IDispatch* dispatch() const { return m_dispatch.get(); }

    // These run on the COM thread.
    Result<AutomationValue> invoke(const std::string& name, WORD kind,
                                   const std::vector<AutomationValue>& arguments) const;
    Result<std::vector<AutomationValue>> items() const;

private:
    Result<DISPID> memberOf(std::string_view name) const;
    Result<ComValue> invokeMember(DISPID member, WORD kind, Arguments& arguments,
                                  bool isPrompt = false) const;
    Result<AutomationValue> valueOf(const VARIANT& variant) const;

    std::shared_ptr<ComLink> m_link;
    ComPointer<IDispatch> m_dispatch;
};

class ComObject final : public AutomationObject {
public:
    ComObject(std::shared_ptr<ComLink> link, ComPointer<IDispatch> dispatch)
        : m_held(std::make_shared<const Held>(std::move(link), std::move(dispatch)))
    {
    }
    IDispatch* dispatch() const { return m_held->dispatch(); }

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
        return m_held->link()->ask([held = m_held] { return held->items(); });
    }

private:
    Result<AutomationValue> invoke(std::string_view name, WORD kind,
                                   const std::vector<AutomationValue>& arguments)
    {
        return m_held->link()->ask([held = m_held, name = std::string(name), kind, arguments] {
            return held->invoke(name, kind, arguments);
        });
    }

    std::shared_ptr<const Held> m_held; ///< Shared with calls that were left to themselves.
};

Result<AutomationValue> Held::invoke(const std::string& name, WORD kind,
                                     const std::vector<AutomationValue>& arguments) const
{
    const auto dispatchOf = [](const AutomationObjectPtr& object) -> IDispatch* {
        const auto* const own = dynamic_cast<const ComObject*>(object.get());
        return own != nullptr ? own->dispatch() : nullptr;
    };
    Arguments sent;
    for (auto argument = arguments.rbegin(); argument != arguments.rend(); ++argument) {
        Result<ComValue> value = toVariant(*argument, dispatchOf);
        if (!value)
            return value.error();
        sent.add(std::move(*value));
    }
    const Result<DISPID> member = memberOf(name);
    if (!member)
        return member.error();
    const bool isPrompt = sameText(name, "GetPoint") || sameText(name, "GetString");
    const Result<ComValue> answer = invokeMember(*member, kind, sent, isPrompt);
    if (!answer)
        return answer.error();
    return valueOf(answer->variant());
}

Result<DISPID> Held::memberOf(std::string_view name) const
{
    std::wstring text = wideText(name);
    LPOLESTR names = text.data();
    DISPID member = DISPID_UNKNOWN;
    const HRESULT found = m_dispatch->GetIDsOfNames(IID_NULL, &names, 1, LOCALE_USER_DEFAULT, &member);
    if (FAILED(found))
        return comError(found);
    return member;
}

Result<ComValue> Held::invokeMember(DISPID member, WORD kind, Arguments& arguments, bool isPrompt) const
{
    DISPPARAMS parameters = arguments.parameters(kind);
    ComValue answer;
    Exception exception;
    const HRESULT done =
        m_dispatch->Invoke(member, IID_NULL, LOCALE_USER_DEFAULT, kind, &parameters,
                           kind == DISPATCH_PROPERTYPUT ? nullptr : answer.get(), exception.get(), nullptr);
    if (done == DISP_E_EXCEPTION)
        return exception.error(isPrompt);
    if (FAILED(done))
        return comError(done);
    return answer;
}

Result<std::vector<AutomationValue>> Held::items() const
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

Result<AutomationValue> Held::valueOf(const VARIANT& variant) const
{
    return fromVariant(variant, [this](ComPointer<IDispatch> object) -> AutomationObjectPtr {
        return std::make_shared<ComObject>(m_link, std::move(object));
    });
}

/// The program's class. Errors: NotFound, there is none of that name.
Result<CLSID> classOf(const std::string& progId)
{
    CLSID program{};
    if (const HRESULT known = ::CLSIDFromProgID(wideText(progId).c_str(), &program); FAILED(known))
        return Error{ErrorCode::NotFound, comError(known).text};
    return program;
}

Result<ComPointer<IDispatch>> running(const std::string& progId)
{
    const Result<CLSID> program = classOf(progId);
    if (!program)
        return program.error();
    ComPointer<IUnknown> found;
    ComPointer<IDispatch> dispatch;
    HRESULT result = ::GetActiveObject(*program, nullptr, found.out());
    if (SUCCEEDED(result))
        result = found->QueryInterface(IID_IDispatch, dispatch.outVoid());
    // A program that was killed leaves its entry behind for a moment: only one that answers is running.
    UINT count = 0;
    if (SUCCEEDED(result) && kindOf(dispatch->GetTypeInfoCount(&count)) == ErrorCode::Lost)
        result = MK_E_UNAVAILABLE;
    if (FAILED(result))
        return comError(kindOf(result) == ErrorCode::Lost ? MK_E_UNAVAILABLE : result);
    return dispatch;
}

Result<ComPointer<IDispatch>> started(const std::string& progId)
{
    const Result<CLSID> program = classOf(progId);
    if (!program)
        return program.error();
    ComPointer<IDispatch> dispatch;
    const HRESULT result =
        ::CoCreateInstance(*program, nullptr, CLSCTX_LOCAL_SERVER, IID_IDispatch, dispatch.outVoid());
    if (FAILED(result))
        return comError(result);
    return dispatch;
}

class ComCarrier final : public Automation {
public:
    ComCarrier(EventPump& pump, CarrierPatience patience)
        : m_link(std::make_shared<ComLink>(pump, std::move(patience)))
    {
    }

    void beginAction(int limitMs) override { m_link->beginAction(limitMs); }
    bool isGivenUp() const override { return m_link->isGivenUp(); }

    Result<AutomationObjectPtr> attach(const std::string& progId) override
    {
        return application(m_link->ask([progId] { return running(progId); }));
    }
    Result<AutomationObjectPtr> create(const std::string& progId) override
    {
        return application(m_link->askToStart([progId] { return started(progId); }));
    }

private:
    Result<AutomationObjectPtr> application(Result<ComPointer<IDispatch>> found) const
    {
        if (!found)
            return found.error();
        return AutomationObjectPtr(std::make_shared<ComObject>(m_link, std::move(*found)));
    }

    std::shared_ptr<ComLink> m_link;
};

} // namespace

std::unique_ptr<Automation> comAutomation(EventPump& pump, CarrierPatience patience)
{
    return std::make_unique<ComCarrier>(pump, std::move(patience));
}

std::unique_ptr<Automation> systemAutomation(EventPump& pump)
{
    return comAutomation(pump, CarrierPatience{});
}

} // namespace zv
