#pragma once

#include "host/HostSession.h"
#include "window/Window.h"

#include <QTimer>

class QLabel;

namespace zv {

class ClipPlayer;

/// The small window that tells that AutoCAD is being loaded, or waited for.
class LoadAcad final : public Window {
    Q_OBJECT

public:
    explicit LoadAcad(Program& program);
    void load() override;
    /// Starts the clip from its first frame.
    void playClip();
    /// Tells that it is not loaded, but slow. The user may be at work in it, so the keys stay with it.
    void showWaiting(bool minimized);

private:
    void standInTheMiddle();

    QLabel* Label1;
    ClipPlayer* Animation1;
};

/// The window LoadAcad as the splash of a host session.
class LoadAcadSplash final : public LoadSplash {
public:
    /// Standing by, it shows itself after so many milliseconds: sooner it would flicker at each action.
    explicit LoadAcadSplash(Program& program, int patienceMs = 5000);
    void show() override;
    void unload() override;
    void standBy(bool standsBy) override { m_standsBy = standsBy; }
    void userIsAsked(bool isAsked) override { m_userIsAsked = isAsked; }
    /// A wait for the host has become long, or is over.
    void tellWaiting(bool waiting);

private:
    void showWait();

    Program& m_program;
    QTimer m_untilShown;
    bool m_standsBy = false;
    bool m_userIsAsked = false;
    bool m_tellsWait = false; ///< Shown for a long wait.
};

} // namespace zv
