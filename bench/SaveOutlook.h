#pragma once

#include "drawing/Document.h"

#include <optional>
#include <string>
#include <vector>

namespace zv::bench {

/// How the work in a drawing can go to a file.
enum class SaveWay {
    Whole,   ///< Its file is written anew, and nothing of it is lost by that.
    Amended, ///< Only the records that changed are replaced in its file.
    NewFile, ///< Its own file cannot be written; a new one can.
};

struct SaveOutlook {
    SaveWay way = SaveWay::Whole;
    std::string reason;               ///< Why its own file cannot be written.
    std::vector<std::string> missing; ///< What a new file would not have: kinds and counts, in words.
};

/// `file` are the bytes that `document` was read from.
SaveOutlook saveOutlook(const std::string& file, const dwg::Document& document,
                        const std::optional<dwg::Properties>& properties);

/// The entities that no file can take from this program, by kind and count; those that are in `kept` are not
/// counted, because they stay as they are.
std::vector<std::string> unsavable(const dwg::Document& document, const dwg::Document* kept = nullptr);
/// The document without them.
dwg::Document savable(const dwg::Document& document, const dwg::Document* kept = nullptr);

/// An AC1015 file takes no more.
inline constexpr std::size_t kMostCustomProperties = 10;

/// "3 MULTILEADER, 1 group"; of a long list its beginning.
std::string joined(const std::vector<std::string>& items);

} // namespace zv::bench
