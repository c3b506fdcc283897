#include "Commands.h"

#include "FindFile.h"

#include "platform/Files.h"
#include "platform/Text.h"

namespace zv::bench {

namespace {

constexpr const char* kReplaceQuestion = " already exists. Do you want to replace it?";

std::string withEnding(std::string path)
{
    const std::string stem = fileStem(path);
    if (!path.empty() && path.ends_with(stem))
        path += ".dwg";
    return path;
}

/// Saves with every question that stands before: the name, whether a file is replaced, whether something may
/// be left out.
class SaveCommand final : public Command {
public:
    SaveCommand(bool underNewName, Workshop& workshop)
        : m_workshop(workshop), m_drawing(workshop.active()),
          m_underNewName(underNewName || m_drawing->path().empty())
    {
    }

    Step begin() override
    {
        if (m_underNewName)
            return askName();
        m_path = m_drawing->path();
        return askLoss();
    }
    Prompt prompt() const override
    {
        switch (m_stage) {
        case Stage::Offer:
            return {"Save under another name? [Yes/No] <Yes>:", false, false, {}};
        case Stage::Name:
            return {"Save drawing as:", true, false, {}};
        case Stage::Replace:
            return {m_path + kReplaceQuestion + " <N>", false, false, {}};
        case Stage::Loss:
            break;
        }
        return {"Save all the same? [Yes/No] <No>:", false, false, {}};
    }
    Step answer(const Answer& answer) override
    {
        if (m_stage == Stage::Name)
            return answer.text == "~" ? choose() : named(answer.text);
        const bool yes = answer.isEnter() ? m_stage == Stage::Offer : isOption(answer, "Yes");
        if (!yes)
            return answer.isEnter() || isOption(answer, "No") ? notSaved() : Step::Invalid;
        switch (m_stage) {
        case Stage::Offer:
            m_underNewName = true;
            return askName();
        case Stage::Replace:
            m_mayReplace = true;
            return askLoss();
        default:
            m_mayLose = true;
            return save();
        }
    }

private:
    enum class Stage { Offer, Name, Replace, Loss };

    Step askName()
    {
        m_stage = Stage::Name;
        return m_workshop.variables().whole("FILEDIA") != 0 ? choose() : Step::More;
    }
    /// The dialog asks by itself before it gives the name of a file that is there.
    Step choose()
    {
        const std::string suggested = m_drawing->path().empty() ? m_drawing->title() : m_drawing->path();
        const std::string chosen = m_workshop.front().chooseFile(true, suggested);
        m_mayReplace = withEnding(chosen) == chosen;
        return take(chosen);
    }
    Step named(const std::string& name)
    {
        m_mayReplace = false;
        return take(name.empty() ? name : besideDrawing(name, m_drawing->path()));
    }
    Step take(const std::string& name)
    {
        m_path = withEnding(name);
        m_mayLose = false;
        return m_path.empty() || isTaken() ? notSaved() : askReplace();
    }
    Step askReplace()
    {
        if (m_mayReplace || !fileExists(m_path))
            return askLoss();
        m_stage = Stage::Replace;
        return Step::More;
    }
    bool isTaken()
    {
        const auto other = m_workshop.drawingOf(m_path);
        if (!other || other == m_drawing)
            return false;
        m_workshop.front().write(m_path + " is open in another tab.");
        return true;
    }
    Step askLoss()
    {
        const std::vector<std::string> loss = m_drawing->lossOfSaving(m_path);
        if (m_mayLose || loss.empty() || (!m_drawing->isModified() && !m_underNewName))
            return save();
        m_workshop.front().write(m_path + " would not have:");
        for (const std::string& each : loss)
            m_workshop.front().write("  " + each);
        m_stage = Stage::Loss;
        return Step::More;
    }
    Step save()
    {
        const bool isNewKind = m_drawing->outlook().way == SaveWay::NewFile;
        const bool isWhole = m_drawing->lossOfSaving(m_path).empty();
        const Result<void> saved =
            m_underNewName ? m_drawing->saveAs(m_path, m_mayReplace) : m_drawing->save();
        // Another program may have made the file while a question stood.
        if (!saved && m_underNewName && saved.error().code == ErrorCode::Busy && !m_mayReplace)
            return askReplace();
        if (!saved) {
            m_workshop.front().write("Not saved: " + saved.error().text + ".");
            m_stage = Stage::Offer;
            return Step::More;
        }
        if (isNewKind && m_underNewName)
            m_workshop.front().write(m_path + " was saved as a drawing of AutoCAD 2000" +
                                     (isWhole ? ", with all that was in it." : "."));
        m_workshop.front().refresh();
        return Step::Done;
    }
    Step notSaved()
    {
        m_workshop.front().write("Not saved.");
        return Step::Done;
    }

    Workshop& m_workshop;
    std::shared_ptr<BenchDrawing> m_drawing;
    bool m_underNewName;
    Stage m_stage = Stage::Name;
    std::string m_path;
    bool m_mayReplace = false; ///< The user has agreed to replace the file that is there,
    bool m_mayLose = false;    ///< or to what it would not have.
};

} // namespace

std::unique_ptr<Command> makeSaveCommand(bool underNewName, Workshop& workshop)
{
    return std::make_unique<SaveCommand>(underNewName, workshop);
}

namespace {

/// The name that the drawing is to be saved under, another one than its own; empty when the user says no.
std::string chooseName(Workshop& workshop, const BenchDrawing& drawing)
{
    BenchFront& front = workshop.front();
    const std::string chosen =
        front.chooseFile(true, drawing.path().empty() ? drawing.title() : drawing.path());
    const std::string path = withEnding(chosen);
    const bool isAsked = path == chosen || !fileExists(path);
    return isAsked || front.agrees(path + kReplaceQuestion, "&Replace") ? path : std::string();
}

bool agreesToLoss(Workshop& workshop, const BenchDrawing& drawing, const std::string& path)
{
    const std::vector<std::string> loss = drawing.lossOfSaving(path);
    return loss.empty() ||
           workshop.front().agrees(path + " would not have:\n\n" + joined(loss), "&Save all the same");
}

} // namespace

bool keepDrawing(Workshop& workshop, const std::shared_ptr<BenchDrawing>& drawing)
{
    bool isOwn = !drawing->path().empty();
    std::string path = isOwn ? drawing->path() : chooseName(workshop, *drawing);
    while (!path.empty() && agreesToLoss(workshop, *drawing, path)) {
        Result<void> saved;
        if (const auto other = workshop.drawingOf(path); other && other != drawing)
            saved = Error{ErrorCode::Busy, path + " is open in another tab"};
        else
            saved = isOwn ? drawing->save() : drawing->saveAs(path);
        if (saved)
            return true;
        workshop.front().write("Not saved: " + saved.error().text + ".");
        if (!workshop.front().agrees(drawing->title() + " was not saved:\n\n" + saved.error().text + ".",
                                     "Save &As..."))
            return false;
        isOwn = false;
        path = chooseName(workshop, *drawing);
    }
    return false;
}

bool closeDrawing(Workshop& workshop, const std::shared_ptr<BenchDrawing>& drawing)
{
    if (drawing->isModified()) {
        workshop.activate(drawing);
        const BenchFront::Keep keep = workshop.front().askToKeep({drawing->title()});
        if (keep == BenchFront::Keep::Cancel ||
            (keep == BenchFront::Keep::Save && !keepDrawing(workshop, drawing)))
            return false;
    }
    workshop.close(drawing);
    return true;
}

} // namespace zv::bench
