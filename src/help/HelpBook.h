#pragma once

#include "help/HelpText.h"
#include "platform/Result.h"

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace zv {

/// A page that holds the words searched for.
struct HelpFinding {
    std::string title; ///< UTF-8.
    std::string page;
    int count = 0; ///< How often the words stand there.
};

/// A compiled help file, opened for reading.
/// Format: CHM, the compiled form of HTML Help, read through chmlib.
class HelpBook {
public:
    /// Opens a help file; `path` is in the program's own text.
    /// Errors: NotFound, no file is there; Damaged, it is no help file or holds no page to open with.
    static Result<std::unique_ptr<HelpBook>> open(const std::string& path);
    ~HelpBook();
    HelpBook(const HelpBook&) = delete;
    HelpBook& operator=(const HelpBook&) = delete;

    const std::string& title() const { return m_title; }
    /// The page that the book opens with.
    const std::string& home() const { return m_home; }
    const std::vector<HelpEntry>& contents() const { return m_contents; }
    /// The keywords in alphabetical order, flat.
    const std::vector<HelpEntry>& index() const { return m_index; }

    /// The bytes of a file inside the book; `name` without the part from "#" on and with or without "/" in
    /// front. Errors: NotFound; TooLarge, over 16 MiB; Damaged, it cannot be unpacked.
    Result<std::string> file(std::string_view name) const;
    /// The pages that hold every word of `words` (each at least as the start of a word, without regard to
    /// case), the richest first. No words find nothing.
    std::vector<HelpFinding> search(std::string_view words) const;

private:
    struct File;
    struct Page {
        std::string name;
        std::string title;
        std::vector<std::string> words;
    };
    explicit HelpBook(std::unique_ptr<File> file);
    bool load();
    bool hasPagesOf(const std::vector<HelpEntry>& entries) const;
    void readSystemFile(std::string& contentsName, std::string& indexName);
    void readPages() const;

    std::unique_ptr<File> m_file;
    std::string m_title;
    std::string m_home;
    std::vector<HelpEntry> m_contents;
    std::vector<HelpEntry> m_index;
    /// Read at the first search.
    mutable std::vector<Page> m_pages;
};

} // namespace zv
