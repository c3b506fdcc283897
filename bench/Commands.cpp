#include "Commands.h"

#include "platform/Text.h"

namespace zv::bench {

namespace {

class SetVariableCommand final : public Command {
public:
    SetVariableCommand(std::string variable, Workshop& workshop)
        : m_variable(std::move(variable)), m_workshop(workshop)
    {
    }
    Prompt prompt() const override
    {
        if (m_variable.empty())
            return {"Enter variable name:", false, false, {}};
        const AutomationValue value = variables().get(m_variable).valueOr({});
        const bool isText = std::holds_alternative<std::string>(value);
        return {"Enter new value for " + m_variable + " <" + shownValue(value) + ">:", isText, false, {}};
    }
    Step answer(const Answer& answer) override
    {
        if (m_variable.empty())
            return nameAnswer(answer);
        if (answer.isEnter())
            return Step::Done;
        if (const Result<void> set = variables().setFromText(m_variable, answer.text); !set) {
            m_workshop.front().write(set.error().text);
            return Step::Invalid;
        }
        return Step::Done;
    }

private:
    Step nameAnswer(const Answer& answer)
    {
        m_variable = upper(answer.text);
        if (variables().has(m_variable))
            return Step::More;
        m_workshop.front().write("Unknown variable name \"" + m_variable + "\".");
        m_variable.clear();
        return Step::Invalid;
    }
    Variables& variables() const { return m_workshop.variablesFor(m_variable, m_workshop.active()); }

    std::string m_variable;
    Workshop& m_workshop;
};

} // namespace

std::unique_ptr<Command> makeSetVariable(const std::string& variable, Workshop& workshop)
{
    return std::make_unique<SetVariableCommand>(variable, workshop);
}

std::unique_ptr<Command> makeCommand(const std::string& name, Workshop& workshop)
{
    if (name == "-INSERT" || name == "INSERT" || name == "-I" || name == "I")
        return makeInsert(workshop);
    if (name == "-XREF" || name == "XREF" || name == "-XR" || name == "XR")
        return makeXref(workshop);
    if (auto command = makeDrawCommand(name, workshop))
        return command;
    if (auto command = makeFileCommand(name, workshop))
        return command;
    if (auto command = makeViewCommand(name, workshop))
        return command;
    if (name == "SETVAR")
        return makeSetVariable({}, workshop);
    if (workshop.variablesFor(name, workshop.active()).has(name))
        return makeSetVariable(name, workshop);
    return nullptr;
}

} // namespace zv::bench
