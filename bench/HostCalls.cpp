#include "HostObjects.h"

#include "HostValues.h"

#include "platform/Text.h"

namespace zv::bench {

namespace {

/// Line ends before a prompt only bring it to a new line.
std::string promptText(const wire::Value* prompt, const char* fallback)
{
    const std::string text = textOf(prompt);
    const std::size_t first = text.find_first_not_of("\r\n");
    return first == std::string::npos ? std::string(fallback) : text.substr(first);
}

} // namespace

HostObjects::Reply HostObjects::call(const Object& object, const std::string& name,
                                     const Arguments& arguments, const Finish& finish)
{
    switch (object.kind) {
    case Kind::Application:
        if (name == "QUIT") {
            m_program.workshop.front().quit();
            return wire::Value();
        }
        break;
    case Kind::Documents:
        return callDocuments(name, arguments);
    case Kind::Document:
        return callDocument(object, name, arguments);
    case Kind::Blocks:
        return callBlocks(object, name, arguments);
    case Kind::Utility:
        return callUtility(object, name, arguments, finish);
    case Kind::Block:
        break;
    }
    return unknownName(name);
}

/// A command goes on in the drawing in which it was begun, so it ends before another one than `next` takes
/// that drawing's place in sight.
void HostObjects::leave(const std::shared_ptr<BenchDrawing>& next)
{
    if (m_program.workshop.active() != next && !m_program.commandLine.isIdle())
        m_program.commandLine.cancel();
}

void HostObjects::show(const Object& object)
{
    leave(object.drawing);
    m_program.workshop.activate(object.drawing);
}

HostObjects::Reply HostObjects::callDocuments(const std::string& name, const Arguments& arguments)
{
    const wire::Value* const first = argument(arguments, 0);
    if (name == "ADD") {
        if (const auto unsaved = m_program.workshop.unsavedBeforeNext())
            return failed(unsaved->title() + " is not saved, and only one drawing can be open");
        leave(nullptr);
        return give({Kind::Document, m_program.workshop.add(), 0});
    }
    if (name == "OPEN") {
        if (argument<std::string>(arguments, 0) == nullptr)
            return badArgument("Open takes a path");
        const std::string path = textOf(*first);
        leave(m_program.workshop.drawingOf(path));
        const auto opened = m_program.workshop.open(path);
        if (!opened)
            return failed(opened.error().text);
        return give({Kind::Document, *opened, 0});
    }
    if (name == "ITEM" && first != nullptr) {
        const auto* const number = std::get_if<std::int64_t>(first);
        std::int64_t index = 0;
        for (const auto& drawing : m_program.workshop.drawings()) {
            const bool isMeant =
                number != nullptr ? *number == index : sameText(drawing->title(), textOf(*first));
            if (isMeant)
                return give({Kind::Document, drawing, 0});
            ++index;
        }
        return badArgument("There is no such drawing");
    }
    return unknownName(name);
}

HostObjects::Reply HostObjects::callDocument(const Object& object, const std::string& name,
                                             const Arguments& arguments)
{
    if (name == "GETVARIABLE" || name == "SETVARIABLE")
        return variable(object, name, arguments);
    if (name == "SENDCOMMAND") {
        const auto* const text = argument<std::string>(arguments, 0);
        if (text == nullptr)
            return badArgument("SendCommand takes a text");
        show(object);
        m_program.commandLine.type(wire::receivedText(*text));
        return wire::Value();
    }
    if (name == "CLOSE")
        return closeDocument(object, arguments);
    if (name == "SAVE" || name == "SAVEAS") {
        const Reply saved = save(object, textOf(argument(arguments, 0)));
        m_program.workshop.front().refresh();
        return saved;
    }
    if (name == "ACTIVATE") {
        show(object);
        return wire::Value();
    }
    return unknownName(name);
}

HostObjects::Reply HostObjects::variable(const Object& object, const std::string& name,
                                         const Arguments& arguments)
{
    const auto* const which = argument<std::string>(arguments, 0);
    if (which == nullptr)
        return badArgument("A variable's name is a text");
    const std::string variableName = wire::receivedText(*which);
    Variables& variables = m_program.workshop.variablesFor(variableName, object.drawing);
    if (name == "GETVARIABLE") {
        const Result<AutomationValue> value = variables.get(variableName);
        if (!value)
            return badArgument(value.error().text);
        return variableValue(*value);
    }
    const wire::Value* const value = argument(arguments, 1);
    const Result<void> set = m_program.workshop.setVariable(
        variableName, value != nullptr ? variableValue(*value) : AutomationValue(), object.drawing);
    if (!set)
        return badArgument(set.error().text);
    return wire::Value();
}

/// Nobody can be asked, so nothing is left out.
HostObjects::Reply HostObjects::save(const Object& object, const std::string& path)
{
    const std::vector<std::string> loss = object.drawing->lossOfSaving(path);
    if (!loss.empty() && (object.drawing->isModified() || !path.empty()))
        return failed("The file would not have: " + joined(loss));
    if (const auto other = path.empty() ? nullptr : m_program.workshop.drawingOf(path);
        other && other != object.drawing)
        return failed(path + " is open in another tab");
    const Result<void> saved = object.drawing->save(path);
    if (!saved)
        return failed(saved.error().text);
    return wire::Value();
}

/// Close([save], [name]): without saving if the first is false; a changed drawing is saved otherwise.
HostObjects::Reply HostObjects::closeDocument(const Object& object, const Arguments& arguments)
{
    const bool* const wish = argument<bool>(arguments, 0);
    const bool saves = wish == nullptr || *wish;
    if (saves && object.drawing->isModified()) {
        const Reply saved = save(object, textOf(argument(arguments, 1)));
        if (std::holds_alternative<wire::Failure>(saved))
            return saved;
    }
    if (m_program.workshop.active() == object.drawing && !m_program.commandLine.isIdle())
        m_program.commandLine.cancel();
    m_program.workshop.close(object.drawing);
    return wire::Value();
}

HostObjects::Reply HostObjects::callBlocks(const Object& object, const std::string& name,
                                           const Arguments& arguments)
{
    const wire::Value* const which = argument(arguments, 0);
    if (name != "ITEM" || which == nullptr)
        return unknownName(name);
    const auto* const number = std::get_if<std::int64_t>(which);
    std::int64_t index = 0;
    for (const dwg::BlockRecord& block : object.drawing->document().blocks) {
        const bool isMeant =
            number != nullptr ? *number == index : sameText(narrow(block.name), textOf(*which));
        if (isMeant)
            return give({Kind::Block, object.drawing, block.handle});
        ++index;
    }
    return badArgument("There is no such block");
}

HostObjects::Reply HostObjects::callUtility(const Object& object, const std::string& name,
                                            const Arguments& arguments, const Finish& finish)
{
    if (name == "GETPOINT")
        return askPoint(object, arguments, finish);
    if (name == "GETSTRING")
        return askText(object, arguments, finish);
    if (name == "TRANSLATECOORDINATES") {
        const auto* const point = argument<AutomationPoint>(arguments, 0);
        if (point == nullptr)
            return badArgument("TranslateCoordinates takes a point of three numbers");
        // There is no coordinate system here but the world's.
        return wire::Value(*point);
    }
    if (name == "PROMPT") {
        m_program.workshop.front().write(promptText(argument(arguments, 0), ""));
        return wire::Value();
    }
    if (name == "INITIALIZEUSERINPUT")
        return wire::Value();
    return unknownName(name);
}

HostObjects::Reply HostObjects::askPoint(const Object& object, const Arguments& arguments,
                                         const Finish& finish)
{
    Prompt prompt{promptText(argument(arguments, 1), "Specify a point:"), false, true, {}};
    dwg::Point3 base;
    if (const wire::Value* given = argument(arguments, 0)) {
        const auto* const point = std::get_if<AutomationPoint>(given);
        if (point == nullptr)
            return badArgument("GetPoint takes a point of three numbers");
        base = pointOf(*point);
        prompt.rubberFrom = base;
    }
    show(object);
    const auto take = [finish, base](const Answer& answer) {
        const auto point = bench::pointOf(answer, base);
        if (!point)
            return Step::Invalid;
        finish(wire::Value(pointOf(*point)));
        return Step::Done;
    };
    ask(std::move(prompt), take, finish);
    return Later{};
}

HostObjects::Reply HostObjects::askText(const Object& object, const Arguments& arguments,
                                        const Finish& finish)
{
    const bool* const blanks = argument<bool>(arguments, 0);
    const bool takesBlanks = blanks != nullptr && *blanks;
    show(object);
    const auto take = [finish](const Answer& answer) {
        finish(textValue(answer.text));
        return Step::Done;
    };
    ask({promptText(argument(arguments, 1), "Enter text:"), takesBlanks, false, {}}, take, finish);
    return Later{};
}

/// Puts a question of another program to the user, in the place of a command that may run.
void HostObjects::ask(Prompt prompt, std::function<Step(const Answer&)> take, const Finish& finish)
{
    const std::shared_ptr<bool> asking = m_asking;
    HostProgram& program = m_program;
    const auto ended = [asking, &program] {
        *asking = false;
        program.inCall = false;
    };
    auto question = std::make_unique<QuestionCommand>(
        std::move(prompt),
        [take = std::move(take), ended](const Answer& answer) {
            const Step step = take(answer);
            if (step == Step::Done)
                ended();
            return step;
        },
        [finish, ended] {
            ended();
            finish(wire::Failure{wire::FailureCode::Cancelled, "The user pressed Esc"});
        });
    m_program.commandLine.run(std::move(question));
    *m_asking = true;
    m_program.inCall = true;
}

} // namespace zv::bench
