#pragma once

#include "host/DialogAction.h"

#include <string>

namespace zv {

/// What the user has set in cmode.
struct OpenOrder {
    std::string drawing;
    bool copy = false;  ///< To `target`, to be opened there.
    std::string target; ///< Full path of the copy.
};

/// Does what Command3 of cmode does: copies the drawing where that is wanted, and opens it in the host as a
/// document of its own. A copy without a target is the dialog's to refuse.
void openDrawing(const OpenOrder& order, DialogWindow& window, HostServices& services,
                 const DialogSettings& settings);

} // namespace zv
