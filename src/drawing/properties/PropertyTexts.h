#pragma once

#include "drawing/Document.h"

#include <cstddef>
#include <cstdint>

namespace zv::dwg {

/// Gives the fixed texts of a drawing's description in the order of the summary section, for its reader and
/// its writer.
void eachSummaryText(auto& properties, auto&& take)
{
    auto& [title, subject, author, comments, keywords, lastSavedBy, revision, hyperlinkBase, custom] =
        properties;
    for (auto* text :
         {&title, &subject, &author, &keywords, &comments, &lastSavedBy, &revision, &hyperlinkBase})
        take(*text);
}

/// In the record DWGPROPS the first text of this code is the record's mark, the second the base of
/// hyperlinks.
inline constexpr std::uint16_t kMarkCode = 1;
/// Custom properties have the codes from here on; AutoCAD 2000 knows as many.
inline constexpr std::size_t kFirstCustomCode = 300, kMostCustomProperties = 10;

/// Gives the other texts of that record, each with its group code.
void eachRecordText(auto& properties, auto&& take)
{
    auto& [title, subject, author, comments, keywords, lastSavedBy, revision, hyperlinkBase, custom] =
        properties;
    take(2, title);
    take(3, subject);
    take(4, author);
    take(6, comments);
    take(7, keywords);
    take(8, lastSavedBy);
    take(9, revision);
}

} // namespace zv::dwg
