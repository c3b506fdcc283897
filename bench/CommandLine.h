#pragma once

#include "Command.h"
#include "Lisp.h"
#include "Workshop.h"

#include <deque>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

namespace zv::bench {

/// The command line: takes what is typed, whoever types it, and hands it to the running command prompt by
/// prompt. Enter or a blank ends an entry; "(command ...)" scripts a command and leaves what it does not
/// answer to the user.
class CommandLine {
public:
    explicit CommandLine(Workshop& workshop) : m_workshop(workshop) {}

    /// Takes typed characters; what is not ended yet is kept for what is typed next.
    void type(std::string_view text);
    /// A point picked on the canvas; false when no point is asked for.
    bool pick(const dwg::Point3& point);
    /// Esc.
    void cancel();
    /// Runs a command that is not typed by name, in the place of the one that runs.
    void run(std::unique_ptr<Command> command);

    bool isIdle() const { return m_command == nullptr; }
    Prompt prompt() const;
    /// Is called whenever the prompt has changed.
    std::function<void()> changed = [] {};

private:
    /// What a LISP expression still has to do.
    struct ScriptItem {
        enum class Kind { Answer, Pause, SetVariable };
        Kind kind = Kind::Answer;
        Answer answer;
        std::string variable;
        AutomationValue value;
    };

    int openBrackets(std::string_view typed) const;
    void echo(std::size_t end);
    void advance();
    bool advanceScript();
    bool advanceTyped();
    bool takeEntry(std::string& entry);
    bool takeExpression();
    void evaluate(const LispItem& item);
    void scriptCommand(const LispItem& item);
    void scriptVariable(const LispItem& item);
    void feed(const Answer& answer);
    void start(const std::string& entry);
    void begin(std::unique_ptr<Command> command);
    void stop();

    Workshop& m_workshop;
    std::shared_ptr<Command>
        m_command; ///< Shared with the call that runs it, which may outlast its place here.
    std::deque<ScriptItem> m_script;
    bool m_paused = false; ///< The script waits for the user's answer to one prompt.
    std::string m_typed;
    std::size_t m_echoed = 0; ///< As far as the history has it already, of an expression that is not closed.
    std::string m_lastName;
    bool m_advancing = false;
};

} // namespace zv::bench
