#pragma once

#include "host/DialogAction.h"

#include <array>
#include <string>

namespace zv {

/// What the user has set in Xattach. Texts are as they were typed.
struct XrefOrder {
    std::string drawing;
    bool overlay = false;
    bool askPoint = false, askScale = false, askRotation = false;
    bool autoScale = false;
    std::array<std::string, 3> point, scale;
    std::string rotation;
    std::string hostScale, xrefScale; ///< Of AutoScale.
    bool copy = false;                ///< To `folder`, to be attached from there.
    std::string folder;
};

/// The fields of Xattach that have to hold a number.
enum class XrefField { PointX, PointY, PointZ, ScaleX, ScaleY, ScaleZ, HostScale, XrefScale };

class XrefWindow : public DialogWindow {
public:
    /// Shows the user the field that holds no number.
    virtual void markField(XrefField field) = 0;
};

/// Does what Command3 of Xattach does: copies the drawing where that is wanted, and attaches it in the host.
void attachXref(const XrefOrder& order, XrefWindow& window, HostServices& services,
                const DialogSettings& settings);

/// The scale of the drawing that is open in the running host, which comes to the screen. A scale of 0 counts
/// as 1. Errors: no host runs, or it does not answer.
Result<double> runningHostScale(Automation& automation);

/// Where a copy goes: the folder and the drawing's name in capitals. A folder of exactly three characters is
/// a drive's root, behind which nothing is put.
std::string xrefCopyTarget(const std::string& folder, const std::string& drawing);
bool isDriveRoot(const std::string& folder);

} // namespace zv
