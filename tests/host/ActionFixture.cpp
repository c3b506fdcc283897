#include "host/ActionFixture.h"

#include "platform/Text.h"

namespace zv::test {

namespace {

std::string shown(const AutomationValue& value);

struct Shower {
    std::string operator()(std::monostate) const { return "empty"; }
    std::string operator()(MissingArgument) const { return "missing"; }
    std::string operator()(bool truth) const { return truth ? "True" : "False"; }
    std::string operator()(std::int64_t whole) const { return std::to_string(whole); }
    std::string operator()(double number) const { return "double " + numberText(number); }
    std::string operator()(const std::string& text) const
    {
        std::string line = "'";
        for (const char c : text)
            line += c == '\r' ? std::string("<CR>") : std::string(1, c);
        return line + "'";
    }
    std::string operator()(const AutomationPoint& p) const
    {
        return "(" + numberText(p.x) + " " + numberText(p.y) + " " + numberText(p.z) + ")";
    }
    std::string operator()(const AutomationObjectPtr&) const { return "object"; }
};

std::string shown(const AutomationValue& value)
{
    return std::visit(Shower{}, value);
}

class RecordingObject final : public AutomationObject {
public:
    RecordingObject(AutomationObjectPtr inner, std::string name, Events& events)
        : m_inner(std::move(inner)), m_name(std::move(name)), m_events(events)
    {
    }
    Result<AutomationValue> get(std::string_view name) override
    {
        m_events.push_back(m_name + "." + std::string(name));
        return wrapped(m_inner->get(name), std::string(name));
    }
    Result<void> set(std::string_view name, const AutomationValue& value) override
    {
        m_events.push_back(m_name + "." + std::string(name) + " = " + shown(value));
        return m_inner->set(name, value);
    }
    Result<AutomationValue> call(std::string_view name,
                                 const std::vector<AutomationValue>& arguments) override
    {
        std::string line = m_name + "." + std::string(name) + "(";
        for (std::size_t index = 0; index < arguments.size(); ++index)
            line += (index > 0 ? ", " : "") + shown(arguments[index]);
        m_events.push_back(line + ")");
        return wrapped(m_inner->call(name, arguments), std::string(name));
    }
    Result<std::vector<AutomationValue>> items() override
    {
        m_events.push_back(m_name + " items");
        auto members = m_inner->items();
        if (members) {
            for (AutomationValue& member : *members)
                member = *wrapped(member, "Block");
        }
        return members;
    }

private:
    Result<AutomationValue> wrapped(Result<AutomationValue> value, const std::string& name)
    {
        if (value) {
            if (auto* object = std::get_if<AutomationObjectPtr>(&*value))
                *object = std::make_shared<RecordingObject>(std::move(*object), name, m_events);
        }
        return value;
    }

    AutomationObjectPtr m_inner;
    std::string m_name;
    Events& m_events;
};

const char* iconName(MessageIcon icon)
{
    switch (icon) {
    case MessageIcon::Critical:
        return "critical";
    case MessageIcon::Question:
        return "question";
    case MessageIcon::Warning:
        return "warning";
    case MessageIcon::Information:
        return "information";
    case MessageIcon::None:
        break;
    }
    return "plain";
}

std::string line(const Message& message)
{
    std::string text;
    for (const char c : message.text)
        text += c == '\r' ? "|" : c == '\n' ? "" : std::string(1, c);
    return std::string(iconName(message.icon)) + " [" + message.title + "] " + text;
}

} // namespace

const Events kInsertion = {"hide",
                           "attach AutoCAD.Application",
                           "App.ActiveDocument",
                           "App.Visible = True",
                           "App.Caption",
                           "activate Scripted Host",
                           "ActiveDocument.ObjectSnapMode",
                           "ActiveDocument.GetVariable('filedia')",
                           "ActiveDocument.SetVariable('Filedia', 0)",
                           "ActiveDocument.SendCommand('(command \"_.-insert\" "
                           "\"C:/Lib/Bolt.dwg\"\"X\"\"1.00\"\"Y\"\"1.00\"\"Z\"\"1.00\")<CR>')",
                           "ActiveDocument.SetVariable('Filedia', 1)",
                           "ActiveDocument.SetVariable('Filedia', 1)",
                           "show",
                           "ActiveDocument.SetVariable('Filedia', 1)",
                           kLogLine};

Result<AutomationObjectPtr> RecordingAutomation::attach(const std::string& progId)
{
    return noted("attach " + progId, m_inner.attach(progId));
}

Result<AutomationObjectPtr> RecordingAutomation::create(const std::string& progId)
{
    return noted("create " + progId, m_inner.create(progId));
}

Result<AutomationObjectPtr> RecordingAutomation::noted(const std::string& what,
                                                       Result<AutomationObjectPtr> application)
{
    m_events.push_back(what + (application ? "" : ": none"));
    if (application)
        return AutomationObjectPtr(std::make_shared<RecordingObject>(*application, "App", m_events));
    return application;
}

void RecordingWindow::show(const Message& message)
{
    m_events.push_back(line(message));
}

bool RecordingWindow::ask(const Message& message)
{
    const bool yes = !answers.empty() && answers.front();
    if (!answers.empty())
        answers.pop_front();
    m_events.push_back(line(message) + (yes ? " Yes" : " No"));
    return yes;
}

void RecordingWindow::setScaleText(const std::string& text)
{
    x = text;
    m_events.push_back("x " + text);
}

Result<std::string> RecordingWindow::firstCustomProperty(const std::string& drawing)
{
    m_events.push_back("property of " + drawing);
    return property;
}

bool RecordingWindow::openXattach(const std::string& drawing, const std::string& storedScale)
{
    m_events.push_back("Xattach " + drawing + (storedScale.empty() ? "" : ", scale " + storedScale));
    return hasDialogs;
}

bool RecordingWindow::openCmode(const std::string& drawing)
{
    m_events.push_back("cmode " + drawing);
    return hasDialogs;
}

ActionFixture::ActionFixture()
{
    services.activateWindow = [this](const std::string& title) {
        events.push_back("activate " + title);
        whenActivated();
        return activationWorks;
    };
    services.addToQueue = [this](const std::string& drawing, const std::function<void()>& whileOpen) {
        events.push_back("queue '" + drawing + "'");
        if (queued)
            whileOpen();
        return queued;
    };
    services.writeLog = [this](const std::string& drawing, std::string_view method) {
        events.push_back("log " + drawing + ", " + std::string(method));
    };
}

void ActionFixture::act(const std::string& drawing, ActionCaller caller)
{
    ended = runAction(caller, drawing, selectedDrawing, window, services, settings);
}

Events operator+(Events first, const Events& second)
{
    first.insert(first.end(), second.begin(), second.end());
    return first;
}

} // namespace zv::test
