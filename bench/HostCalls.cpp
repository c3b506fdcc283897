#include "HostObjects.h"

#include "HostValues.h"

#include "platform/Text.h"

namespace zv::bench {

namespace {

/// Line ends before a prompt only bring it to a new line.
std::string promptText(const Json* prompt, const char* fallback)
{
    const std::string text = prompt != nullptr ? textOf(*prompt) : std::string();
    const std::size_t first = text.find_first_not_of("\r\n");
    return first == std::string::npos ? std::string(fallback) : text.substr(first);
}

} // namespace

HostObjects::Reply HostObjects::call(const Object& object, const std::string& name,
                                     const Arguments& arguments, const Respond& finish)
{
    switch (object.kind) {
    case Kind::Application:
        if (name == "QUIT") {
            m_program.workshop.front().quit();
            return Json();
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

HostObjects::Reply HostObjects::callDocuments(const std::string& name, const Arguments& arguments)
{
    const Json* const first = argument(arguments, 0);
    if (name == "ADD") {
        if (const auto unsaved = m_program.workshop.unsavedBeforeNext())
            return Failure{"failed", unsaved->title() + " is not saved, and only one drawing can be open"};
        return give({Kind::Document, m_program.workshop.add(), 0});
    }
    if (name == "OPEN") {
        if (first == nullptr || first->text() == nullptr)
            return Failure{"bad-argument", "Open takes a path"};
        const auto opened = m_program.workshop.open(textOf(*first));
        if (!opened)
            return Failure{"failed", opened.error().text};
        return give({Kind::Document, *opened, 0});
    }
    if (name == "ITEM" && first != nullptr) {
        std::int64_t index = 0;
        for (const auto& drawing : m_program.workshop.drawings()) {
            const bool isMeant = first->whole() != nullptr ? *first->whole() == index
                                                           : sameText(drawing->title(), textOf(*first));
            if (isMeant)
                return give({Kind::Document, drawing, 0});
            ++index;
        }
        return Failure{"bad-argument", "There is no such drawing"};
    }
    return unknownName(name);
}

HostObjects::Reply HostObjects::callDocument(const Object& object, const std::string& name,
                                             const Arguments& arguments)
{
    if (name == "GETVARIABLE" || name == "SETVARIABLE")
        return variable(object, name, arguments);
    if (name == "SENDCOMMAND") {
        const Json* const text = argument(arguments, 0);
        if (text == nullptr || text->text() == nullptr)
            return Failure{"bad-argument", "SendCommand takes a text"};
        m_program.workshop.activate(object.drawing);
        m_program.commandLine.type(textOf(*text));
        return Json();
    }
    if (name == "CLOSE")
        return closeDocument(object, arguments);
    if (name == "SAVE" || name == "SAVEAS") {
        const Json* const path = argument(arguments, 0);
        const Reply saved = save(object, path != nullptr ? textOf(*path) : std::string());
        m_program.workshop.front().refresh();
        return saved;
    }
    if (name == "ACTIVATE") {
        m_program.workshop.activate(object.drawing);
        return Json();
    }
    return unknownName(name);
}

HostObjects::Reply HostObjects::variable(const Object& object, const std::string& name,
                                         const Arguments& arguments)
{
    const Json* const which = argument(arguments, 0);
    if (which == nullptr || which->text() == nullptr)
        return Failure{"bad-argument", "A variable's name is a text"};
    const std::string variableName = textOf(*which);
    Variables& variables = m_program.workshop.variablesFor(variableName, object.drawing);
    if (name == "GETVARIABLE") {
        const Result<AutomationValue> value = variables.get(variableName);
        if (!value)
            return Failure{"bad-argument", value.error().text};
        return variableJson(*value);
    }
    const Json* const value = argument(arguments, 1);
    const Result<void> set = m_program.workshop.setVariable(
        variableName, value != nullptr ? variableValue(*value) : AutomationValue(), object.drawing);
    if (!set)
        return Failure{"bad-argument", set.error().text};
    return Json();
}

/// Nobody can be asked, so nothing is left out.
HostObjects::Reply HostObjects::save(const Object& object, const std::string& path)
{
    const std::vector<std::string> loss = object.drawing->lossOfSaving(path);
    if (!loss.empty() && (object.drawing->isModified() || !path.empty()))
        return Failure{"failed", "The file would not have: " + joined(loss)};
    if (const auto other = path.empty() ? nullptr : m_program.workshop.drawingOf(path);
        other && other != object.drawing)
        return Failure{"failed", path + " is open in another tab"};
    const Result<void> saved = object.drawing->save(path);
    if (!saved)
        return Failure{"failed", saved.error().text};
    return Json();
}

/// Close([save], [name]): without saving if the first is false; a changed drawing is saved otherwise.
HostObjects::Reply HostObjects::closeDocument(const Object& object, const Arguments& arguments)
{
    const Json* const wish = argument(arguments, 0);
    const bool saves = wish == nullptr || wish->boolean() == nullptr || *wish->boolean();
    if (saves && object.drawing->isModified()) {
        const Json* const name = argument(arguments, 1);
        const Reply saved = save(object, name != nullptr ? textOf(*name) : std::string());
        if (std::holds_alternative<Failure>(saved))
            return saved;
    }
    if (m_program.workshop.active() == object.drawing && !m_program.commandLine.isIdle())
        m_program.commandLine.cancel();
    m_program.workshop.close(object.drawing);
    return Json();
}

HostObjects::Reply HostObjects::callBlocks(const Object& object, const std::string& name,
                                           const Arguments& arguments)
{
    const Json* const which = argument(arguments, 0);
    if (name != "ITEM" || which == nullptr)
        return unknownName(name);
    std::int64_t index = 0;
    for (const dwg::BlockRecord& block : object.drawing->document().blocks) {
        const bool isMeant = which->whole() != nullptr ? *which->whole() == index
                                                       : sameText(narrow(block.name), textOf(*which));
        if (isMeant)
            return give({Kind::Block, object.drawing, block.handle});
        ++index;
    }
    return Failure{"bad-argument", "There is no such block"};
}

HostObjects::Reply HostObjects::callUtility(const Object& object, const std::string& name,
                                            const Arguments& arguments, const Respond& finish)
{
    if (name == "GETPOINT")
        return askPoint(object, arguments, finish);
    if (name == "GETSTRING")
        return askText(object, arguments, finish);
    if (name == "TRANSLATECOORDINATES") {
        dwg::Point3 point;
        const Json* const given = argument(arguments, 0);
        if (given == nullptr || !bench::pointOf(*given, point))
            return Failure{"bad-argument", "TranslateCoordinates takes a point of three numbers"};
        // There is no coordinate system here but the world's.
        return pointValue(point);
    }
    if (name == "PROMPT") {
        const Json* const text = argument(arguments, 0);
        m_program.workshop.front().write(promptText(text, ""));
        return Json();
    }
    if (name == "INITIALIZEUSERINPUT")
        return Json();
    return unknownName(name);
}

HostObjects::Reply HostObjects::askPoint(const Object& object, const Arguments& arguments,
                                         const Respond& finish)
{
    Prompt prompt{promptText(argument(arguments, 1), "Specify a point:"), false, true, {}};
    dwg::Point3 base;
    if (const Json* given = argument(arguments, 0)) {
        if (!bench::pointOf(*given, base))
            return Failure{"bad-argument", "GetPoint takes a point of three numbers"};
        prompt.rubberFrom = base;
    }
    m_program.workshop.activate(object.drawing);
    const auto take = [finish, base](const Answer& answer) {
        const auto point = bench::pointOf(answer, base);
        if (!point)
            return Step::Invalid;
        finish(Json(Json::Object{{"result", pointValue(*point)}}));
        return Step::Done;
    };
    ask(std::move(prompt), take, finish);
    return Later{};
}

HostObjects::Reply HostObjects::askText(const Object& object, const Arguments& arguments,
                                        const Respond& finish)
{
    const Json* const blanks = argument(arguments, 0);
    const bool takesBlanks = blanks != nullptr && blanks->boolean() != nullptr && *blanks->boolean();
    m_program.workshop.activate(object.drawing);
    const auto take = [finish](const Answer& answer) {
        finish(Json(Json::Object{{"result", wireText(answer.text)}}));
        return Step::Done;
    };
    ask({promptText(argument(arguments, 1), "Enter text:"), takesBlanks, false, {}}, take, finish);
    return Later{};
}

/// Puts a question of another program to the user, in the place of a command that may run.
void HostObjects::ask(Prompt prompt, std::function<Step(const Answer&)> take, const Respond& finish)
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
            finish(failureAnswer({"cancelled", "The user pressed Esc"}));
        });
    m_program.commandLine.run(std::move(question));
    *m_asking = true;
    m_program.inCall = true;
}

} // namespace zv::bench
