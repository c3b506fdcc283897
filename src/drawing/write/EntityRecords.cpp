#include "drawing/write/EntityRecords.h"

#include "drawing/entities/DimensionLayouts.h"
#include "drawing/entities/HatchLayouts.h"
#include "drawing/entities/InsertLayouts.h"
#include "drawing/entities/PolylineLayouts.h"
#include "drawing/entities/TextLayouts.h"
#include "drawing/records/EntityHeadLayout.h"
#include "drawing/write/FieldsOut.h"

#include <algorithm>

namespace zv::dwg {

namespace {
/// Where an entity stands: its owner, and the entities before and behind it there.
struct Place {
    Handle owner = 0;
    unsigned mode = 0; ///< 2 model space, 1 paper space, 0 the owner is told.
    Handle previous = 0, next = 0;
};

/// The colour that stands for a gradient: halfway between its two where both are colours of their own.
Color middleColor(const Hatch& hatch)
{
    const auto first = trueColor(hatch.gradientColor1), second = trueColor(hatch.gradientColor2);
    if (hatch.gradientOneColor || !first || !second)
        return hatch.gradientColor1;
    Color middle;
    middle.kind = Color::Kind::True;
    for (const unsigned shift : {0u, 8u, 16u})
        middle.rgb |= ((*first >> shift & 0xFF) + (*second >> shift & 0xFF)) / 2 << shift;
    return middle;
}

class EntityRecords {
public:
    EntityRecords(ObjectStream& objects, Plan& plan) : m_objects(objects), m_plan(plan) {}

    Result<void> addBlock(std::size_t index, const std::unordered_set<Handle>& kept)
    {
        m_block = &m_plan.document.blocks[index];
        const BlockPlan plan = m_plan.blocks[index];
        Place place{m_block->handle, plan.entityMode, 0, 0};
        Entity frame;
        frame.handle = plan.begin;
        Record begin = started(kBlock, frame, place);
        begin.fields.text(encodeText(m_block->name));
        m_objects.add(begin);
        // What an external reference shows belongs to the other file.
        const std::size_t count = m_block->xref ? 0 : m_block->entities.size();
        for (std::size_t i = 0; i < count; ++i) {
            if (kept.contains(m_block->entities[i].handle))
                continue;
            place.previous = i > 0 ? m_block->entities[i - 1].handle : 0;
            place.next = i + 1 < count ? m_block->entities[i + 1].handle : 0;
            if (auto added = addEntity(m_block->entities[i], place); !added)
                return added;
        }
        frame.handle = plan.end;
        m_objects.add(started(kEndBlock, frame, {m_block->handle, plan.entityMode, 0, 0}));
        return {};
    }

private:
    Record started(int type, const Entity& entity, const Place& place)
    {
        using Kind = EntityHeader::LinetypeKind;
        EntityHeader header;
        header.inModelSpace = place.mode == 2;
        header.inPaperSpace = place.mode == 1;
        header.owner = place.owner;
        header.previous = place.previous;
        header.next = place.next;
        header.color = entity.color;
        header.linetypeScale = entity.linetypeScale;
        header.linetype = entity.linetype == 0 ? m_plan.byLayer : m_plan.linetype(entity.linetype);
        header.linetypeKind = header.linetype == m_plan.byLayer      ? Kind::ByLayer
                              : header.linetype == m_plan.byBlock    ? Kind::ByBlock
                              : header.linetype == m_plan.continuous ? Kind::Continuous
                                                                     : Kind::Own;
        header.layer = entity.layer;
        header.invisible = entity.invisible;
        header.lineweight = entity.lineweight;
        Record record(type, entity.handle);
        FieldsOut fields(record, m_plan);
        fields.fixedBit(false); // No picture of a proxy.
        layoutEntityHead(fields, header);
        return record;
    }

    Result<void> addEntity(const Entity& entity, const Place& place)
    {
        return std::visit([&](const auto& shape) { return add(entity, place, shape); }, entity.geometry);
    }

    /// Kinds that are one record without parts. One whose number depends on the file's classes has none here.
    template <class ShapeType>
    Result<void> add(const Entity& entity, const Place& place, const ShapeType& shape)
    {
        const int type = recordType(entity.geometry);
        if (type == 0)
            return refused(entity);
        return addLayout(entity, place, type, [&](FieldsOut& fields) { layout(fields, shape); });
    }

    Result<void> addLayout(const Entity& entity, const Place& place, int type, auto write)
    {
        Record record = started(type, entity, place);
        FieldsOut fields(record, m_plan);
        write(fields);
        m_objects.add(record);
        return {};
    }

    // Kinds that this version does not know.
    Result<void> add(const Entity& entity, const Place&, const Unknown&) { return refused(entity); }
    Result<void> add(const Entity& entity, const Place&, const MultiLeader&) { return refused(entity); }
    Result<void> add(const Entity& entity, const Place&, const MPolygon&) { return refused(entity); }
    Result<void> add(const Entity& entity, const Place&, const StoredPicture&) { return refused(entity); }

    Result<void> add(const Entity& entity, const Place& place, const Wipeout& wipeout)
    {
        if (wipeout.image)
            return refused(entity);
        return addLayout(entity, place, kWipeout, [&](FieldsOut& fields) { layout(fields, wipeout); });
    }

    Result<void> add(const Entity& entity, const Place& place, const Dimension& dimension)
    {
        const int type = recordType(entity.geometry);
        if (type == 0)
            return refused(entity);
        if (!m_plan.hasBlock(dimension.block))
            return Error{ErrorCode::Unsupported, "a DIMENSION without its block cannot be written"};
        return addLayout(entity, place, type, [&](FieldsOut& fields) { layout(fields, dimension); });
    }

    Result<void> add(const Entity& entity, const Place& place, const MLine& line)
    {
        const MLineStyle* style = m_plan.mlineStyle(line.style);
        if (style == nullptr)
            return Error{ErrorCode::Unsupported, "an MLINE without its style cannot be written"};
        if (line.vertices.size() > INT16_MAX)
            return Error{ErrorCode::Unsupported, "an MLINE of so many vertices cannot be written"};
        // Every vertex has a list for each element of the style, be it an empty one.
        MLine whole = line;
        for (MLineVertex& vertex : whole.vertices)
            vertex.elements.resize(style->elements.size());
        return addLayout(entity, place, kMLine, [&](FieldsOut& fields) {
            layoutMLine(fields, std::as_const(whole), style->elements.size());
        });
    }

    static Result<void> refused(const Entity& entity)
    {
        return Error{ErrorCode::Unsupported,
                     (entity.kind.empty() ? std::string("an entity of unknown kind") : entity.kind) +
                         " cannot be written"};
    }

    Result<void> add(const Entity& entity, const Place& place, const Insert& insert)
    {
        const int type = recordType(entity.geometry);
        Record record = started(type, entity, place);
        FieldsOut fields(record, m_plan);
        std::int64_t count = 0;
        layoutInsert(fields, insert, type == kMInsert, !insert.attributes.empty(), count);
        if (insert.attributes.empty()) {
            m_objects.add(record);
            return {};
        }
        const Handle end = m_plan.give();
        record.handles.handle(kSoftPointer, m_block->attributes[insert.attributes.front()].handle);
        record.handles.handle(kSoftPointer, m_block->attributes[insert.attributes.back()].handle);
        record.handles.handle(kHardOwner, end);
        m_objects.add(record);
        for (std::size_t i = 0; i < insert.attributes.size(); ++i) {
            const auto handleAt = [&](std::size_t at) {
                return at < insert.attributes.size() ? m_block->attributes[insert.attributes[at]].handle : 0;
            };
            const Entity& attribute = m_block->attributes[insert.attributes[i]];
            const auto* shape = std::get_if<Attribute>(&attribute.geometry);
            if (shape == nullptr)
                return Error{ErrorCode::Unsupported, "an INSERT with an attribute that is none"};
            Record part =
                started(kAttrib, attribute, {entity.handle, 0, i > 0 ? handleAt(i - 1) : 0, handleAt(i + 1)});
            FieldsOut partFields(part, m_plan);
            layoutAttribute(partFields, *shape, false);
            m_objects.add(part);
        }
        addSequenceEnd(entity, end);
        return {};
    }

    Result<void> add(const Entity& entity, const Place& place, const Hatch& hatch)
    {
        const auto write = [](const Hatch& fill) {
            return [&fill](FieldsOut& fields) { layout(fields, fill); };
        };
        if (!hatch.gradient)
            return addLayout(entity, place, kHatch, write(hatch));
        // A gradient is a solid fill here.
        Entity filled = entity;
        filled.color = middleColor(hatch);
        Hatch solid = hatch;
        solid.pattern = u"SOLID";
        solid.solid = true;
        return addLayout(filled, place, kHatch, write(solid));
    }

    Result<void> add(const Entity& entity, const Place& place, const Attribute& definition)
    {
        return addLayout(entity, place, kAttribDefinition,
                         [&](FieldsOut& fields) { layoutAttribute(fields, definition, true); });
    }

    Result<void> add(const Entity& entity, const Place& place, const Polyline& line)
    {
        const int type = recordType(entity.geometry);
        if (type == kLightPolyline)
            return addLayout(entity, place, type, [&](FieldsOut& fields) { layoutLight(fields, line); });
        Record record = started(type, entity, place);
        FieldsOut fields(record, m_plan);
        layoutHeavy(fields, line);
        const std::size_t count = line.vertices.size();
        std::vector<Handle> parts(count);
        for (Handle& part : parts)
            part = m_plan.give();
        const Handle end = m_plan.give();
        addParts(record, parts, end);
        for (std::size_t i = 0; i < count; ++i) {
            Record vertex = startedPart(line.threeD ? kVertex3D : kVertex2D, entity, parts, i);
            FieldsOut vertexFields(vertex, m_plan);
            const bool splined = isSplined(line);
            unsigned flags = line.vertices[i].splineFrame ? kVertexSplineFrame : splined ? kVertexOfFit : 0;
            vertexFields.rawChar(flags | (line.threeD ? kVertexInSpace : 0));
            layoutVertex(vertexFields, line.vertices[i], !line.threeD);
            m_objects.add(vertex);
        }
        addSequenceEnd(entity, end);
        return {};
    }

    Result<void> add(const Entity& entity, const Place& place, const Mesh& mesh)
    {
        const bool polyface = !mesh.faces.empty();
        if (mesh.vertices.size() > 32767 || mesh.faces.size() > 32767)
            return refused(entity);
        Record record = started(recordType(entity.geometry), entity, place);
        FieldsOut fields(record, m_plan);
        if (polyface)
            layoutPolyfaceMesh(fields, mesh);
        else
            layoutPolygonMesh(fields, mesh);
        std::vector<Handle> parts(mesh.vertices.size() + mesh.faces.size());
        for (Handle& part : parts)
            part = m_plan.give();
        const Handle end = m_plan.give();
        addParts(record, parts, end);
        for (std::size_t i = 0; i < parts.size(); ++i) {
            const bool isFace = i >= mesh.vertices.size();
            Record part = startedPart(isFace     ? kPolyfaceFace
                                      : polyface ? kVertexPolyface
                                                 : kVertexMesh,
                                      entity, parts, i);
            if (isFace) {
                for (const int corner : mesh.faces[i - mesh.vertices.size()])
                    part.fields.bitShort(static_cast<std::int16_t>(corner));
            } else {
                part.fields.rawChar(polyface ? 192 : 64);
                part.fields.bitPoint3(mesh.vertices[i]);
            }
            m_objects.add(part);
        }
        addSequenceEnd(entity, end);
        return {};
    }

    void addParts(Record& record, const std::vector<Handle>& parts, Handle end)
    {
        record.handles.handle(kSoftPointer, parts.empty() ? 0 : parts.front());
        record.handles.handle(kSoftPointer, parts.empty() ? 0 : parts.back());
        record.handles.handle(kHardOwner, end);
        m_objects.add(record);
    }

    Record startedPart(int type, const Entity& whole, const std::vector<Handle>& parts, std::size_t at)
    {
        Entity part = whole;
        part.handle = parts[at];
        return started(
            type, part,
            {whole.handle, 0, at > 0 ? parts[at - 1] : 0, at + 1 < parts.size() ? parts[at + 1] : 0});
    }

    void addSequenceEnd(const Entity& whole, Handle handle)
    {
        Entity end;
        end.handle = handle;
        end.layer = whole.layer;
        m_objects.add(started(kSeqEnd, end, {whole.handle, 0, 0, 0}));
    }

    ObjectStream& m_objects;
    Plan& m_plan;
    const BlockRecord* m_block = nullptr;
};
} // namespace

Result<void> addBlockContent(ObjectStream& objects, Plan& plan, std::size_t block,
                             const std::unordered_set<Handle>& kept)
{
    return EntityRecords(objects, plan).addBlock(block, kept);
}

} // namespace zv::dwg
