#pragma once

#include "drawing/records/RecordReader.h"
#include "platform/Result.h"

#include <cstddef>
#include <optional>
#include <span>

namespace zv::dwg {

/// How a record lies in the stream of objects: its size, from R2010 on that of its handles, then its content
/// and a check code.
struct RecordFrame {
    std::size_t start = 0;      ///< Of the content, in bytes from the record's place.
    std::size_t size = 0;       ///< Of the content, in bytes.
    std::size_t handleBits = 0; ///< Of the handles at its end (R2010+).

    std::size_t whole() const
    {
        constexpr std::size_t kCheckCode = 2;
        return start + size + kCheckCode;
    }
};
/// The frame of the record that begins with these bytes, of which the first few suffice. No value: they do
/// not.
std::optional<RecordFrame> readFrame(std::span<const std::byte> record, Version version);

/// A record, opened: its reader stands behind the object type, where the fields that all records share begin.
struct OpenRecord {
    RecordReader in;
    int type = 0;
    std::size_t size = 0; ///< In bytes.
};

/// Opens the record at `offset` of the stream of objects. No value: it does not lie in the stream whole.
std::optional<OpenRecord> openRecord(std::span<const std::byte> objects, std::uint64_t offset,
                                     Version version, int codePage);

/// What all records say of themselves. Handles that are not there are 0.
struct ObjectHeader {
    Handle handle = 0;
    Handle owner = 0;
    Handle extensionDictionary = 0;
    std::size_t extendedDataAt = 0; ///< The bit where the extended data begins.
};

/// Reads on from openRecord to the object's own fields. Whether that went well tells `in.ok()`.
ObjectHeader readObjectHeader(RecordReader& in);

/// What all entities say of themselves.
struct EntityHeader : ObjectHeader {
    bool inPaperSpace = false, inModelSpace = false; ///< Neither: `owner` tells.
    /// R13 to R2000: the neighbours in the owner's chain.
    Handle previous = 0, next = 0;
    Color color;
    Handle colorObject = 0; ///< A named colour, which stands for `color`.
    std::uint8_t alpha = 255;
    bool ownAlpha = false; ///< Else it is that of the layer.
    double linetypeScale = 1;
    enum class LinetypeKind { ByLayer, ByBlock, Continuous, Own } linetypeKind = LinetypeKind::ByLayer;
    Handle linetype = 0; ///< For LinetypeKind::Own.
    Handle layer = 0;
    int lineweight = kLineweightByLayer;
    bool invisible = false;
    /// The picture that the record carries of its entity: the bit where it begins, and its bytes; 0 without
    /// one.
    std::size_t pictureAt = 0, pictureSize = 0;
};

/// The same for an entity.
EntityHeader readEntityHeader(RecordReader& in);
/// The part of an entity's header that also stands before an entity inside another one's fields.
void readEntityMode(RecordReader& in, EntityHeader& header);

/// A lineweight as records pack it, 0 to 31, in hundredths of a millimetre or one of the words for it.
int lineweightFromCode(unsigned code);
/// The code of the lineweight, or of the next one above.
std::uint8_t lineweightCode(int lineweight);

} // namespace zv::dwg
