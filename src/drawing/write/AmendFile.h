#pragma once

#include "drawing/preview/Preview.h"
#include "drawing/records/HeaderVariables.h"
#include "drawing/write/FileParts.h"
#include "platform/Result.h"

#include <map>
#include <string>
#include <string_view>

namespace zv::dwg {

/// Where the head of an AC1015 file lists its parts, and how long each entry is.
inline constexpr std::size_t kLocators = 0x19, kLocatorSize = 9;

/// Numbers of a file at a place.
std::uint32_t longAt(std::string_view file, std::size_t at);
void setLong(std::string& file, std::size_t at, std::uint32_t value);
void setShort(std::string& file, std::size_t at, std::uint16_t value);
/// Where the locator of a part of the file stands in its head; 0 when it has none.
std::size_t locatorAt(std::string_view file, int part);
/// Tells the head where a part stands now, and makes its check code fit.
void setLocator(std::string& file, std::size_t locator, PartPlace place);

/// An AC1015 file whose parts are told anew: each new one goes to the end and the head tells its place.
class AmendedFile {
public:
    /// Keeps the file up to `end`, and what the head tells behind it; header, object map and second header
    /// are to be replaced, so that a file that is saved again and again does not gather old ones.
    AmendedFile(std::string_view file, std::size_t end);

    /// Gives the place.
    std::uint32_t append(std::string_view bytes);
    /// The header variables with the values that a changed drawing tells anew. Errors: Damaged.
    Result<void> replaceHeader(const HeaderPlaces& places, const HeaderVariables& values, Handle seed);
    /// Errors: Damaged.
    Result<void> replaceObjectMap(const std::map<Handle, std::uint32_t>& places);
    /// The copy of the head, an aid for recovery; one that cannot be read is only taken out of use. To be
    /// called after the other parts.
    void replaceSecondHeader(Handle seed);
    /// In the place of the old one where it fits there.
    void replacePreview(const Pixels& preview);
    std::string finished() && { return std::move(m_bytes); }
    const std::string& finished() const& { return m_bytes; }

private:
    void blank(std::size_t at, std::size_t size);

    std::string_view m_before;
    std::string m_bytes;
    std::size_t m_keptEnd = 0;
};

} // namespace zv::dwg
