#include "drawing/container/FileStart.h"

#include <algorithm>
#include <iterator>
#include <optional>

namespace zv::dwg {

namespace {

struct KnownVersion {
    std::string_view text;
    Version version;
};
constexpr KnownVersion kKnown[] = {
    {"AC1012", Version::R13},   {"AC1014", Version::R14},   {"AC1015", Version::R2000},
    {"AC1018", Version::R2004}, {"AC1021", Version::R2007}, {"AC1024", Version::R2010},
    {"AC1027", Version::R2013}, {"AC1032", Version::R2018},
};

struct EarlierVersion {
    std::string_view text;
    const char* release;
};
constexpr EarlierVersion kEarlier[] = {
    {"MC0.0", "R1.0"},     {"AC1.2", "R1.2"},      {"AC1.3", "R1.3"},      {"AC1.40", "R1.4"},
    {"AC1.50", "R2.0"},    {"AC2.10", "R2.1"},     {"AC2.21", "R2.2"},     {"AC2.22", "R2.2"},
    {"AC1001", "R2.2"},    {"AC1002", "R2.5"},     {"AC1003", "R2.6"},     {"AC1004", "R9"},
    {"AC1005", "R9"},      {"AC1006", "R10"},      {"AC1007", "R10"},      {"AC1008", "R10"},
    {"AC1009", "R11/R12"}, {"AC1010", "R13 beta"}, {"AC1011", "R13 beta"},
};

std::optional<Version> knownVersion(std::string_view text)
{
    const auto found = std::find_if(std::begin(kKnown), std::end(kKnown),
                                    [&](const KnownVersion& k) { return k.text == text; });
    return found == std::end(kKnown) ? std::nullopt : std::optional(found->version);
}

/// Why a file with this start cannot be read.
Error refusal(std::string_view text)
{
    for (const EarlierVersion& earlier : kEarlier) {
        if (text.substr(0, earlier.text.size()) == earlier.text)
            return {ErrorCode::Unsupported, std::string("drawing of release ") + earlier.release + " (" +
                                                std::string(earlier.text) + "), earlier than R13"};
    }
    const bool digits = text.size() == 6 && std::all_of(text.begin() + 2, text.end(),
                                                        [](char c) { return c >= '0' && c <= '9'; });
    if (text.substr(0, 2) != "AC" || !digits)
        return {ErrorCode::Damaged, "no drawing file: it does not start with a version"};
    const std::string version(text);
    if (text > "AC1032")
        return {ErrorCode::Unsupported, "drawing of version " + version + ", later than 2018 (AC1032)"};
    return {ErrorCode::Unsupported, "drawing of version " + version + ", which is not known"};
}

} // namespace

Result<std::array<std::byte, FileStart::kSize>> FileStart::read(const ByteSource& source)
{
    std::array<std::byte, kSize> bytes{};
    const std::size_t size = std::min<std::uint64_t>(kSize, source.size());
    if (size < 6)
        return Error{ErrorCode::Damaged, "no drawing file: only " + std::to_string(size) + " bytes"};
    if (const auto done = source.read(0, std::span(bytes).first(size)); !done)
        return done.error();
    const std::string text = FileStart(bytes).versionText();
    if (!knownVersion(text))
        return refusal(text);
    if (size < kSize)
        return Error{ErrorCode::Damaged, "file start: cut short after " + std::to_string(size) + " bytes"};
    return bytes;
}

Version FileStart::version() const
{
    return knownVersion(versionText()).value_or(Version::R2000);
}

} // namespace zv::dwg
