#pragma once

#include "config/Profiles.h"
#include "window/Program.h"

#include <QPointer>
#include <QWidget>

#include <memory>

namespace zv {

/// A window of the program, loaded and unloaded by name. Its object name is that name.
class Window : public QWidget {
    Q_OBJECT

public:
    Window(Program& program, const QString& name, const QString& title);
    ~Window() override;

    Program& program() const { return m_program; }
    PublicValues& values() const { return m_program.values(); }
    /// The profile files as they lie now.
    Profiles profiles() const;
    /// Message boxes over this window: it is taken off the top for as long as one is up, and put back on top
    /// afterwards if the user wants the program there.
    Messages& messages();
    /// Runs once the controls are there and the program knows the window, before it is shown.
    virtual void load() {}
    /// Runs when the window is unloaded, however that comes about; it is still loaded then.
    virtual void unloading() {}

    /// Comes onto the screen, in front of the other windows.
    virtual void appear();

    /// Puts the window above all others, or takes it down. It stays where it is, shown or hidden.
    void setTopmost(bool topmost);
    bool isTopmost() const { return m_topmost; }
    /// For a dialog that stands on top whatever the user wants: puts it there now, and again after each of
    /// its messages.
    void stayOnTop();

protected:
    bool event(QEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    /// The close box unloads.
    void closeEvent(QCloseEvent* event) override;

private:
    class OffTheTop;

    Program& m_program;
    std::unique_ptr<OffTheTop> m_messages;
    bool m_topmost = false;
    bool m_staysOnTop = false;
    QPointer<QWidget> m_focusAtHiding;
    bool m_activatedHidden = false;
};

} // namespace zv
