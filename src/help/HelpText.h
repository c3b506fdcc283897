#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace zv {

/// An entry of a book's contents or index. Texts are UTF-8.
struct HelpEntry {
    std::string title;
    std::string page; ///< Path inside the book, "folder/page.html#place"; empty for a mere heading.
    std::vector<HelpEntry> children;
};

/// Reads the entries of a site map, the text in which contents and index are kept (nested lists of objects).
std::vector<HelpEntry> readSiteMap(std::string_view html);
/// The words of a page as a reader sees them, in small letters and in order.
std::vector<std::string> wordsOfPage(std::string_view html);
/// The title of a page; empty when it has none.
std::string titleOfPage(std::string_view html);

} // namespace zv
