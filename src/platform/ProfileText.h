#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace zv {

/// The text of a profile file: sections "[name]", lines "key=value", comments from ";". Names meet without
/// regard to case, the first of several equal sections or keys counts, and every line that is not changed
/// keeps its bytes. Values are in the program's own text.
/// Format: the initialization files that Microsoft documents for GetPrivateProfileString.
class ProfileText {
public:
    explicit ProfileText(std::string text) : m_text(std::move(text)) {}
    // Its lines point into its text.
    ProfileText(const ProfileText&) = delete;
    ProfileText& operator=(const ProfileText&) = delete;

    const std::string& text() const { return m_text; }

    /// The value without blanks and without a pair of quotes around it; nothing when the key is absent or its
    /// line has no "=".
    std::optional<std::string> value(std::string_view section, std::string_view key) const;
    /// The values of many keys of a text, in one walk that keeps nothing of the other lines.
    static std::vector<std::optional<std::string>> valuesIn(std::string_view text, std::string_view section,
                                                            const std::vector<std::string>& keys);
    std::vector<std::string> sections() const;
    std::vector<std::string> keys(std::string_view section) const;

    void setValue(std::string_view section, std::string_view key, std::string_view value);
    void removeKey(std::string_view section, std::string_view key);
    void removeSection(std::string_view section);
    /// Replaces all lines of the section, or adds it at the end when there are lines to add. Lines of blanks
    /// are passed over.
    void setLines(std::string_view section, const std::vector<std::string_view>& wanted);

private:
    /// One line: where it stands in the text, and what it says.
    struct Line {
        enum class Kind { Other, Section, Key };
        Kind kind = Kind::Other;
        std::size_t begin = 0;
        std::size_t end = 0; ///< Behind its line end.
        std::string_view name;
        std::optional<std::string_view> value;
    };
    /// Lines of one section, without its header.
    struct Range {
        std::size_t first = 0;
        std::size_t last = 0; ///< Behind the last one.
    };

    static Line parse(std::string_view line, std::size_t begin, std::size_t end);
    const std::vector<Line>& lines() const;
    void change(std::string text);
    std::optional<Range> find(std::string_view section) const;
    const Line* findKey(std::string_view section, std::string_view key) const;
    std::size_t endOf(Range range) const;

    std::string m_text;
    /// Without those of blanks; none while nobody has asked for those of this text.
    mutable std::optional<std::vector<Line>> m_lines;
};

} // namespace zv
