#include "Commands.h"

#include "DocumentEdit.h"
#include "FindFile.h"
#include "Placement.h"

#include "platform/Text.h"

#include <algorithm>

namespace zv::bench {

namespace {

class XrefCommand final : public Command {
public:
    explicit XrefCommand(Workshop& workshop) : m_workshop(workshop), m_drawing(workshop.active()) {}

    Prompt prompt() const override
    {
        switch (m_stage) {
        case Stage::Option:
            return {"Enter an option [?/Detach/Reload/Overlay/Attach] <Attach>:", false, false, {}};
        case Stage::Reload:
            return {"Enter xref name(s) to reload:", true, false, {}};
        case Stage::Detach:
            return {"Enter xref name(s) to detach:", true, false, {}};
        case Stage::File:
            return {"Enter name of file to attach:", true, false, {}};
        case Stage::Place:
            break;
        }
        return m_placement.prompt(m_block, factor());
    }

    Step answer(const Answer& answer) override
    {
        switch (m_stage) {
        case Stage::Option:
            return optionAnswer(answer);
        case Stage::Reload:
            return reload(answer.text);
        case Stage::Detach:
            return detach(answer.text);
        case Stage::File:
            return fileAnswer(answer);
        case Stage::Place:
            break;
        }
        const Step step = m_placement.answer(answer);
        return step == Step::Done ? insert() : step;
    }

    void cancelled() override
    {
        if (m_changed)
            m_drawing->abandonChange();
    }

private:
    enum class Stage { Option, Reload, Detach, File, Place };

    Step optionAnswer(const Answer& answer)
    {
        if (answer.text == "?") {
            for (const dwg::BlockRecord& block : m_drawing->document().blocks) {
                if (block.xref)
                    m_workshop.front().write("  " + narrow(block.name) + "  " + narrow(block.xrefPath));
            }
            return Step::Done;
        }
        if (isOption(answer, "Reload")) {
            m_stage = Stage::Reload;
            return Step::More;
        }
        if (isOption(answer, "Detach")) {
            m_stage = Stage::Detach;
            return Step::More;
        }
        m_overlay = isOption(answer, "Overlay");
        if (!m_overlay && !answer.isEnter() && !isOption(answer, "Attach"))
            return Step::Invalid;
        m_stage = Stage::File;
        const bool dialog = m_workshop.variables().whole("FILEDIA") != 0 && !answer.scripted;
        return dialog ? fileAnswer({m_workshop.front().chooseFile(false, {}), std::nullopt, false})
                      : Step::More;
    }

    Step fileAnswer(const Answer& answer)
    {
        const std::string typed = answer.text == "~" ? m_workshop.front().chooseFile(false, {}) : answer.text;
        const std::string file = typed.empty() ? std::string() : findDrawingFile(typed, m_drawing->path());
        if (file.empty()) {
            m_workshop.front().write("\"" + typed + "\": Can't find file in search path");
            return answer.scripted ? Step::Invalid : Step::Done;
        }
        const Result<void> attached = attach(file);
        if (!attached) {
            m_workshop.front().write(attached.error().text);
            cancelled();
            m_changed = false;
            return answer.scripted ? Step::Invalid : Step::Done;
        }
        m_stage = Stage::Place;
        return Step::More;
    }

    Result<void> attach(const std::string& file)
    {
        const std::string name = fileStem(file);
        if (isSameFile(file, m_drawing->path()))
            return Error{ErrorCode::Failed, "A drawing cannot refer to itself"};
        const Result<std::shared_ptr<const dwg::Document>> content = XrefFiles().read(file);
        if (!content)
            return Error{content.error().code, file + ": " + content.error().text};
        m_drawing->beginChange();
        m_changed = true;
        dwg::Document& document = m_drawing->document();
        if (const dwg::BlockRecord* there = findBlock(document, wide(name))) {
            if (!there->xref)
                return Error{ErrorCode::Failed, "\"" + name + "\" is a block of this drawing"};
            m_block = there->handle;
            return {};
        }
        dwg::BlockRecord block;
        block.handle = m_block = giveHandle(document);
        block.name = wide(name);
        block.xref = true;
        block.xrefOverlay = m_overlay;
        block.xrefPath = wide(file);
        block.base = (*content)->header.insertionBase;
        block.units = (*content)->header.insertionUnits;
        document.blocks.push_back(std::move(block));
        reindex(document);
        return {};
    }

    Step insert()
    {
        dwg::Insert insert;
        insert.block = m_block;
        insert.position = m_placement.point();
        const dwg::Point3 scale = m_placement.scale();
        insert.scale = {scale.x * factor(), scale.y * factor(), scale.z * factor()};
        insert.rotation = m_placement.rotation();
        dwg::Document& document = m_drawing->document();
        m_drawing->modelSpace().entities.push_back(
            newEntity(document, "INSERT", std::move(insert), m_drawing->currentLayer()));
        m_drawing->continueChange();
        return Step::Done;
    }

    double factor() const
    {
        return unitFactor(m_drawing->document().block(m_block)->units,
                          static_cast<int>(m_drawing->variables().whole("INSUNITS")));
    }

    /// The files are read anew, whichever of them is named.
    Step reload(const std::string& name)
    {
        const dwg::BlockRecord* const block = findBlock(m_drawing->document(), wide(name));
        if (name != "*" && (block == nullptr || !block->xref))
            m_workshop.front().write("No matching xref names found.");
        else
            m_drawing->reloadXrefs();
        return Step::Done;
    }

    Step detach(const std::string& name)
    {
        dwg::Document& document = m_drawing->document();
        const dwg::BlockRecord* const block = findBlock(document, wide(name));
        if (block == nullptr || !block->xref) {
            m_workshop.front().write("No matching xref names found.");
            return Step::Done;
        }
        m_drawing->beginChange();
        const dwg::Handle handle = block->handle;
        for (dwg::BlockRecord& owner : document.blocks) {
            std::erase_if(owner.entities, [handle](const dwg::Entity& entity) {
                const auto* const insert = std::get_if<dwg::Insert>(&entity.geometry);
                return insert != nullptr && insert->block == handle;
            });
        }
        removeBlock(document, handle);
        return Step::Done;
    }

    Workshop& m_workshop;
    std::shared_ptr<BenchDrawing> m_drawing;
    Stage m_stage = Stage::Option;
    bool m_overlay = false;
    bool m_changed = false;
    dwg::Handle m_block = 0;
    Placement m_placement{false};
};

} // namespace

std::unique_ptr<Command> makeXref(Workshop& workshop)
{
    return std::make_unique<XrefCommand>(workshop);
}

} // namespace zv::bench
