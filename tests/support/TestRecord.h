#pragma once

#include "drawing/records/ObjectHeader.h"
#include "drawing/write/BitWriter.h"

#include <string>
#include <string_view>

namespace zv::dwg {

/// Builds one record as a drawing of a given version has it.
class TestRecord {
public:
    BitWriter fields, handles;
    std::string picture;    ///< That the record carries of its entity.
    BitWriter extendedData; ///< What the application 0x12 hung on the object; whole bytes.

    TestRecord(Version version, int type, Handle handle) : m_version(version), m_type(type), m_handle(handle)
    {
    }

    Version version() const { return m_version; }
    bool before(Version version) const { return m_version < version; }

    /// A text in the place that it has in this version; letters of ASCII only.
    void text(std::string_view letters)
    {
        if (before(Version::R2007))
            return fields.text(letters);
        m_texts.bitShort(static_cast<std::int16_t>(letters.size()));
        for (const char letter : letters)
            m_texts.rawShort(static_cast<std::uint8_t>(letter));
    }
    /// A text of the extended data.
    void extendedText(std::string_view letters)
    {
        extendedData.rawChar(0);
        const bool wide = !before(Version::R2007);
        if (wide) {
            extendedData.rawShort(static_cast<std::uint16_t>(letters.size()));
        } else {
            extendedData.rawChar(static_cast<std::uint8_t>(letters.size()));
            extendedData.rawShort(30);
        }
        for (const char letter : letters) {
            extendedData.rawChar(static_cast<std::uint8_t>(letter));
            if (wide)
                extendedData.rawChar(0);
        }
    }
    void pointer(Handle handle) { handles.handle(5, handle); }

    /// What all entities begin with. `owner` 0 stands for model space; the neighbours are for R13 to R2000.
    TestRecord& beginEntity(Handle layer, Handle owner = 0, Handle previous = 0, Handle next = 0)
    {
        m_entity = true;
        fields.bitPair(owner == 0 ? 2 : 0);
        if (owner != 0)
            handles.handle(4, owner);
        reactors();
        if (before(Version::R2000)) {
            pointer(layer);
            fields.bit(true);
        }
        if (before(Version::R2004)) {
            fields.bit(false);
            handles.handle(4, previous);
            handles.handle(4, next);
        }
        fields.bitShort(256);
        fields.bitDouble(1);
        if (!before(Version::R2000))
            lines(layer);
        fields.bitShort(0);
        if (!before(Version::R2000))
            fields.rawChar(29);
        return *this;
    }
    /// What all other objects begin with.
    TestRecord& beginObject(Handle owner)
    {
        handles.handle(4, owner);
        reactors();
        return *this;
    }

    /// The record's bytes from its type on.
    std::string payload() const { return joined().bytes(); }
    /// `payload`, or the part of it that is given, as it stands in the stream of objects.
    std::string framed(std::string_view payload) const
    {
        std::string out;
        putModularShort(out, static_cast<std::uint32_t>(payload.size()));
        if (!before(Version::R2010))
            putModularCharUnsigned(out, joined().bytes().size() * 8 - m_handlesAt);
        return out + std::string(payload) + std::string(2, '\0');
    }
    std::string framed() const { return framed(payload()); }

private:
    void reactors()
    {
        fields.bitLong(0);
        if (before(Version::R2004))
            handles.handle(3, 0);
        else
            fields.bit(true);
        if (!before(Version::R2013))
            fields.bit(false);
    }
    void lines(Handle layer)
    {
        pointer(layer);
        fields.bitPair(0);
        if (!before(Version::R2007)) {
            fields.bitPair(0);
            fields.rawChar(0);
        }
        fields.bitPair(0);
        if (!before(Version::R2010))
            fields.bits(0, 3);
    }
    void type(BitWriter& out) const
    {
        if (before(Version::R2010))
            return out.bitShort(static_cast<std::int16_t>(m_type));
        out.bitPair(m_type < 256 ? 0 : 2);
        if (m_type < 256)
            out.rawChar(static_cast<std::uint8_t>(m_type));
        else
            out.rawShort(static_cast<std::uint16_t>(m_type));
    }
    void putPicture(BitWriter& out) const
    {
        out.bit(!picture.empty());
        if (picture.empty())
            return;
        if (before(Version::R2010)) {
            out.rawLong(static_cast<std::uint32_t>(picture.size()));
        } else {
            // A number of bytes, then the bytes of the number.
            out.bits(2, 3);
            out.rawShort(static_cast<std::uint16_t>(picture.size()));
        }
        out.rawBytes(picture);
    }
    BitWriter joined() const
    {
        BitWriter start, middle, end;
        type(start);
        middle.handle(0, m_handle);
        if (extendedData.size() != 0) {
            middle.bitShort(static_cast<std::int16_t>(extendedData.size() / 8));
            middle.handle(5, 0x12);
            middle.append(extendedData);
        }
        middle.bitShort(0);
        if (m_entity)
            putPicture(middle);
        if (!before(Version::R2007)) {
            end.append(m_texts);
            if (m_texts.size() != 0)
                end.rawShort(static_cast<std::uint16_t>(m_texts.size()));
            end.bit(m_texts.size() != 0);
        }
        const bool hasSize = before(Version::R2010);
        m_handlesAt = start.size() + middle.size() + (hasSize ? 32 : 0) + fields.size() + end.size();
        const bool sizeFirst = !before(Version::R2000);
        if (hasSize && sizeFirst)
            start.rawLong(static_cast<std::uint32_t>(m_handlesAt));
        start.append(middle);
        if (hasSize && !sizeFirst)
            start.rawLong(static_cast<std::uint32_t>(m_handlesAt));
        for (const BitWriter* part : {&fields, static_cast<const BitWriter*>(&end), &handles})
            start.append(*part);
        return start;
    }

    Version m_version;
    int m_type;
    Handle m_handle;
    bool m_entity = false;
    BitWriter m_texts;
    mutable std::size_t m_handlesAt = 0;
};

inline constexpr Version kVersions[] = {Version::R13,   Version::R14,   Version::R2000, Version::R2004,
                                        Version::R2007, Version::R2010, Version::R2013, Version::R2018};

} // namespace zv::dwg
