#pragma once

#include "controls/Program.h"

#include <QWidget>

namespace zv {

/// A window of the program, loaded and unloaded by name. Its object name is that name.
class Window : public QWidget {
    Q_OBJECT

public:
    Window(Program& program, const QString& name, const QString& title);

    Program& program() const { return m_program; }
    /// Runs once the controls are there and the program knows the window, before it is shown.
    virtual void load() {}
    /// Runs when the window is unloaded, however that comes about; it is still loaded then.
    virtual void unloading() {}

    /// Puts the window above all others, or takes it down. It stays where it is, shown or hidden.
    void setTopmost(bool topmost);
    bool isTopmost() const { return m_topmost; }

protected:
    /// The close box unloads.
    void closeEvent(QCloseEvent* event) override;

private:
    Program& m_program;
    bool m_topmost = false;
};

} // namespace zv
