#pragma once

#include "library/Panels.h"
#include "window/DwgPropsX.h"

#include <array>
#include <cstdint>
#include <string>

namespace zv {

/// The fields of the main window that are kept for the run: they outlive its unloading. Other windows read
/// and set some of them. Paths are in the program's own text.
struct BrowserFields {
    std::string selectedDrawing; ///< As its line in the list has it; empty until one is selected.
    std::string LibraryPath;     ///< The list in view.
    std::string LibraryName;     ///< Its name, as it was picked.
    std::string LinePath;        ///< Of the line read last.
    Panels panels;               ///< Of that list.
    std::array<std::string, kPanelCells + 1> CellPath; ///< Drawing behind each cell, from 1.
    std::int16_t CellFailed = 0;
    std::int16_t ViewerBusy = 0;       ///< 1 while the viewer is being refilled.
    std::int16_t queueMode = 0;        ///< 1 while Option4 is the mode.
    std::int16_t OneShotScaleLock = 0; ///< The next click of Check1 or Option1 disables x once.
    std::int16_t RibbonTab = 0;        ///< 0 tools, 2 settings.
    std::int16_t cartFromButton = 0;   ///< 1 when Cart was opened by Command24.
    std::int16_t xrefState = 0;        ///< Of Xattach: 0 normal, 1 show again, 7 from Search, 8 both.
    std::int16_t cmodeState = 0;       ///< Of cmode, the same.
    std::string searchDrawing;         ///< What is selected in Search when it asks for an action.
    std::string searchLibrary;         ///< What Search shows in its box of libraries at first.
    std::int16_t ExplodeFlag = 0;      ///< Set to 0 by Search where Explode is taken away there.
    unsigned filesClosed = 0;          ///< How often every open file was closed: a reading under way ends.
    DwgPropsX props;                   ///< The one reader of properties that the windows share.
};

} // namespace zv
