#pragma once

#include <QComboBox>

namespace zv {

/// A combo box that a pick locks: its text takes no typing, no arrow and no wheel until its list is dropped
/// down again. The rows stand in the order of adding.
class LockedCombo : public QComboBox {
    Q_OBJECT
    Q_PROPERTY(bool locked READ isLocked)

public:
    explicit LockedCombo(QWidget* parent = nullptr);

    bool isLocked() const { return m_locked; }
    void setLocked(bool locked);
    /// Shows a text, whether it is a row or not; no handler runs.
    void setShownText(const QString& text);
    void showPopup() override;

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;

private:
    bool m_locked = false;
};

} // namespace zv
