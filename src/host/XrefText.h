#pragma once

#include "platform/Automation.h"

#include <array>
#include <optional>
#include <span>
#include <string>

namespace zv {

/// What is typed to attach a drawing as an xref. What is asked in the host stands open in the text.
struct XrefCommand {
    bool overlay = false;
    std::string path; ///< With forward slashes.
    bool askPoint = false;
    bool askScale = false; ///< Without `askPoint` the answers stand in `scale` by now.
    bool askRotation = false;
    AutomationPoint point;
    std::array<std::string, 3> scale;
    std::string rotation;
};
std::string xrefText(const XrefCommand& command);

/// A scale of the trade, and the factor that it stands for: so many units of the drawing are plotted as one.
struct NamedScale {
    const char* name;
    const char* factor;
};
/// The scales in the order of the list from which one is picked.
std::span<const NamedScale> namedScales();

/// The named scale, as an index, that a scale stored in a drawing is taken for. Factors are looked for in the
/// text one after the other, and one that is found later counts for more.
std::optional<int> namedScaleOf(const std::string& stored);

} // namespace zv
