#include "Commands.h"

#include "FindFile.h"

namespace zv::bench {

namespace {

void tell(Workshop& workshop, const Result<void>& done)
{
    if (!done)
        workshop.front().write(done.error().text);
}

void saveAs(Workshop& workshop, std::string path)
{
    if (path.empty())
        return;
    const std::string stem = fileStem(path);
    if (path.ends_with(stem))
        path += ".dwg";
    tell(workshop, workshop.active()->save(path));
}

void openPath(Workshop& workshop, const std::string& path)
{
    if (path.empty())
        return;
    const Result<std::shared_ptr<BenchDrawing>> opened = workshop.open(path);
    if (!opened)
        workshop.front().write(opened.error().text);
}

void quickSave(Workshop& workshop)
{
    if (workshop.active()->path().empty())
        saveAs(workshop, workshop.front().chooseFile(true));
    else
        tell(workshop, workshop.active()->save());
}

void editProperties(Workshop& workshop)
{
    dwg::Properties properties = workshop.active()->properties();
    const std::shared_ptr<BenchDrawing> drawing = workshop.active();
    if (workshop.front().editProperties(properties))
        drawing->setProperties(std::move(properties));
}

using PathTaker = void (*)(Workshop&, std::string);

/// Asks for a file name in a dialog, or at the command line where the user has turned such dialogs off.
std::unique_ptr<Command> fileQuestion(Workshop& workshop, const char* question, bool toSave, PathTaker take)
{
    if (workshop.variables().whole("FILEDIA") != 0) {
        return std::make_unique<PlainCommand>(
            [&workshop, toSave, take] { take(workshop, workshop.front().chooseFile(toSave)); });
    }
    return std::make_unique<QuestionCommand>(
        Prompt{question, true, false, {}}, [&workshop, toSave, take](const Answer& answer) {
            take(workshop, answer.text == "~" ? workshop.front().chooseFile(toSave) : answer.text);
            return Step::Done;
        });
}

} // namespace

std::unique_ptr<Command> makeFileCommand(const std::string& name, Workshop& workshop)
{
    if (name == "NEW")
        return std::make_unique<PlainCommand>([&workshop] { workshop.add(); });
    if (name == "QUIT" || name == "EXIT")
        return std::make_unique<PlainCommand>([&workshop] { workshop.front().quit(); });
    if (name == "OPEN") {
        return fileQuestion(workshop, "Enter name of drawing to open:", false,
                            [](Workshop& shop, std::string path) { openPath(shop, path); });
    }
    if (!workshop.active())
        return nullptr;
    if (name == "QSAVE" || name == "SAVE")
        return std::make_unique<PlainCommand>([&workshop] { quickSave(workshop); });
    if (name == "SAVEAS")
        return fileQuestion(workshop, "Save drawing as:", true, saveAs);
    if (name == "CLOSE")
        return std::make_unique<PlainCommand>([&workshop] { workshop.close(workshop.active()); });
    if (name == "DWGPROPS")
        return std::make_unique<PlainCommand>([&workshop] { editProperties(workshop); });
    return nullptr;
}

} // namespace zv::bench
