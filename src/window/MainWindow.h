#pragma once

#include "window/BrowserFields.h"
#include "window/Window.h"

class QCheckBox;
class QLineEdit;
class QRadioButton;

namespace zv {

class DwgViewX;

/// The main window as the other windows see it: what they read of it and set in it. It is loaded more than
/// once in a run, so nobody keeps it; each use asks for it anew.
class MainWindow : public Window {
    Q_OBJECT

public:
    MainWindow(Program& program, const QString& title);

    /// The size, in twips, that the proportions of the window are reckoned from. Its own size stays.
    virtual void setDesignSize(QSize twips) = 0;
    /// Tells whether AutoCAD is being waited for.
    virtual void tellWaiting(bool waiting) = 0;

    BrowserFields& fields; ///< Kept by the program.

    /// What is done with a chosen drawing. A mode set from elsewhere runs its handler as a user's click does.
    QRadioButton *Option1 = nullptr, *Option2 = nullptr, *Option3 = nullptr, *Option4 = nullptr;
    QCheckBox *Check1 = nullptr, *Check4 = nullptr; ///< AutoScale, Explode.
    QLineEdit* x = nullptr;                         ///< The scale.
    DwgViewX* DwgViewX1 = nullptr;
};

/// The size of its design, in twips.
inline constexpr QSize kMainWindowDesign(10695, 9090);

/// The main window if it is loaded, else null.
MainWindow* mainWindow(const Program& program);
/// Shows the main window, loading it if need be, above all others if the user wants the program there.
void showMainWindow(Program& program);

} // namespace zv
