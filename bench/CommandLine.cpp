#include "CommandLine.h"

#include "platform/Text.h"

#include <algorithm>
#include <cmath>

namespace zv::bench {

namespace {

constexpr std::string_view kBlanks = " \t";
constexpr std::string_view kEnds = "\r\n";

std::optional<dwg::Point3> pointOfList(const LispItem& item)
{
    std::vector<double> numbers;
    for (const LispItem& part : item.items) {
        if (part.kind == LispItem::Kind::Number)
            numbers.push_back(part.number);
    }
    if (item.items.size() == 2 && item.items[0].text == "QUOTE")
        return pointOfList(item.items[1]);
    if (numbers.size() < 2 || numbers.size() > 3)
        return std::nullopt;
    return dwg::Point3{numbers[0], numbers[1], numbers.size() == 3 ? numbers[2] : 0};
}

std::string shownPoint(const dwg::Point3& point)
{
    constexpr double kShown = 1e4;
    std::string text;
    for (const double number : {point.x, point.y, point.z})
        text += (text.empty() ? "" : ",") + numberText(std::round(number * kShown) / kShown + 0.0);
    return text.ends_with(",0") ? text.substr(0, text.size() - 2) : text;
}

/// "_.-insert" and its like, in capitals and without what only says how the name is meant.
std::string commandName(const std::string& entry)
{
    return upper(std::string_view(entry).substr(std::min(entry.find_first_not_of("_.'"), entry.size())));
}

std::string continuing(int open)
{
    return "(" + std::to_string(open) + ">";
}

} // namespace

/// How many brackets and texts of an expression are still open; 0 when none is being typed.
int CommandLine::openBrackets(std::string_view typed) const
{
    const std::size_t first = typed.find_first_not_of(kBlanks);
    if (first == std::string::npos || typed[first] != '(' || (m_command && m_command->prompt().takesBlanks))
        return 0;
    int open = 0;
    bool inText = false;
    for (std::size_t at = first; at < typed.size(); ++at) {
        if (inText && typed[at] == '\\')
            ++at;
        else if (typed[at] == '"')
            inText = !inText;
        else if (!inText && typed[at] == '(')
            ++open;
        else if (!inText && typed[at] == ')')
            --open;
    }
    return std::max(open, 1);
}

Prompt CommandLine::prompt() const
{
    if (const int open = openBrackets(m_typed); open > 0)
        return {continuing(open), true, false, {}};
    return m_command ? m_command->prompt() : Prompt{"Command:", false, false, {}};
}

void CommandLine::type(std::string_view text)
{
    m_typed += text;
    advance();
}

bool CommandLine::pick(const dwg::Point3& point)
{
    if (!m_command || !m_command->prompt().takesPoint)
        return false;
    m_workshop.front().write(m_command->prompt().text + " " + shownPoint(point));
    Answer answer;
    answer.point = point;
    m_paused = false;
    feed(answer);
    advance();
    return true;
}

void CommandLine::cancel()
{
    if (m_command || openBrackets(m_typed) > 0)
        m_workshop.front().write("*Cancel*");
    m_typed.clear();
    m_echoed = 0;
    stop();
    changed();
}

void CommandLine::run(std::unique_ptr<Command> command)
{
    m_typed.clear();
    m_echoed = 0;
    stop();
    begin(std::move(command));
    changed();
}

/// A command that shows a dialog comes back here while it still runs; what was typed meanwhile has its turn
/// afterwards.
void CommandLine::advance()
{
    if (m_advancing)
        return;
    m_advancing = true;
    while (m_paused || m_script.empty() ? advanceTyped() : advanceScript()) {
    }
    m_advancing = false;
    changed();
}

bool CommandLine::advanceScript()
{
    const ScriptItem item = m_script.front();
    if (item.kind == ScriptItem::Kind::Pause && m_command) {
        m_script.pop_front();
        m_paused = true;
        return true;
    }
    m_script.pop_front();
    if (item.kind == ScriptItem::Kind::SetVariable) {
        const Result<void> set = m_workshop.setVariable(item.variable, item.value, m_workshop.active());
        if (!set)
            m_workshop.front().write("; error: " + set.error().text);
    } else if (item.kind == ScriptItem::Kind::Answer) {
        feed(item.answer);
    }
    return true;
}

bool CommandLine::advanceTyped()
{
    const std::size_t first = m_typed.find_first_not_of(kBlanks);
    const bool isExpression = first != std::string::npos && m_typed[first] == '(';
    if (isExpression && (!m_command || !m_command->prompt().takesBlanks)) {
        m_typed.erase(0, first);
        return takeExpression();
    }
    std::string entry;
    if (!takeEntry(entry))
        return false;
    m_paused = false;
    m_workshop.front().write(prompt().text + " " + entry);
    feed({entry, std::nullopt, false});
    return true;
}

bool CommandLine::takeEntry(std::string& entry)
{
    const bool keepBlanks = m_command && m_command->prompt().takesBlanks;
    if (!m_command)
        m_typed.erase(0, std::min(m_typed.find_first_not_of(kBlanks), m_typed.size()));
    const std::string ends = keepBlanks ? std::string(kEnds) : std::string(kEnds) + std::string(kBlanks);
    const std::size_t end = m_typed.find_first_of(ends);
    if (end == std::string::npos)
        return false;
    entry = m_typed.substr(0, end);
    const bool isPair = m_typed.compare(end, 2, "\r\n") == 0;
    m_typed.erase(0, end + (isPair ? 2 : 1));
    return true;
}

bool CommandLine::takeExpression()
{
    LispItem item;
    std::size_t used = 0;
    const LispOutcome outcome = readLisp(m_typed, item, used);
    if (outcome == LispOutcome::Incomplete) {
        if (m_typed.size() > m_echoed && kEnds.find(m_typed.back()) != std::string_view::npos)
            echo(m_typed.size());
        return false;
    }
    if (outcome == LispOutcome::Malformed) {
        m_typed.clear();
        m_echoed = 0;
        m_workshop.front().write("; error: malformed expression");
        return false;
    }
    echo(used);
    m_echoed = 0;
    // The Enter behind an expression belongs to it.
    if (used < m_typed.size() && m_typed.find_first_of("\r\n ", used) == used)
        ++used;
    m_typed.erase(0, used);
    // An expression takes over from a command that still waits.
    if (m_command && !m_paused)
        stop();
    evaluate(item);
    return true;
}

/// Writes what was typed of an expression, up to `end`, to the history, behind the prompt that it stood at.
void CommandLine::echo(std::size_t end)
{
    std::string text = m_typed.substr(m_echoed, end - m_echoed);
    text.erase(text.find_last_not_of(kEnds) + 1);
    const std::string command = m_command ? m_command->prompt().text : "Command:";
    const int open = openBrackets(std::string_view(m_typed).substr(0, m_echoed));
    m_workshop.front().write((open > 0 ? continuing(open) : command) + " " + text);
    m_echoed = end;
}

void CommandLine::evaluate(const LispItem& item)
{
    if (item.kind != LispItem::Kind::List || item.items.empty())
        return;
    const std::string& function = item.items[0].text;
    if (function == "COMMAND" || function == "VL-CMDF" || function == "COMMAND-S") {
        scriptCommand(item);
    } else if (function == "SETVAR") {
        scriptVariable(item);
    } else if (function == "PROGN") {
        for (std::size_t index = 1; index < item.items.size(); ++index)
            evaluate(item.items[index]);
    } else if (function == "GETVAR" && item.items.size() == 2) {
        const std::string& name = item.items[1].text;
        const auto value = m_workshop.variablesFor(name, m_workshop.active()).get(name);
        m_workshop.front().write(value ? shownValue(*value) : "nil");
    } else if (function != "PRINC") {
        m_workshop.front().write("; error: no function definition: " + function);
    }
}

void CommandLine::scriptCommand(const LispItem& item)
{
    for (std::size_t index = 1; index < item.items.size(); ++index) {
        const LispItem& part = item.items[index];
        ScriptItem step;
        step.answer.scripted = true;
        if (part.kind == LispItem::Kind::List)
            step.answer.point = pointOfList(part);
        else if (part.kind == LispItem::Kind::Symbol && part.text == "PAUSE")
            step.kind = ScriptItem::Kind::Pause;
        else
            step.answer.text = part.text;
        m_script.push_back(std::move(step));
    }
}

void CommandLine::scriptVariable(const LispItem& item)
{
    if (item.items.size() != 3)
        return;
    ScriptItem step;
    step.kind = ScriptItem::Kind::SetVariable;
    step.variable = item.items[1].text;
    const LispItem& value = item.items[2];
    const bool isWhole = value.text.find('.') == std::string::npos;
    if (value.kind == LispItem::Kind::Text)
        step.value = value.text;
    else if (isWhole)
        step.value = static_cast<std::int64_t>(value.number);
    else
        step.value = value.number;
    m_script.push_back(std::move(step));
}

void CommandLine::feed(const Answer& answer)
{
    if (!m_command) {
        start(answer.text);
        return;
    }
    const std::shared_ptr<Command> running = m_command;
    const Step step = running->answer(answer);
    if (running != m_command)
        return;
    if (step == Step::Done) {
        m_command.reset();
        m_workshop.front().refresh();
    } else if (step == Step::Invalid && answer.scripted) {
        m_workshop.front().write("; error: Function cancelled");
        stop();
    } else if (step == Step::Invalid) {
        m_workshop.front().write(expectation(running->prompt()));
    }
}

void CommandLine::start(const std::string& entry)
{
    const std::string name = entry.empty() ? m_lastName : commandName(entry);
    if (name.empty())
        return;
    CommandStart started = makeCommand(name, m_workshop);
    if (!started.command) {
        m_workshop.front().write(started.reason);
        m_script.clear();
        return;
    }
    m_lastName = name;
    begin(std::move(started.command));
}

void CommandLine::begin(std::unique_ptr<Command> command)
{
    m_command = std::move(command);
    const std::shared_ptr<Command> running = m_command;
    if (running->begin() != Step::More && running == m_command) {
        m_command.reset();
        m_workshop.front().refresh();
    }
}

void CommandLine::stop()
{
    m_script.clear();
    m_paused = false;
    if (const std::shared_ptr<Command> stopped = std::move(m_command)) {
        stopped->cancelled();
        m_workshop.front().refresh();
    }
}

} // namespace zv::bench
