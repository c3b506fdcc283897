#pragma once

#include "Draft.h"

#include <string>
#include <vector>

namespace zv::samples {

/// One drawing of the office.
struct Sample {
    std::string name; ///< Of the file, without ".dwg".
    std::string title, comments, keywords;
    Draft draft;
    bool preview = true; ///< Whether the file has an embedded picture.
};

struct Library {
    std::string name;
    std::vector<Sample> samples;
};

Library doorsAndWindows();
Library stairs();
Library steelSections();
Library boltsAndWelds();
Library concreteDetails();
Library electricalSymbols();
Library plumbingSymbols();
Library hvacSymbols();
Library siteSymbols();
Library draftingMarks();

/// All of them, in the order of the catalogue.
std::vector<Library> allLibraries();

/// The drawing that stands in for one that cannot be shown.
Sample failedDrawing();

} // namespace zv::samples
