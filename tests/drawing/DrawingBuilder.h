#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace zv::dwg {

/// A section of a drawing that is built for a test.
struct BuiltSection {
    std::string name;
    std::string bytes;
    std::size_t pageSize = 0x7400;
    std::vector<std::size_t> leftOut =
        {}; ///< Numbers of pages that are not stored, as pages of zeros are not.
};

/// Number, low byte first.
std::string littleEndian(std::uint64_t value, int size);

/// The smallest files that hold these sections. R13 to R2000: a section's name is the number of its locator.
std::string buildR13(std::string_view version, const std::vector<BuiltSection>& sections, int codePage = 30);
std::string buildR2004(std::string_view version, const std::vector<BuiltSection>& sections,
                       int codePage = 30);
/// `guarded`: the data pages carry the error-correcting code.
std::string buildR2007(const std::vector<BuiltSection>& sections, bool guarded = true);

} // namespace zv::dwg
