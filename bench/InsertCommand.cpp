#include "Commands.h"

#include "DocumentEdit.h"
#include "FindFile.h"
#include "Placement.h"
#include "Similarity.h"

#include "platform/Files.h"
#include "platform/Text.h"

#include <cmath>

namespace zv::bench {

namespace {

class InsertCommand final : public Command {
public:
    explicit InsertCommand(Workshop& workshop) : m_workshop(workshop), m_drawing(workshop.active()) {}

    Prompt prompt() const override
    {
        if (m_stage == Stage::Name)
            return {"Enter block name or [?]" +
                        (m_workshop.lastBlock.empty() ? ":" : " <" + m_workshop.lastBlock + ">:"),
                    true,
                    false,
                    {}};
        if (m_stage == Stage::Place)
            return m_placement.prompt(m_block, scaleOf(block()));
        const dwg::Attribute& asked = m_definitions[m_values.size()];
        const std::string question = narrow(asked.prompt.empty() ? asked.tag : asked.prompt);
        return {question + " <" + narrow(asked.text.text) + ">:", true, false, {}};
    }

    Step answer(const Answer& answer) override
    {
        if (m_stage == Stage::Name)
            return nameAnswer(answer);
        if (m_stage == Stage::Place) {
            const Step step = m_placement.answer(answer);
            return step == Step::Done ? placed() : step;
        }
        m_values.push_back(answer.isEnter() ? m_definitions[m_values.size()].text.text : wide(answer.text));
        return m_values.size() < m_definitions.size() ? Step::More : insert();
    }

    /// What was taken into the drawing for the insertion goes again.
    void cancelled() override
    {
        if (m_changed)
            m_drawing->abandonChange();
    }

private:
    enum class Stage { Name, Place, Attributes };

    Step nameAnswer(const Answer& answer);
    Step listBlocks();
    Result<dwg::Handle> blockFor(const std::string& name);
    bool isOtherThan(const dwg::BlockRecord& there, const std::string& file) const;
    Result<dwg::Handle> blockFromFile(const std::string& path, const std::string& name);
    Step placed();
    Step insert();
    Step insertParts();
    double scaleOf(const dwg::BlockRecord& block) const;
    const dwg::BlockRecord& block() const { return *m_drawing->document().block(m_block); }

    Workshop& m_workshop;
    std::shared_ptr<BenchDrawing> m_drawing;
    Stage m_stage = Stage::Name;
    bool m_inParts = false;
    bool m_changed = false;
    bool m_imported = false;
    dwg::Handle m_block = 0;
    Placement m_placement{false};
    std::vector<dwg::Attribute> m_definitions;
    std::vector<dwg::Text> m_values;
};

Step InsertCommand::nameAnswer(const Answer& answer)
{
    std::string name = answer.isEnter() ? m_workshop.lastBlock : answer.text;
    if (name == "?")
        return listBlocks();
    if (name == "~")
        name = m_workshop.front().chooseFile(false, {});
    m_inParts = name.starts_with("*");
    if (m_inParts)
        name.erase(0, 1);
    if (name.empty())
        return Step::Invalid;
    // A block that stays is in the drawing before it has a place, as with every change: undo takes both away.
    m_drawing->beginChange();
    m_changed = true;
    const Result<dwg::Handle> found = blockFor(name);
    if (!found) {
        m_workshop.front().write(found.error().text);
        cancelled();
        m_changed = false;
        return answer.scripted ? Step::Invalid : Step::Done;
    }
    m_block = *found;
    m_workshop.lastBlock = name;
    m_placement = Placement(m_inParts);
    m_stage = Stage::Place;
    return Step::More;
}

Step InsertCommand::listBlocks()
{
    for (const dwg::BlockRecord& record : m_drawing->document().blocks) {
        if (!record.layout && !record.anonymous)
            m_workshop.front().write("  \"" + narrow(record.name) + "\"");
    }
    return Step::Done;
}

/// "name=path" takes the file anew, unless a file of that very path is there; a bare name takes a block of
/// the drawing before any file, and so does a path, but then the drafter is told when the file is another
/// one.
Result<dwg::Handle> InsertCommand::blockFor(const std::string& name)
{
    const std::string file = findDrawingFile(name, m_drawing->path());
    if (const std::size_t equals = name.find('='); equals != std::string::npos && file.empty())
        return blockFromFile(name.substr(equals + 1), name.substr(0, equals));
    const std::string blockName = fileStem(name);
    if (const dwg::BlockRecord* there = findBlock(m_drawing->document(), wide(blockName))) {
        if (there->xref)
            return Error{ErrorCode::Failed, "\"" + blockName + "\" is an external reference"};
        const bool isPath = fileNamePart(name).size() != name.size();
        if (isPath && !file.empty() && isOtherThan(*there, file))
            m_workshop.front().write("Block " + blockName + " is in the drawing already; " + name +
                                     " was not read");
        return there->handle;
    }
    return blockFromFile(name, blockName);
}

/// Whether the file holds something else than the block.
bool InsertCommand::isOtherThan(const dwg::BlockRecord& there, const std::string& file) const
{
    const std::string source = m_drawing->blockSource(there.handle);
    if (!source.empty() && isSameFile(source, file))
        return false;
    const auto content = XrefFiles().read(file);
    return !content || !looksAs(m_drawing->document(), there.handle, **content);
}

Result<dwg::Handle> InsertCommand::blockFromFile(const std::string& path, const std::string& name)
{
    const std::string file = findDrawingFile(path, m_drawing->path());
    if (file.empty())
        return Error{ErrorCode::NotFound, "\"" + path + "\": Can't find file in search path"};
    const auto content = XrefFiles().read(file);
    if (!content)
        return Error{content.error().code, namingFile(file, content.error())};
    if (const auto lost = unsavable(**content); !lost.empty())
        m_workshop.front().write(file + " holds what this program cannot save: " + joined(lost));
    m_imported = true;
    const Result<dwg::Handle> block = importAsBlock(m_drawing->document(), **content, wide(name));
    if (block)
        m_drawing->setBlockSource(*block, file);
    return block;
}

Step InsertCommand::placed()
{
    if (m_inParts)
        return insertParts();
    const bool asks = m_workshop.variables().whole("ATTREQ") == 1;
    for (const dwg::Entity& entity : block().entities) {
        const auto* const definition = std::get_if<dwg::Attribute>(&entity.geometry);
        if (definition != nullptr && !definition->constant)
            m_definitions.push_back(*definition);
    }
    if (!asks) {
        for (const dwg::Attribute& definition : m_definitions)
            m_values.push_back(definition.text.text);
    }
    if (m_values.size() == m_definitions.size())
        return insert();
    m_stage = Stage::Attributes;
    return Step::More;
}

double InsertCommand::scaleOf(const dwg::BlockRecord& record) const
{
    return unitFactor(record.units, static_cast<int>(m_drawing->variables().whole("INSUNITS")));
}

Step InsertCommand::insert()
{
    dwg::Document& document = m_drawing->document();
    const double factor = scaleOf(block());
    dwg::Insert insert;
    insert.block = m_block;
    insert.position = m_placement.point();
    const dwg::Point3 scale = m_placement.scale();
    insert.scale = {scale.x * factor, scale.y * factor, scale.z * factor};
    insert.rotation = m_placement.rotation();
    const dwg::Point3 base = block().base;
    // Values stand where their definitions do, seen through the insertion, with the height of its y axis.
    const Similarity map{std::abs(insert.scale.y), insert.rotation, insert.position};
    for (std::size_t index = 0; index < m_definitions.size(); ++index) {
        dwg::Attribute value = m_definitions[index];
        value.text.text = m_values[index];
        for (dwg::Point3* point : {&value.text.insertion, &value.text.alignment})
            *point = {(point->x - base.x) * insert.scale.x / map.scale,
                      (point->y - base.y) * insert.scale.y / map.scale,
                      (point->z - base.z) * insert.scale.z / map.scale};
        dwg::Geometry geometry = std::move(value);
        transform(geometry, map);
        insert.attributes.push_back(static_cast<std::uint32_t>(m_drawing->modelSpace().attributes.size()));
        m_drawing->modelSpace().attributes.push_back(
            newEntity(document, "ATTRIB", std::move(geometry), m_drawing->currentLayer()));
    }
    dwg::Entity entity = newEntity(document, "INSERT", std::move(insert), m_drawing->currentLayer());
    m_drawing->modelSpace().entities.push_back(std::move(entity));
    m_drawing->continueChange();
    return Step::Done;
}

Step InsertCommand::insertParts()
{
    dwg::Document& document = m_drawing->document();
    dwg::BlockRecord& space = m_drawing->modelSpace();
    const dwg::BlockRecord from = block();
    const double scale = m_placement.scale().x * scaleOf(from);
    const Similarity turned{scale, m_placement.rotation(), {}};
    const dwg::Point3 base = turned.point(from.base);
    const dwg::Point3 at = m_placement.point();
    const Similarity map{scale, m_placement.rotation(), {at.x - base.x, at.y - base.y, at.z - base.z}};
    const auto firstAttribute = static_cast<std::uint32_t>(space.attributes.size());
    for (const dwg::Entity& attribute : from.attributes) {
        space.attributes.push_back(attribute);
        space.attributes.back().handle = giveHandle(document);
        transform(space.attributes.back().geometry, map);
    }
    for (const dwg::Entity& part : from.entities) {
        dwg::Entity entity = part;
        entity.handle = giveHandle(document);
        transform(entity.geometry, map);
        if (auto* insert = std::get_if<dwg::Insert>(&entity.geometry)) {
            for (std::uint32_t& attribute : insert->attributes)
                attribute += firstAttribute;
        }
        space.entities.push_back(std::move(entity));
    }
    // Parts placed from a file leave no block behind.
    if (m_imported)
        removeBlock(document, m_block);
    m_drawing->continueChange();
    return Step::Done;
}

} // namespace

std::unique_ptr<Command> makeInsert(Workshop& workshop)
{
    return std::make_unique<InsertCommand>(workshop);
}

} // namespace zv::bench
