#pragma once

#include "controls/ImageList.h"

#include <QObject>

#include <vector>

namespace zv {

class Zelvora;

/// Lights the one picture of the main window that the mouse is over, and puts the others to rest. What a
/// picture looks like at rest depends on the mode, the tab and the view, so a change of these calls for a
/// rest too.
class RibbonHover : public QObject {
public:
    /// Watches the window's buttons, pictures, pages and frames from now on.
    explicit RibbonHover(Zelvora& window);

    /// Every picture takes the one that it has at rest, captions lose their bold, borders turn grey.
    void rest();
    /// Lights one button or picture and puts all others to rest; any other widget only brings rest.
    void light(QWidget* control);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    struct Picture {
        const ImageList& list;
        int index;
    };
    /// A button or picture with its captions' habit.
    struct Control {
        QWidget* widget;
        bool turnsBold;
    };
    Picture pictureOf(const QWidget* control, bool lit) const;
    int actionPicture(bool lit) const;
    void show(const Control& control, bool lit);

    Zelvora& m_window;
    std::vector<Control> m_controls;
};

} // namespace zv
