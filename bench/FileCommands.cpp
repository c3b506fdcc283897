#include "Commands.h"

#include "FindFile.h"

namespace zv::bench {

namespace {

/// In single-drawing mode the next drawing takes the place of the open one, which may not be saved.
bool makesRoom(Workshop& workshop)
{
    const auto unsaved = workshop.unsavedBeforeNext();
    return !unsaved || closeDrawing(workshop, unsaved);
}

void openPath(Workshop& workshop, const std::string& path)
{
    if (path.empty() || (!workshop.drawingOf(path) && !makesRoom(workshop)))
        return;
    const Result<std::shared_ptr<BenchDrawing>> opened = workshop.open(path);
    if (!opened)
        workshop.front().write(opened.error().text);
}

/// The file of a typed name; the name itself where there is none, for the message.
std::string meantFile(Workshop& workshop, const std::string& typed)
{
    const std::string found =
        findDrawingFile(typed, workshop.active() ? workshop.active()->path() : std::string());
    return found.empty() || typed.empty() ? typed : found;
}

void editProperties(Workshop& workshop)
{
    dwg::Properties properties = workshop.active()->properties();
    const std::shared_ptr<BenchDrawing> drawing = workshop.active();
    if (workshop.front().editProperties(properties) && properties != drawing->properties())
        drawing->setProperties(std::move(properties));
}

/// Asks for a drawing in a dialog, or at the command line where the user has turned such dialogs off.
std::unique_ptr<Command> makeOpen(Workshop& workshop)
{
    if (workshop.variables().whole("FILEDIA") != 0) {
        return std::make_unique<PlainCommand>(
            [&workshop] { openPath(workshop, workshop.front().chooseFile(false, {})); });
    }
    return std::make_unique<QuestionCommand>(
        Prompt{"Enter name of drawing to open:", true, false, {}}, [&workshop](const Answer& answer) {
            openPath(workshop, answer.text == "~" ? workshop.front().chooseFile(false, {})
                                                  : meantFile(workshop, answer.text));
            return Step::Done;
        });
}

} // namespace

std::unique_ptr<Command> makeFileCommand(const std::string& name, Workshop& workshop)
{
    if (name == "NEW") {
        return std::make_unique<PlainCommand>([&workshop] {
            if (makesRoom(workshop))
                workshop.add();
        });
    }
    if (name == "QUIT")
        return std::make_unique<PlainCommand>([&workshop] { workshop.front().quit(); });
    if (name == "OPEN")
        return makeOpen(workshop);
    if (name == "QSAVE" || name == "SAVEAS")
        return makeSaveCommand(name == "SAVEAS", workshop);
    if (name == "CLOSE")
        return std::make_unique<PlainCommand>([&workshop] { closeDrawing(workshop, workshop.active()); });
    if (name == "DWGPROPS")
        return std::make_unique<PlainCommand>([&workshop] { editProperties(workshop); });
    return nullptr;
}

} // namespace zv::bench
