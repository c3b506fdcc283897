#include "library/PageMath.h"

#include "platform/Text.h"

#include <algorithm>

namespace zv {

int countedLines(int lines)
{
    return std::max(lines, kPanelCells);
}

double pageCount(int countedLines)
{
    const double panels = static_cast<double>(countedLines) / kPanelCells;
    const double rounded = roundHalfEven(panels);
    return std::max(panels > rounded ? rounded + 1 : panels, rounded);
}

PanelPlace placeOfLine(int line)
{
    PanelPlace place;
    place.panel = std::max(1, (line + kPanelCells - 1) / kPanelCells);
    place.first = (place.panel - 1) * kPanelCells + 1;
    place.cell = line - place.first + 1;
    return place;
}

} // namespace zv
