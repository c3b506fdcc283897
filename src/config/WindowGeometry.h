#pragma once

namespace zv {

/// Where the main window stands, in twips of the screen.
struct WindowGeometry {
    double left = 1000;
    double top = 1000;
    double width = 6500;
    double height = 6500;
};

/// The remembered geometry from the per-user settings store; a value that is missing or no number is the
/// default.
WindowGeometry readWindowGeometry();
void saveWindowGeometry(const WindowGeometry& geometry);

} // namespace zv
