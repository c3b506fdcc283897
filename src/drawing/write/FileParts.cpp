#include "drawing/write/FileParts.h"

#include <iterator>
#include <set>

namespace zv::dwg {

namespace {
constexpr std::uint8_t kMaintenance = 6;
constexpr std::uint8_t kApplicationVersion = 23;
constexpr std::uint16_t kCodePage1252 = 30;

std::string sentinel(const char* sixteenBytes)
{
    return std::string(sixteenBytes, 16);
}
} // namespace

std::string fileHead(const PartPlaces& places, std::uint32_t previewOffset)
{
    std::string head = "AC1015";
    head += std::string(5, '\0');
    head.push_back(kMaintenance);
    head.push_back(1);
    putLong(head, previewOffset);
    head.push_back(kApplicationVersion);
    head.push_back(kMaintenance);
    putShort(head, kCodePage1252);
    putLong(head, kParts);
    for (int i = 0; i < kParts; ++i) {
        head.push_back(static_cast<char>(i));
        putLong(head, places[static_cast<std::size_t>(i)].offset);
        putLong(head, places[static_cast<std::size_t>(i)].size);
    }
    putShort(head, checkCode(head));
    return head + sentinel("\x95\xA0\x4E\x28\x99\x82\x1A\xE5\x5E\x41\xE0\x5F\x9D\x3A\x4D\x00");
}

std::string auxiliaryHeader(Handle seed, JulianTime saved)
{
    std::string out("\xFF\x77\x01", 3);
    const auto version = [&] {
        putShort(out, kApplicationVersion);
        putShort(out, kMaintenance);
    };
    version();
    putLong(out, 1); // Saves.
    putLong(out, 0xFFFFFFFF);
    putShort(out, 1);
    putShort(out, 0);
    putLong(out, 0);
    version();
    version();
    for (const std::uint16_t value : std::initializer_list<std::uint16_t>{5, 2195, 5, 2195, 0, 1})
        putShort(out, value);
    out += std::string(20, '\0');
    for (int i = 0; i < 2; ++i) {
        putLong(out, saved.day);
        putLong(out, saved.milliseconds);
    }
    putLong(out, seed < 0x7FFFFFFF ? static_cast<std::uint32_t>(seed) : 0xFFFFFFFF);
    putLong(out, 0);
    putShort(out, 0);
    putShort(out, 1);
    out += std::string(12, '\0');
    putLong(out, 1);
    out += std::string(16, '\0');
    return out;
}

namespace {
/// A bitmap of 24 bits: its information header and its rows, the lowest first.
std::string bitmap(const Pixels& pixels)
{
    const auto width = static_cast<std::size_t>(pixels.width),
               height = static_cast<std::size_t>(pixels.height);
    const std::size_t stride = (width * 3 + 3) / 4 * 4;
    std::string out;
    putLong(out, 40);
    putLong(out, static_cast<std::uint32_t>(width));
    putLong(out, static_cast<std::uint32_t>(height));
    putShort(out, 1);
    putShort(out, 24);
    putLong(out, 0);
    putLong(out, static_cast<std::uint32_t>(stride * height));
    out += std::string(16, '\0');
    for (std::size_t row = height; row-- > 0;) {
        const std::size_t begin = out.size();
        for (std::size_t x = 0; x < width; ++x)
            for (std::size_t channel = 0; channel < 3; ++channel)
                out.push_back(static_cast<char>(pixels.bgra[(row * width + x) * 4 + channel]));
        out.resize(begin + stride, '\0');
    }
    return out;
}
} // namespace

std::string previewSection(const Pixels* preview, std::uint32_t offset)
{
    const std::string begin = sentinel("\x1F\x25\x6D\x07\xD4\x36\x28\x28\x9D\x57\xCA\x3F\x9D\x44\x10\x2B");
    const std::string end = sentinel("\xE0\xDA\x92\xF8\x2B\xC9\xD7\xD7\x62\xA8\x35\xC0\x62\xBB\xEF\xD4");
    std::string content;
    if (preview == nullptr) {
        content.push_back(0);
    } else {
        constexpr std::uint32_t kHeaderData = 80;
        const std::string picture = bitmap(*preview);
        const std::uint32_t data = offset + 16 + 4 + 1 + 2 * 9;
        content.push_back(2);
        content.push_back(1); // Header data.
        putLong(content, data);
        putLong(content, kHeaderData);
        content.push_back(2); // Bitmap.
        putLong(content, data + kHeaderData);
        putLong(content, static_cast<std::uint32_t>(picture.size()));
        content += std::string(kHeaderData, '\0') + picture;
    }
    std::string size;
    putLong(size, static_cast<std::uint32_t>(content.size()));
    return begin + size + content + end;
}

std::string classesSection(int highestType)
{
    struct Class {
        int number, flags;
        const char *application, *name, *record;
        bool entity;
    };
    static constexpr const char* kCommon = "ObjectDBX Classes";
    static constexpr Class kClasses[] = {
        {kDictionaryWithDefault, 0, kCommon, "AcDbDictionaryWithDefault", "ACDBDICTIONARYWDFLT", false},
        {kPlaceholder, 0, kCommon, "AcDbPlaceHolder", "ACDBPLACEHOLDER", false},
        {kLayoutClass, 0, kCommon, "AcDbLayout", "LAYOUT", false},
        {kWipeout, 127, "WipeOut", "AcDbWipeout", "WIPEOUT", true},
    };
    BitWriter fields;
    for (const Class& each : kClasses) {
        // Readers find a class by its place, so none may be left out before another.
        if (each.number > highestType)
            break;
        fields.bitShort(static_cast<std::int16_t>(each.number));
        fields.bitShort(static_cast<std::int16_t>(each.flags));
        fields.text(each.application);
        fields.text(each.name);
        fields.text(each.record);
        fields.bit(false);
        fields.bitShort(each.entity ? 0x1F2 : 0x1F3);
    }
    return sentinelSection(sentinel("\x8D\xA1\xC4\xB8\xC4\xA9\xF8\xC5\xC0\xDC\xF4\x5F\xE7\xCF\xB6\x8A"),
                           fields.bytes(),
                           sentinel("\x72\x5E\x3B\x47\x3B\x56\x07\x3A\x3F\x23\x0B\xA0\x18\x30\x49\x75"));
}

namespace {
/// One piece of the object map: its length, highest byte first, counts itself and not the check code.
std::string mapPiece(const std::string& content)
{
    const std::size_t size = content.size() + 2;
    std::string piece{static_cast<char>(size >> 8), static_cast<char>(size & 0xFF)};
    piece += content;
    const std::uint16_t code = checkCode(piece);
    piece.push_back(static_cast<char>(code >> 8));
    piece.push_back(static_cast<char>(code & 0xFF));
    return piece;
}

/// The map with pieces that begin at the objects of `cuts`, beside those that begin where one is full.
std::string cutMap(const std::map<Handle, std::uint32_t>& places, const std::set<Handle>& cuts)
{
    constexpr std::size_t kLargestPiece = 2030;
    std::string map, piece;
    Handle lastHandle = 0;
    std::int64_t lastPlace = 0;
    for (const auto& [handle, place] : places) {
        std::string entry;
        putModularCharUnsigned(entry, handle - lastHandle);
        putModularChar(entry, std::int64_t{place} - lastPlace);
        if (piece.size() + entry.size() > kLargestPiece || (!piece.empty() && cuts.contains(handle))) {
            map += mapPiece(piece);
            piece.clear();
            entry.clear();
            putModularCharUnsigned(entry, handle);
            putModularChar(entry, place);
        }
        piece += entry;
        lastHandle = handle;
        lastPlace = place;
    }
    if (!piece.empty())
        map += mapPiece(piece);
    return map + mapPiece({});
}
} // namespace

/// The step to the first handle beyond twice the map's length is taken for damage by some readers, as the
/// handles of most drawings stand close together; those of one from which much is gone do not. What a piece
/// begins with is no step, so one begins there.
std::string objectMap(const std::map<Handle, std::uint32_t>& places)
{
    constexpr std::size_t kMostTries = 16;
    std::string map = cutMap(places, {});
    std::set<Handle> cuts, tried;
    for (std::size_t i = 0; i < kMostTries; ++i) {
        const auto beyond = places.upper_bound(2 * map.size());
        if (beyond == places.end() || cuts.contains(beyond->first))
            break;
        // The cut makes the map longer, by more or less as it moves; if it goes back to where it was, another
        // one further on in the map makes it longer still.
        cuts = {beyond->first};
        if (!tried.insert(beyond->first).second)
            cuts.insert(std::next(places.begin(), std::ptrdiff_t(places.size() * i / kMostTries))->first);
        map = cutMap(places, cuts);
    }
    return map;
}

std::string secondHeader(const Plan& plan, const PartPlaces& places, std::uint32_t offset)
{
    BitWriter fields;
    fields.bitLong(static_cast<std::int32_t>(offset));
    fields.rawBytes(std::string("AC1015\0\0\0\0\0", 11));
    fields.rawChar(kMaintenance);
    fields.rawChar(1);
    fields.bitShort(kMaintenance << 8 | kApplicationVersion);
    fields.rawShort(kCodePage1252);
    fields.bitShort(kParts);
    for (int i = 0; i < kParts; ++i) {
        fields.rawChar(static_cast<std::uint8_t>(i));
        fields.bitLong(static_cast<std::int32_t>(places[static_cast<std::size_t>(i)].offset));
        fields.bitLong(static_cast<std::int32_t>(places[static_cast<std::size_t>(i)].size));
    }
    const std::array<Handle, 14> handles{plan.seed(),
                                         plan.blockControl,
                                         plan.layerControl,
                                         plan.styleControl,
                                         plan.linetypeControl,
                                         plan.viewControl,
                                         plan.ucsControl,
                                         plan.vportControl,
                                         plan.applicationControl,
                                         plan.dimensionStyleControl,
                                         plan.viewportHeaderControl,
                                         plan.namedObjects,
                                         plan.mlineStyles,
                                         plan.groups};
    fields.bitShort(static_cast<std::int16_t>(handles.size()));
    for (std::size_t i = 0; i < handles.size(); ++i) {
        const unsigned length = static_cast<unsigned>((std::bit_width(handles[i]) + 7) / 8);
        fields.rawChar(static_cast<std::uint8_t>(length));
        fields.rawChar(static_cast<std::uint8_t>(i));
        fields.bits(handles[i], length * 8);
    }
    // The length counts itself, the check code, and eight bytes of no known use.
    constexpr std::size_t kFrame = 4 + 2 + 8;
    std::string sized;
    putLong(sized, static_cast<std::uint32_t>(fields.bytes().size() + kFrame));
    sized += fields.bytes();
    putShort(sized, checkCode(sized));
    sized += std::string(8, '\0');
    return sentinel("\xD4\x7B\x21\xCE\x28\x93\x9F\xBF\x53\x24\x40\x09\x12\x3C\xAA\x01") + sized +
           sentinel("\x2B\x84\xDE\x31\xD7\x6C\x60\x40\xAC\xDB\xBF\xF6\xED\xC3\x55\xFE");
}

std::string templateSection(bool metric)
{
    std::string out;
    putShort(out, 0);
    putShort(out, metric ? 1 : 0);
    return out;
}

} // namespace zv::dwg
