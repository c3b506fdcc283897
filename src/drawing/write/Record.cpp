#include "drawing/write/Record.h"

#include <algorithm>
#include <array>
#include <cstdio>

namespace zv::dwg {

void Record::extendedData(Handle application, const std::string& bytes)
{
    m_extended.bitShort(static_cast<std::int16_t>(bytes.size()));
    m_extended.handle(kHardPointer, application);
    m_extended.rawBytes(bytes);
}

void Record::beginObject(Handle owner, const std::vector<Handle>& reactors)
{
    fields.bitLong(static_cast<std::int32_t>(reactors.size()));
    handles.handle(kSoftPointer, owner);
    for (const Handle reactor : reactors)
        handles.handle(kSoftPointer, reactor);
    handles.handle(kHardOwner, 0);
}

std::string Record::framed() const
{
    BitWriter own;
    own.handle(0, m_handle);
    own.append(m_extended);
    own.bitShort(0);
    own.append(fields);

    BitWriter all;
    all.bitShort(static_cast<std::int16_t>(m_type));
    all.rawLong(static_cast<std::uint32_t>(all.size() + 32 + own.size()));
    all.append(own);
    all.append(handles);

    std::string framed;
    putModularShort(framed, static_cast<std::uint32_t>(all.bytes().size()));
    framed += all.bytes();
    putShort(framed, checkCode(framed));
    return framed;
}

void writeWorldCoordinates(BitWriter& fields)
{
    fields.bitPoint3({0, 0, 0});
    fields.bitPoint3({1, 0, 0});
    fields.bitPoint3({0, 1, 0});
    fields.bitDouble(0);
    fields.bitShort(0);
}

namespace {
// What the bytes 0x80 to 0x9F stand for in ANSI 1252; 0 where nothing is.
constexpr std::array<char16_t, 32> kUpperControls{
    0x20AC, 0,      0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0,      0x017D, 0,      0,      0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0,      0x017E, 0x0178};
} // namespace

std::string encodeText(std::u16string_view text, int codePage)
{
    std::string bytes;
    for (const char16_t c : text) {
        if (c < 0x80 || (c >= 0xA0 && c <= 0xFF && codePage == kAnsi1252)) {
            bytes.push_back(static_cast<char>(c));
            continue;
        }
        const auto found = std::find(kUpperControls.begin(), kUpperControls.end(), c);
        if (codePage == kAnsi1252 && found != kUpperControls.end()) {
            bytes.push_back(static_cast<char>(0x80 + (found - kUpperControls.begin())));
            continue;
        }
        char escape[8];
        std::snprintf(escape, sizeof escape, "\\U+%04X", static_cast<unsigned>(c));
        bytes += escape;
    }
    return bytes;
}

} // namespace zv::dwg
