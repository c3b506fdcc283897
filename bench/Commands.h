#pragma once

#include "Command.h"
#include "Workshop.h"

#include <functional>

namespace zv::bench {

// The commands by subject; each makes the one of the name, or null.
std::unique_ptr<Command> makeInsert(Workshop& workshop);
std::unique_ptr<Command> makeXref(Workshop& workshop);
std::unique_ptr<Command> makeErase(Workshop& workshop);
std::unique_ptr<Command> makeDrawCommand(const std::string& name, Workshop& workshop);
std::unique_ptr<Command> makeFileCommand(const std::string& name, Workshop& workshop);
std::unique_ptr<Command> makeSaveCommand(bool underNewName, Workshop& workshop);
std::unique_ptr<Command> makeViewCommand(const std::string& name, Workshop& workshop);
/// Asks for a variable's new value.
std::unique_ptr<Command> makeSetVariable(const std::string& variable, Workshop& workshop);

/// Closes a drawing; one that is not saved only as the user says. False when it stays open.
bool closeDrawing(Workshop& workshop, const std::shared_ptr<BenchDrawing>& drawing);
/// Saves a drawing with its questions in dialogs; a new one, and one that cannot be saved as it is, under a
/// name that the user chooses. False when it is not saved.
bool keepDrawing(Workshop& workshop, const std::shared_ptr<BenchDrawing>& drawing);

/// A command without prompts.
class PlainCommand final : public Command {
public:
    explicit PlainCommand(std::function<void()> run) : m_run(std::move(run)) {}
    Step begin() override
    {
        m_run();
        return Step::Done;
    }
    Prompt prompt() const override { return {}; }
    Step answer(const Answer&) override { return Step::Done; }

private:
    std::function<void()> m_run;
};

/// A command with one prompt.
class QuestionCommand final : public Command {
public:
    QuestionCommand(Prompt prompt, std::function<Step(const Answer&)> take,
                    std::function<void()> whenCancelled = {})
        : m_prompt(std::move(prompt)), m_take(std::move(take)), m_whenCancelled(std::move(whenCancelled))
    {
    }
    Prompt prompt() const override { return m_prompt; }
    Step answer(const Answer& answer) override { return m_take(answer); }
    void cancelled() override
    {
        if (m_whenCancelled)
            m_whenCancelled();
    }

private:
    Prompt m_prompt;
    std::function<Step(const Answer&)> m_take;
    std::function<void()> m_whenCancelled;
};

} // namespace zv::bench
