#pragma once

#include "Library.h"

namespace zv::samples {

/// An empty sheet of the doors' library, in inches.
inline Sample doorSample(const std::string& name, const std::string& title, const std::string& comments,
                         const std::string& keywords, double scale = 24)
{
    return {name, title, comments, keywords, Draft(Units::Inches, scale)};
}

void addDoorPlans(std::vector<Sample>& out);
void addOpeningElevations(std::vector<Sample>& out);

} // namespace zv::samples
