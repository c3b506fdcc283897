#include "Commands.h"

#include "platform/Text.h"

#include <algorithm>
#include <string_view>
#include <vector>

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
        const Result<AutomationValue> value = variables().valueOf(m_variable, answer.text);
        const Result<void> set =
            value ? m_workshop.setVariable(m_variable, *value, m_workshop.active()) : value.error();
        if (!set) {
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

struct KnownCommand {
    std::string_view name;
    std::string_view others; ///< Between blanks.
    const char* line;        ///< What it does.
    bool needsDrawing;
};

constexpr KnownCommand kCommands[] = {
    {"-INSERT", " INSERT -I I ", "places a block of the drawing, or a drawing file as a block", true},
    {"-XREF", " XREF -XR XR ", "attaches a drawing file as a reference, lists, reloads or detaches", true},
    {"LINE", " L ", "draws lines; U takes back the last one", true},
    {"CIRCLE", " C ", "draws a circle", true},
    {"ERASE", " E ", "erases objects", true},
    {"U", "  ", "takes back the last command", true},
    {"UNDO", "  ", "takes back several commands, as far as the opening of the drawing", true},
    {"REDO", "  ", "brings back what was taken back last", true},
    {"ZOOM", " Z ", "shows more or less of the drawing", false},
    {"REGEN", " RE REDRAW ", "draws the picture anew", false},
    {"NEW", "  ", "begins a drawing", false},
    {"OPEN", "  ", "opens a drawing file", false},
    {"QSAVE", " SAVE ", "saves the drawing", true},
    {"SAVEAS", "  ", "saves the drawing under a new name", true},
    {"CLOSE", "  ", "closes the drawing", true},
    {"DWGPROPS", "  ", "shows and changes the drawing's properties", true},
    {"SETVAR", "  ", "shows and sets a variable; its name alone does so too", false},
    {"HELP", " ? ", "lists the commands", false},
    {"QUIT", " EXIT ", "ends the program", false},
};

const KnownCommand* knownCommand(const std::string& name)
{
    for (const KnownCommand& known : kCommands) {
        if (known.name == name || known.others.find(" " + name + " ") != std::string_view::npos)
            return &known;
    }
    return nullptr;
}

void listCommands(Workshop& workshop)
{
    constexpr std::size_t kNameWidth = 10;
    for (const KnownCommand& known : kCommands) {
        std::string name(known.name);
        name.resize(std::max(name.size(), kNameWidth), ' ');
        workshop.front().write("  " + name + known.line);
    }
    workshop.front().write(
        "  Enter repeats the last command, Esc cancels, Up and Down bring typed lines back.");
}

std::unique_ptr<Command> commandOf(const std::string& name, Workshop& workshop)
{
    if (name == "-INSERT")
        return makeInsert(workshop);
    if (name == "-XREF")
        return makeXref(workshop);
    if (name == "HELP")
        return std::make_unique<PlainCommand>([&workshop] { listCommands(workshop); });
    if (name == "SETVAR")
        return makeSetVariable({}, workshop);
    for (const auto make : {makeDrawCommand, makeFileCommand, makeViewCommand}) {
        if (auto command = make(name, workshop))
            return command;
    }
    return nullptr;
}

} // namespace

std::string expectation(const Prompt& prompt)
{
    std::vector<std::string> wanted;
    if (prompt.takesPoint)
        wanted.push_back("a point (a pick, or x,y)");
    for (const char* number : {"factor", "radius", "angle", "number", "new value"}) {
        if (prompt.text.find(number) != std::string::npos) {
            wanted.push_back("a number");
            break;
        }
    }
    if (prompt.text.find('[') != std::string::npos)
        wanted.push_back("a word in the brackets");
    if (prompt.text.ends_with("<N>"))
        wanted.push_back("Y or N");
    std::string text;
    for (const std::string& each : wanted)
        text += (text.empty() ? "Expected: " : &each == &wanted.back() ? " or " : ", ") + each;
    return text.empty() ? "That does not fit here." : text + ".";
}

std::unique_ptr<Command> makeSetVariable(const std::string& variable, Workshop& workshop)
{
    return std::make_unique<SetVariableCommand>(variable, workshop);
}

CommandStart makeCommand(const std::string& name, Workshop& workshop)
{
    if (const KnownCommand* const known = knownCommand(name)) {
        if (known->needsDrawing && !workshop.active())
            return {nullptr, "No drawing is open. NEW begins one, OPEN opens one."};
        return {commandOf(std::string(known->name), workshop), {}};
    }
    if (workshop.variablesFor(name, workshop.active()).has(name))
        return {makeSetVariable(name, workshop), {}};
    return {nullptr, "Unknown command \"" + name + "\". HELP lists the commands."};
}

} // namespace zv::bench
