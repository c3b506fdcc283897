#pragma once

namespace zv {

/// How many drawings a panel shows.
inline constexpr int kPanelCells = 20;

/// The count of lines as the panels take it: at least one whole panel.
int countedLines(int lines);
/// How many panels that many counted lines fill, the last one perhaps in part.
double pageCount(int countedLines);

/// Where a line of the list, from 1, is shown.
struct PanelPlace {
    int panel = 1; ///< From 1.
    int first = 1; ///< The line in the panel's first cell, from 1.
    int cell = 1;  ///< From 1 to 20.
};
PanelPlace placeOfLine(int line);

} // namespace zv
