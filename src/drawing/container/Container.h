#pragma once

#include "drawing/Document.h"
#include "platform/ByteSource.h"
#include "platform/Result.h"

#include <cstddef>
#include <memory>
#include <span>
#include <vector>

namespace zv::dwg {

/// The named streams of a drawing file.
enum class Section {
    Header,    ///< Header variables.
    Classes,   ///< The class table.
    ObjectMap, ///< Handles and the places of their records.
    Objects,   ///< The records. Places of the object map count from this stream's first byte.
    Template,
    AuxHeader,
    Preview,
    SummaryInfo,
};

/// A drawing file, opened: its version and its streams, each found and unpacked only when it is asked for.
/// For one thread at a time. Format: "Open Design Specification for .dwg files", as the Open Design Alliance
/// publishes it.
class Container {
public:
    virtual ~Container() = default;
    Container() = default;
    Container(const Container&) = delete;
    Container& operator=(const Container&) = delete;

    /// `source` must outlive the container. Errors: Unsupported, the version's own words (earlier than R13,
    /// or newer than known); Damaged, no drawing file, or its section tables are broken.
    static Result<std::unique_ptr<Container>> open(const ByteSource& source);

    Version version() const { return m_version; }
    /// The six characters at the start of the file.
    const std::string& versionText() const { return m_versionText; }
    /// The file's code page number; 30 is ANSI 1252.
    int codePage() const { return m_codePage; }
    int maintenanceVersion() const { return m_maintenance; }
    /// What could not be unpacked and was left as zeros in the objects that section() gave, in words.
    const std::vector<std::string>& damage() const { return m_damage; }

    /// The stream, unpacked, without sentinels being removed. Sections of R13 to R2000 are cut from the file;
    /// there Objects is the whole file, so that the object map's places are the file's own. A page of Objects
    /// that cannot be unpacked is left as zeros and told in damage(). Errors: NotFound, the file has no such
    /// section; Damaged; TooLarge.
    virtual Result<std::vector<std::byte>> section(Section which) const = 0;
    /// `length` bytes of Objects from `offset`, with as few pages unpacked as hold them. Same errors.
    virtual Result<std::vector<std::byte>> objectBytes(std::uint64_t offset, std::size_t length) const = 0;

protected:
    Version m_version = Version::R2000;
    std::string m_versionText;
    int m_codePage = 30;
    int m_maintenance = 0;
    mutable std::vector<std::string> m_damage;
};

} // namespace zv::dwg
