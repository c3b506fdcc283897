#pragma once

#include "window/Window.h"

class QGroupBox;
class QLabel;
class QPushButton;

namespace zv {

/// The about box. However it is closed, the main window is loaded anew and comes back.
class frmSplash final : public Window {
    Q_OBJECT

public:
    explicit frmSplash(Program& program);
    void load() override;
    void unloading() override;

    QGroupBox* Frame1;
    QLabel *lblProductName, *lblVersion;
    QPushButton* Command11;

protected:
    void mouseReleaseEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
};

} // namespace zv
