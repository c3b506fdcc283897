#pragma once

#include "drawing/bits/BitReader.h"

namespace zv::dwg {

/// Reads one record, or one section, of a drawing: its fields, and beside them its texts and its handles.
/// From R2007 on the texts stand in a stream of their own behind the fields, in all versions the handles
/// stand behind both; before R2007 texts are among the fields.
class RecordReader : public BitReader {
public:
    RecordReader(std::span<const std::byte> data, Version version, int codePage)
        : BitReader(data), m_handles(data), m_whole(data), m_version(version), m_codePage(codePage)
    {
    }

    Version version() const { return m_version; }
    int codePage() const { return m_codePage; }
    /// Whether fields, texts and handles could all be read so far.
    bool ok() const { return BitReader::ok() && m_texts.ok() && m_handles.ok(); }

    /// Tells where the handles begin, in bits from the start of the data. From R2007 on this also finds the
    /// texts, which end just before. The fields end where the first of them begins.
    void setHandlesAt(std::size_t bit);

    BitReader& handles() { return m_handles; }
    BitReader& texts() { return m_texts; }

    /// Object type (OT).
    int objectType();
    /// TV: a text of the file's version.
    Text text();
    /// The object that the record is of; handles may be told from it.
    void setBase(Handle handle) { m_base = handle; }
    /// The next handle of the handle stream.
    Handle handle() { return m_handles.handleReference().from(m_base); }
    /// A reader of the whole record that stands at `bit`.
    BitReader restarted(std::size_t bit) const
    {
        BitReader again(m_whole);
        again.seek(bit);
        return again;
    }
    /// CMC.
    Color color();
    /// ENC; `alpha` is set, and `ownAlpha`, where the entity has its own transparency. `named` tells that a
    /// handle of a colour object stands in the handle stream.
    Color entityColor(std::uint8_t& alpha, bool& ownAlpha, bool& named);
    double thickness(); ///< BT
    Point3 extrusion(); ///< BE

private:
    BitReader m_texts, m_handles;
    std::span<const std::byte> m_whole;
    Version m_version;
    int m_codePage;
    Handle m_base = 0;
};

/// The colour of a packed 32-bit number: its highest byte tells the kind, the rest is 0xRRGGBB or an index.
Color packedColor(std::uint32_t packed);

} // namespace zv::dwg
