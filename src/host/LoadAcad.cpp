#include "host/LoadAcad.h"

#include "controls/Clip.h"
#include "platform/Files.h"

#include <QApplication>
#include <QCursor>
#include <QLabel>
#include <QScreen>
#include <QVBoxLayout>

#include <algorithm>

namespace zv {

namespace {

const QString kName = QStringLiteral("LoadAcad");
/// Whether the user has a window by which he can give a wait up.
bool hasWindowInReach()
{
    const QWidgetList all = QApplication::topLevelWidgets();
    return std::any_of(all.begin(), all.end(), [](const QWidget* window) {
        const bool isWindow = window->windowType() == Qt::Window || window->windowType() == Qt::Dialog;
        return isWindow && window->isVisible() && window->isEnabled();
    });
}

constexpr int kLeastWidth = 240; ///< The title has room above it.

} // namespace

LoadAcad::LoadAcad(Program& program) : Window(program, kName, QStringLiteral("AutoCAD Load"))
{
    Animation1 = new ClipPlayer(this);
    Animation1->setObjectName(QStringLiteral("Animation1"));
    Label1 = new QLabel(QStringLiteral("Loading AutoCAD..."), this);
    Label1->setObjectName(QStringLiteral("Label1"));
    Label1->setAlignment(Qt::AlignCenter);

    auto* const column = new QVBoxLayout(this);
    column->setContentsMargins(16, 16, 16, 16);
    column->setSpacing(8);
    column->addWidget(Animation1, 0, Qt::AlignCenter);
    column->addWidget(Label1);
    column->setSizeConstraint(QLayout::SetFixedSize);
    Label1->setMinimumWidth(kLeastWidth);
}

void LoadAcad::load()
{
    setTopmost(true);
    playClip();
    standInTheMiddle();
}

/// On the screen where the user has just been at work.
void LoadAcad::standInTheMiddle()
{
    adjustSize();
    const QScreen* used = QGuiApplication::screenAt(QCursor::pos());
    if (!used)
        used = QGuiApplication::primaryScreen();
    move(used->availableGeometry().center() - rect().center());
}

void LoadAcad::playClip()
{
    Animation1->open(joinPath(program().folders().installation, "Zelvora_Logo.avi"));
    Animation1->setAutoPlay(true);
    Animation1->play();
}

void LoadAcad::showWaiting(bool minimized)
{
    setWindowTitle(tr("Waiting for AutoCAD"));
    Label1->setText(tr("Waiting for AutoCAD..."));
    setAttribute(Qt::WA_ShowWithoutActivating);
    setWindowState(minimized ? Qt::WindowMinimized : Qt::WindowNoState);
    setVisible(true);
}

LoadAcadSplash::LoadAcadSplash(Program& program, int patienceMs) : m_program(program)
{
    m_untilShown.setInterval(patienceMs);
    QObject::connect(&m_untilShown, &QTimer::timeout, &m_untilShown, [this] { showWait(); });
}

void LoadAcadSplash::show()
{
    m_program.show(kName);
    // Whoever calls starts the clip once more.
    if (auto* const window = static_cast<LoadAcad*>(m_program.loaded(kName)))
        window->playClip();
}

void LoadAcadSplash::unload()
{
    m_program.unload(kName);
}

void LoadAcadSplash::tellWaiting(bool waiting)
{
    if (waiting && m_standsBy) {
        m_untilShown.start();
        return;
    }
    m_untilShown.stop();
    if (m_tellsWait)
        unload();
    m_tellsWait = false;
}

void LoadAcadSplash::showWait()
{
    if (hasWindowInReach())
        return;
    if (auto* const window = static_cast<LoadAcad*>(m_program.load(kName)))
        window->showWaiting(m_userIsAsked);
    m_tellsWait = true;
}

} // namespace zv
