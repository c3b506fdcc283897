#pragma once

#include <QObject>
#include <QRect>

class QWidget;

namespace zv {

constexpr int kTwipsPerPixel = 15;

/// A window's place and size with its frame. What the frame takes is known only once the window stands on
/// the screen, so a size that was set before is put right then, and saving and restoring does not drift.
class OuterGeometry : public QObject {
public:
    explicit OuterGeometry(QWidget* window);

    /// Outer edges and size, in logical pixels. A place off every screen is moved onto the first one, and a
    /// size that no screen has is cut.
    void set(const QRect& wanted);
    QRect get() const;
    /// To be called once the window has been shown: puts the size right where the frame is known by now.
    /// Where it comes later, that is done then.
    void settle();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void subtractFrame();

    QWidget* m_window;
    QSize m_wanted; ///< Outer size that still has to be reached; empty when there is none.
    QSize m_given;  ///< Inner size that was set for it.
};

} // namespace zv
