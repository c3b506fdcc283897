#include "BenchWindow.h"

#include "Canvas.h"
#include "PromptLabel.h"
#include "PropertiesDialog.h"

#include "platform/Text.h"
#include "window/TextBytes.h"

#include <QApplication>
#include <QCloseEvent>
#include <QFileDialog>
#include <QFontDatabase>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QStatusBar>
#include <QTabBar>
#include <QVBoxLayout>

namespace zv::bench {

namespace {

constexpr int kHistoryLines = 5000;
constexpr int kNarrowestLine = 120; ///< Room for an answer beside a long prompt.

/// Counts a dialog for as long as it stands.
class DialogMark {
public:
    explicit DialogMark(int& count) : m_count(count) { ++m_count; }
    ~DialogMark() { --m_count; }
    DialogMark(const DialogMark&) = delete;
    DialogMark& operator=(const DialogMark&) = delete;

private:
    int& m_count;
};

} // namespace

BenchWindow::BenchWindow() : m_workshop(*this), m_commandLine(m_workshop)
{
    setObjectName(QStringLiteral("Bench"));
    Drawings = new QTabBar(this);
    Drawings->setObjectName(QStringLiteral("Drawings"));
    Drawings->setDocumentMode(true);
    Drawings->setExpanding(false);
    m_canvas = new Canvas(this);
    m_canvas->setObjectName(QStringLiteral("Canvas"));
    History = new QPlainTextEdit(this);
    History->setObjectName(QStringLiteral("History"));
    History->setReadOnly(true);
    History->setMaximumBlockCount(kHistoryLines);
    History->setFixedHeight(96);
    History->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    History->setAccessibleName(tr("Command history"));
    m_prompt = new PromptLabel(this);
    m_prompt->setObjectName(QStringLiteral("Prompt"));
    m_line = new QLineEdit(this);
    m_line->setObjectName(QStringLiteral("CommandLine"));
    m_line->setAccessibleName(tr("Command line"));
    m_line->setMinimumWidth(kNarrowestLine);
    m_line->installEventFilter(this);
    m_prompt->setBuddy(m_line);
    Coordinates = new QLabel(this);
    Coordinates->setObjectName(QStringLiteral("Coordinates"));
    statusBar()->addWidget(Coordinates);

    auto* const lineRow = new QHBoxLayout;
    lineRow->setContentsMargins(8, 0, 8, 0);
    lineRow->addWidget(m_prompt);
    lineRow->addWidget(m_line, 1);
    auto* const middle = new QWidget(this);
    auto* const column = new QVBoxLayout(middle);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(4);
    column->addWidget(Drawings);
    column->addWidget(m_canvas, 1);
    column->addWidget(History);
    column->addLayout(lineRow);
    setCentralWidget(middle);
    resize(960, 720);

    m_workshop.commandRuns = [this] { return !m_commandLine.isIdle(); };
    m_commandLine.changed = [this] { showPrompt(); };
    connect(m_canvas, &Canvas::picked, this, [this](double x, double y) {
        m_commandLine.pick({x, y, 0});
        m_line->setFocus();
    });
    connect(m_canvas, &Canvas::pointed, this, [this](double x, double y) {
        Coordinates->setText(QStringLiteral("%1, %2").arg(x, 0, 'f', 4).arg(y, 0, 'f', 4));
    });
    connect(Drawings, &QTabBar::currentChanged, this, [this](int index) {
        if (!m_fillingTabs && index >= 0 && index < int(m_workshop.drawings().size()))
            m_workshop.activate(m_workshop.drawings()[std::size_t(index)]);
    });
    m_line->setFocus();
    showPrompt();
}

void BenchWindow::write(const std::string& line)
{
    History->appendPlainText(toText(line));
}

void BenchWindow::zoom(const ZoomRequest& request)
{
    m_canvas->zoom(request);
}

void BenchWindow::refresh()
{
    fillTabs();
    m_canvas->show(m_workshop.active());
    const std::string title = m_workshop.active() ? " - [" + m_workshop.active()->title() + "]" : "";
    setWindowTitle(QStringLiteral("Zelvora Bench") + toText(title));
}

void BenchWindow::fillTabs()
{
    m_fillingTabs = true;
    const auto& drawings = m_workshop.drawings();
    while (Drawings->count() > int(drawings.size()))
        Drawings->removeTab(Drawings->count() - 1);
    for (int index = 0; index < int(drawings.size()); ++index) {
        const BenchDrawing& drawing = *drawings[std::size_t(index)];
        const QString title = toText(drawing.title() + (drawing.isModified() ? "*" : ""));
        if (index == Drawings->count())
            Drawings->addTab(title);
        Drawings->setTabText(index, title);
        Drawings->setTabToolTip(index, toText(drawing.path()));
        if (drawings[std::size_t(index)] == m_workshop.active())
            Drawings->setCurrentIndex(index);
    }
    m_fillingTabs = false;
}

std::string BenchWindow::chooseFile(bool toSave)
{
    const DialogMark mark(m_dialogs);
    const QString filter = tr("Drawings (*.dwg *.DWG)");
    const QString path = toSave ? QFileDialog::getSaveFileName(this, tr("Save Drawing As"), {}, filter)
                                : QFileDialog::getOpenFileName(this, tr("Select File"), {}, filter);
    return toBytes(path);
}

bool BenchWindow::editProperties(dwg::Properties& properties)
{
    const DialogMark mark(m_dialogs);
    PropertiesDialog dialog(properties, this);
    if (dialog.exec() != QDialog::Accepted)
        return false;
    properties = dialog.properties();
    return true;
}

double BenchWindow::pickRadius() const
{
    return m_canvas->pickRadius();
}

void BenchWindow::quit()
{
    close();
}

std::string BenchWindow::caption() const
{
    return toBytes(windowTitle());
}

void BenchWindow::setShown(bool shown)
{
    setVisible(shown);
}

std::int64_t BenchWindow::windowHandle() const
{
    return static_cast<std::int64_t>(winId());
}

int BenchWindow::windowState() const
{
    return isMinimized() ? 2 : isMaximized() ? 3 : 1;
}

void BenchWindow::setWindowState(int state)
{
    QMainWindow::setWindowState(state == 2   ? Qt::WindowMinimized
                                : state == 3 ? Qt::WindowMaximized
                                             : Qt::WindowNoState);
}

std::string BenchWindow::programPath() const
{
    return toBytes(QCoreApplication::applicationFilePath());
}

bool BenchWindow::agreesToClose()
{
    bool anyModified = false;
    for (const auto& drawing : m_workshop.drawings())
        anyModified = anyModified || drawing->isModified();
    if (!anyModified)
        return true;
    const DialogMark mark(m_dialogs);
    return QMessageBox::question(this, tr("Zelvora Bench"),
                                 tr("Some drawings are not saved.\nClose all the same?")) == QMessageBox::Yes;
}

void BenchWindow::closeEvent(QCloseEvent* event)
{
    if (!agreesToClose()) {
        event->ignore();
        return;
    }
    event->accept();
    QCoreApplication::quit();
}

/// Typing belongs to the command line, wherever the focus is. What the line itself does not take comes back
/// here and ends.
void BenchWindow::keyPressEvent(QKeyEvent* event)
{
    if (m_forwarding)
        return;
    m_forwarding = true;
    m_line->setFocus();
    QCoreApplication::sendEvent(m_line, event);
    m_forwarding = false;
}

bool BenchWindow::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() != QEvent::KeyPress)
        return QMainWindow::eventFilter(watched, event);
    switch (static_cast<QKeyEvent*>(event)->key()) {
    case Qt::Key_Escape:
        m_line->clear();
        m_commandLine.cancel();
        return true;
    case Qt::Key_Return:
    case Qt::Key_Enter:
        enter();
        return true;
    default:
        return QMainWindow::eventFilter(watched, event);
    }
}

void BenchWindow::enter()
{
    const std::string typed = toBytes(m_line->text());
    m_line->clear();
    m_commandLine.type(typed + "\r");
}

void BenchWindow::showPrompt()
{
    const Prompt prompt = m_commandLine.prompt();
    m_prompt->setText(toText(prompt.text));
    m_prompt->setToolTip(m_prompt->text());
    m_canvas->show(m_workshop.active());
    m_canvas->setPrompt(prompt);
}

} // namespace zv::bench
