#pragma once

#include "controls/SortedCombo.h"

namespace zv {

/// A sorted combo box that cannot be typed into. While it is locked it takes no key and no turn of the wheel;
/// dropping its list down (by the mouse, F4 or Alt+Down) unlocks it, and choosing a row locks it again.
class LibraryCombo : public SortedCombo {
    Q_OBJECT
    Q_PROPERTY(bool locked READ isLocked)

public:
    explicit LibraryCombo(QWidget* parent = nullptr);

    bool isLocked() const { return m_locked; }
    void lock() { m_locked = true; }
    QStringList rows() const;
    /// Takes a row out. When it is the one shown, none is shown from then on.
    void removeRow(int row);
    /// Shows no row.
    void clearText();
    void showPopup() override;

Q_SIGNALS:
    /// The keys go to the box now, and not because its window came back to the front.
    void gotFocus();

protected:
    void focusInEvent(QFocusEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    bool m_locked = true;
};

} // namespace zv
