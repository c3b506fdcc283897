#include "drawing/write/AmendFile.h"

#include "drawing/bits/BitReader.h"
#include "drawing/write/Bytes.h"
#include "drawing/write/HeaderSection.h"
#include "drawing/write/RawRecord.h"

namespace zv::dwg {

namespace {

const std::string kSecondHeaderStart("\xD4\x7B\x21\xCE\x28\x93\x9F\xBF\x53\x24\x40\x09\x12\x3C\xAA\x01", 16);
const std::string kSecondHeaderEnd("\x2B\x84\xDE\x31\xD7\x6C\x60\x40\xAC\xDB\xBF\xF6\xED\xC3\x55\xFE", 16);
const std::string kPreviewStart("\x1F\x25\x6D\x07\xD4\x36\x28\x28\x9D\x57\xCA\x3F\x9D\x44\x10\x2B", 16);
const std::string kPreviewEnd("\xE0\xDA\x92\xF8\x2B\xC9\xD7\xD7\x62\xA8\x35\xC0\x62\xBB\xEF\xD4", 16);
constexpr std::size_t kSentinel = 16, kLong = 4, kCheck = 2, kPreviewPlaceAt = 0x0D;

PartPlace placeOf(std::string_view file, int part)
{
    const std::size_t locator = locatorAt(file, part);
    return locator == 0 ? PartPlace{} : PartPlace{longAt(file, locator + 1), longAt(file, locator + 5)};
}

/// The section of the file's picture; none when the head does not tell it rightly.
PartPlace previewPlace(std::string_view file)
{
    const std::uint32_t at = longAt(file, kPreviewPlaceAt);
    constexpr std::size_t kFrame = 2 * kSentinel + kLong;
    const std::size_t size = kFrame + longAt(file, std::size_t{at} + kSentinel);
    const bool isOne = at < file.size() && size <= file.size() - at &&
                       file.substr(at, kSentinel) == kPreviewStart &&
                       file.substr(at + size - kSentinel, kSentinel) == kPreviewEnd;
    return isOne ? PartPlace{at, static_cast<std::uint32_t>(size)} : PartPlace{};
}

/// The content of the copy of the head with the parts and the seed as they are now; empty when it cannot be
/// read.
std::string secondHeaderContent(std::string_view old, std::string_view file, std::uint32_t offset,
                                Handle seed)
{
    constexpr std::size_t kVersionBits = std::size_t{11 + 1 + 1} * 8;
    BitReader in(bytesOf(old));
    BitWriter out;
    in.bitLong();
    out.bitLong(static_cast<std::int32_t>(offset));
    for (std::size_t bit = 0; bit < kVersionBits; bit += 8)
        out.rawChar(in.rawChar());
    out.bitShort(in.bitShort());
    out.rawShort(in.rawShort());
    const int parts = in.bitShort();
    out.bitShort(static_cast<std::int16_t>(parts));
    for (int i = 0; i < parts && in.ok(); ++i) {
        const int number = in.rawChar();
        in.bitLong();
        in.bitLong();
        const PartPlace place = placeOf(file, number);
        out.rawChar(static_cast<std::uint8_t>(number));
        out.bitLong(static_cast<std::int32_t>(place.offset));
        out.bitLong(static_cast<std::int32_t>(place.size));
    }
    const int handles = in.bitShort();
    out.bitShort(static_cast<std::int16_t>(handles));
    for (int i = 0; i < handles && in.ok(); ++i) {
        unsigned length = in.rawChar();
        const std::uint8_t number = in.rawChar();
        Handle handle = length <= 8 ? in.bits(length * 8) : 0;
        if (number == 0) {
            handle = seed;
            length = static_cast<unsigned>((std::bit_width(handle) + 7) / 8);
        }
        out.rawChar(static_cast<std::uint8_t>(length));
        out.rawChar(number);
        out.bits(handle, length * 8);
    }
    return in.ok() ? out.bytes() : std::string();
}

} // namespace

std::uint32_t longAt(std::string_view file, std::size_t at)
{
    if (at > file.size())
        return 0;
    BitReader in(bytesOf(file.substr(at, kLong)));
    return in.rawLong();
}

void setLong(std::string& file, std::size_t at, std::uint32_t value)
{
    std::string bytes;
    putLong(bytes, value);
    file.replace(at, bytes.size(), bytes);
}

void setShort(std::string& file, std::size_t at, std::uint16_t value)
{
    std::string bytes;
    putShort(bytes, value);
    file.replace(at, bytes.size(), bytes);
}

std::size_t locatorAt(std::string_view file, int part)
{
    const std::uint32_t count = longAt(file, kLocators - kLong);
    for (std::uint32_t i = 0; i < count; ++i) {
        const std::size_t at = kLocators + i * kLocatorSize;
        if (at + kLocatorSize + kCheck > file.size())
            return 0;
        if (file[at] == static_cast<char>(part))
            return at;
    }
    return 0;
}

void setLocator(std::string& file, std::size_t locator, PartPlace place)
{
    setLong(file, locator + 1, place.offset);
    setLong(file, locator + 5, place.size);
    const std::size_t codeAt = kLocators + longAt(file, kLocators - kLong) * kLocatorSize;
    setShort(file, codeAt, checkCode(std::string_view(file).substr(0, codeAt)));
}

AmendedFile::AmendedFile(std::string_view file, std::size_t end) : m_before(file), m_bytes(file)
{
    const std::uint32_t count = longAt(file, kLocators - kLong);
    for (std::size_t i = 0; i < count && kLocators + i * kLocatorSize < file.size(); ++i) {
        const std::size_t locator = kLocators + i * kLocatorSize;
        if (file[locator] != kHeaderPart && file[locator] != kObjectMapPart)
            end = std::max(end, std::size_t{longAt(file, locator + 1)} + longAt(file, locator + 5));
    }
    const PartPlace preview = previewPlace(file);
    end = std::max(
        {end, std::size_t{preview.offset} + preview.size, kLocators + count * kLocatorSize + kCheck});
    m_keptEnd = std::min(end, file.size());
    m_bytes.resize(m_keptEnd);
}

std::uint32_t AmendedFile::append(std::string_view bytes)
{
    const auto place = static_cast<std::uint32_t>(m_bytes.size());
    m_bytes += bytes;
    return place;
}

Result<void> AmendedFile::replaceHeader(const HeaderPlaces& places, const HeaderVariables& values,
                                        Handle seed)
{
    const Error broken{ErrorCode::Damaged, "the header variables cannot be read"};
    const std::size_t locator = locatorAt(m_bytes, kHeaderPart);
    const PartPlace old = placeOf(m_bytes, kHeaderPart);
    if (locator == 0 || old.offset > m_before.size() || old.size > m_before.size() - old.offset ||
        old.size < 2 * kSentinel + kLong + kCheck)
        return broken;
    const std::string section(m_before.substr(old.offset, old.size));
    const std::size_t size = longAt(section, kSentinel);
    if (size > section.size() - 2 * kSentinel - kLong - kCheck)
        return broken;
    BitWriter bits;
    bits.rawBytes(section.substr(kSentinel + kLong, size));
    HeaderVariables told = values;
    told.handleSeed = seed;
    const WrittenHeader written = writeHeader(told, {}, {}, {});
    // From the last one to the first, so that the places before keep their meaning.
    for (std::size_t i = places.size(); i-- > 0;) {
        const FieldPlace from = written.places[i];
        bits = spliced(bits, places[i].from, places[i].to, part(written.content, from.from, from.to));
    }
    const std::string made = sentinelSection(section.substr(0, kSentinel), bits.bytes(),
                                             section.substr(kSentinel + kLong + size + kCheck, kSentinel));
    setLocator(m_bytes, locator, {append(made), static_cast<std::uint32_t>(made.size())});
    return {};
}

Result<void> AmendedFile::replaceObjectMap(const std::map<Handle, std::uint32_t>& places)
{
    const std::size_t locator = locatorAt(m_bytes, kObjectMapPart);
    if (locator == 0)
        return Error{ErrorCode::Damaged, "section locators: none of the object map"};
    const std::string map = objectMap(places);
    setLocator(m_bytes, locator, {append(map), static_cast<std::uint32_t>(map.size())});
    return {};
}

void AmendedFile::replaceSecondHeader(Handle seed)
{
    constexpr std::size_t kUnknown = 8, kFrame = kLong + kCheck + kUnknown;
    const std::size_t start = m_before.rfind(kSecondHeaderStart);
    if (start == std::string::npos)
        return;
    const std::size_t begin = start + kSentinel;
    const std::size_t size = longAt(m_before, begin);
    if (size < kFrame || size > m_before.size() - begin)
        return;
    const std::string content = secondHeaderContent(m_before.substr(begin + kLong, size - kFrame), m_bytes,
                                                    static_cast<std::uint32_t>(m_bytes.size()), seed);
    const std::string unknown(m_before.substr(begin + size - kUnknown, kUnknown));
    blank(start, kSentinel);
    if (content.empty())
        return;
    std::string sized;
    putLong(sized, static_cast<std::uint32_t>(content.size() + kFrame));
    sized += content;
    putShort(sized, checkCode(sized));
    append(kSecondHeaderStart + sized + unknown + kSecondHeaderEnd);
}

void AmendedFile::replacePreview(const Pixels& preview)
{
    const PartPlace old = previewPlace(m_before);
    const std::string fitting = previewSection(&preview, old.offset);
    if (fitting.size() <= old.size) {
        m_bytes.replace(old.offset, fitting.size(), fitting);
        blank(old.offset + fitting.size(), old.size - fitting.size());
        return;
    }
    blank(old.offset, old.size);
    const auto at = static_cast<std::uint32_t>(m_bytes.size());
    append(previewSection(&preview, at));
    setLong(m_bytes, kPreviewPlaceAt, at);
    if (const std::size_t locator = locatorAt(m_bytes, kObjectMapPart))
        setLocator(m_bytes, locator, placeOf(m_bytes, kObjectMapPart));
}

/// Makes nothing of a part that was kept only because others stand behind it.
void AmendedFile::blank(std::size_t at, std::size_t size)
{
    for (std::size_t i = at; i < std::min(at + size, m_keptEnd); ++i)
        m_bytes[i] = '\0';
}

} // namespace zv::dwg
