#pragma once

class QWidget;

namespace zv {

/// The grounds of the fields and lists of the windows that make libraries.
enum class Ground {
    Window,     ///< The system's, of a field in play.
    ButtonFace, ///< The system's, of a field out of play.
    PaleYellow, ///< Of the label that belongs to the selected row.
};

void setGround(QWidget* field, Ground ground);
/// A control in play is enabled and has the system's window colour; one out of play is disabled and has the
/// colour of buttons.
void setInPlay(QWidget* control, bool inPlay);
/// Details of a drawing that could not be read are written in red.
void setRedText(QWidget* field, bool red);

} // namespace zv
