#pragma once

#include "drawing/records/ObjectHeader.h"
#include "drawing/records/PackedFields.h"

/// What all entities say of themselves behind the picture that their record may carry.
namespace zv::dwg {

/// Other objects that want to know of changes, and the dictionary of what others have hung on this one. The
/// writer has neither.
void readReactors(RecordReader& in, ObjectHeader& header);

template <class Fields> void layoutReactors(Fields& fields, auto& header)
{
    if constexpr (Fields::kReads) {
        readReactors(fields.reader(), header);
    } else {
        fields.fixedLong(0);
        fields.noOwnedHandle();
    }
}

/// Where it stands: in model space, in paper space, or where its owner says.
template <class Fields> void layoutEntityPlace(Fields& fields, auto& header)
{
    enum : unsigned { kOwned, kPaperSpace, kModelSpace };
    unsigned mode = header.inModelSpace ? kModelSpace : header.inPaperSpace ? kPaperSpace : kOwned;
    fields.bitPair(mode);
    if constexpr (Fields::kReads) {
        header.inModelSpace = mode == kModelSpace;
        header.inPaperSpace = mode == kPaperSpace;
    }
    if (mode == kOwned)
        fields.softHandle(header.owner);
}

/// The entities before and behind it.
template <class Fields> void layoutNeighbours(Fields& fields, auto& header)
{
    bool areNextHandles = false;
    fields.bit(areNextHandles);
    if constexpr (Fields::kReads) {
        if (areNextHandles) {
            header.previous = header.handle - 1;
            header.next = header.handle + 1;
            return;
        }
    }
    fields.softHandle(header.previous);
    fields.softHandle(header.next);
}

/// Two bits that tell whether a handle stands there; the writer has none.
void layoutOwnStyle(auto& fields)
{
    constexpr unsigned kByHandle = 3;
    unsigned style = 0;
    fields.bitPair(style);
    if (style == kByHandle)
        fields.noHandle();
}

template <class Fields> void layoutEntityStyles(Fields& fields, auto& header)
{
    const Version version = fields.version();
    unsigned kind = static_cast<unsigned>(header.linetypeKind);
    fields.bitPair(kind);
    if constexpr (Fields::kReads)
        header.linetypeKind = static_cast<EntityHeader::LinetypeKind>(kind);
    if (header.linetypeKind == EntityHeader::LinetypeKind::Own)
        fields.handle(header.linetype, Table::Linetype);
    if (version >= Version::R2007) {
        layoutOwnStyle(fields); // Material.
        fields.fixedChar(0);    // Shadows.
    }
    layoutOwnStyle(fields); // Plot style.
    if (version < Version::R2010)
        return;
    for (int visualStyle = 0; visualStyle < 3; ++visualStyle) {
        bool own = false;
        fields.bit(own);
        if (own)
            fields.noHandle();
    }
}

template <class Fields> void layoutEntityHead(Fields& fields, auto& header)
{
    const Version version = fields.version();
    layoutEntityPlace(fields, header);
    layoutReactors(fields, header);
    if (version <= Version::R14) {
        fields.handle(header.layer, Table::Layer);
        bool byLayer = header.linetypeKind == EntityHeader::LinetypeKind::ByLayer;
        fields.bit(byLayer);
        if (!byLayer) {
            if constexpr (Fields::kReads)
                header.linetypeKind = EntityHeader::LinetypeKind::Own;
            fields.handle(header.linetype, Table::Linetype);
        }
    }
    if (version <= Version::R2000)
        layoutNeighbours(fields, header);
    fields.entityColor(header);
    fields.bitDouble(header.linetypeScale);
    if (version >= Version::R2000) {
        fields.handle(header.layer, Table::Layer);
        layoutEntityStyles(fields, header);
    }
    unsigned invisible = header.invisible ? 1 : 0;
    fields.bitShort(invisible);
    unsigned lineweight = lineweightCode(header.lineweight);
    if (version >= Version::R2000)
        fields.rawChar(lineweight);
    if constexpr (Fields::kReads) {
        header.invisible = (invisible & 1) != 0;
        if (version >= Version::R2000)
            header.lineweight = lineweightFromCode(lineweight);
    }
}

} // namespace zv::dwg
