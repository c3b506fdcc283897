#include "BenchWindow.h"

#include "Canvas.h"
#include "PromptLabel.h"
#include "PropertiesDialog.h"

#include "Commands.h"
#include "controls/VectorPicture.h"
#include "drawing/paint/Picture.h"
#include "platform/System.h"
#include "platform/Text.h"
#include "window/TextBytes.h"

#include <QAction>
#include <QApplication>
#include <QCloseEvent>
#include <QFileDialog>
#include <QFileInfo>
#include <QFontDatabase>
#include <QHBoxLayout>
#include <QIcon>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScreen>
#include <QStatusBar>
#include <QTabBar>
#include <QVBoxLayout>

#include <algorithm>

/// Pictures of a library must be asked for, and that works outside namespaces only.
static void initPictures()
{
    Q_INIT_RESOURCE(bench);
}

namespace zv::bench {

namespace {

constexpr const char *kApplication = "zelvora-bench", *kSection = "Window";
constexpr int kHistoryLines = 5000;
constexpr int kNarrowestLine = 120; ///< Room for an answer beside a long prompt.

/// Other programs' texts may be of any length, and laying out a line of millions of letters takes minutes.
QString shortened(const QString& text)
{
    constexpr qsizetype kMost = 2000;
    return text.size() <= kMost ? text : text.left(kMost) + QStringLiteral("...");
}

/// A tool tip of a text in which "<b>" is no markup.
QString plainTip(const QString& text)
{
    return Qt::mightBeRichText(text)
               ? QStringLiteral("<p style='white-space:pre'>%1</p>").arg(text.toHtmlEscaped())
               : text;
}

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
    Drawings->setTabsClosable(true);
    Drawings->setFocusPolicy(Qt::NoFocus);
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
    Coordinates->setContentsMargins(6, 0, 0, 0); // Below the prompt.
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
    initPictures();
    setWindowIcon(vectorIcon(QStringLiteral(":/bench/bench.svg")));
    makeMenus();
    restorePlace();

    m_workshop.commandRuns = [this] { return !m_commandLine.isIdle(); };
    m_commandLine.changed = [this] { showPrompt(); };
    connect(m_canvas, &Canvas::picked, this, [this](double x, double y) {
        m_commandLine.pick({x, y, 0});
        m_line->setFocus();
    });
    connect(m_canvas, &Canvas::pressed, this, [this] { m_line->setFocus(); });
    connect(m_canvas, &Canvas::entered, this, [this] {
        m_line->setFocus();
        enter();
    });
    connect(Drawings, &QTabBar::tabCloseRequested, this, [this](int index) {
        if (index < 0 || index >= int(m_workshop.drawings().size()))
            return;
        const auto drawing = m_workshop.drawings()[std::size_t(index)];
        if (!m_commandLine.isIdle())
            m_commandLine.cancel();
        closeDrawing(m_workshop, drawing);
    });
    connect(m_canvas, &Canvas::pointed, this, [this](double x, double y) {
        Coordinates->setText(QStringLiteral("%1, %2").arg(x, 0, 'f', 4).arg(y, 0, 'f', 4));
    });
    connect(Drawings, &QTabBar::currentChanged, this, [this](int index) {
        if (m_fillingTabs || index < 0 || index >= int(m_workshop.drawings().size()))
            return;
        // What is picked in one drawing must not be drawn in another.
        if (!m_commandLine.isIdle())
            m_commandLine.cancel();
        m_workshop.activate(m_workshop.drawings()[std::size_t(index)]);
    });
    m_line->setFocus();
    showPrompt();
}

void BenchWindow::write(const std::string& line)
{
    History->appendPlainText(shortened(toText(line)));
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
        const SaveOutlook& outlook = drawing.outlook();
        const bool isSealed = outlook.way == SaveWay::NewFile;
        const QString title = toText(drawing.title() + (drawing.isModified() ? "*" : "")) +
                              (isSealed                   ? tr(" (cannot be written)")
                               : drawing.isFileReadOnly() ? tr(" (read-only)")
                                                          : QString());
        if (index == Drawings->count())
            Drawings->addTab({});
        Drawings->setTabText(index, QString(title).replace(QLatin1Char('&'), QLatin1String("&&")));
        QString tip = toText(drawing.path());
        if (isSealed)
            tip += tr("\nThis file cannot be written: %1.").arg(toText(outlook.reason));
        Drawings->setTabToolTip(index, plainTip(tip));
        if (drawings[std::size_t(index)] == m_workshop.active())
            Drawings->setCurrentIndex(index);
    }
    m_fillingTabs = false;
}

/// From the folder that was used last, with the drawing's name.
std::string BenchWindow::chooseFile(bool toSave, const std::string& suggested)
{
    const DialogMark mark(m_dialogs);
    const QString filter = tr("Drawings (*.dwg *.DWG)");
    const QFileInfo wanted(toText(suggested));
    QFileDialog dialog(this, toSave ? tr("Save Drawing As") : tr("Select File"),
                       m_lastFolder.isEmpty() ? wanted.absolutePath() : m_lastFolder, filter);
    dialog.setAcceptMode(toSave ? QFileDialog::AcceptSave : QFileDialog::AcceptOpen);
    dialog.setFileMode(toSave ? QFileDialog::AnyFile : QFileDialog::ExistingFile);
    // The dialog asks about the file that is meant, also where its ending is not typed.
    dialog.setDefaultSuffix(QStringLiteral("dwg"));
    if (!suggested.empty())
        dialog.selectFile(wanted.fileName());
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty())
        return {};
    const QString path = dialog.selectedFiles().front();
    m_lastFolder = QFileInfo(path).absolutePath();
    setSettingsValue(kApplication, kSection, "folder", toBytes(m_lastFolder));
    return toBytes(path);
}

BenchWindow::Keep BenchWindow::askToKeep(const std::vector<std::string>& titles)
{
    const DialogMark mark(m_dialogs);
    QStringList names;
    for (const std::string& title : titles)
        names += toText(title);
    const bool isOne = names.size() == 1;
    QMessageBox box(QMessageBox::Question, tr("Zelvora Bench"),
                    isOne ? tr("Save the changes to %1?").arg(names.front())
                          : tr("These drawings are not saved:\n\n%1").arg(names.join(QLatin1Char('\n'))),
                    QMessageBox::NoButton, this);
    box.setObjectName(QStringLiteral("KeepDrawings"));
    box.setTextFormat(Qt::PlainText);
    const auto* const save = box.addButton(isOne ? tr("&Save") : tr("&Save all"), QMessageBox::AcceptRole);
    const auto* const discard = box.addButton(tr("&Don't save"), QMessageBox::DestructiveRole);
    auto* const cancel = box.addButton(QMessageBox::Cancel);
    box.setDefaultButton(qobject_cast<QPushButton*>(box.buttons().front()));
    for (QAbstractButton* const button : box.buttons()) {
        if (button == save)
            box.setDefaultButton(qobject_cast<QPushButton*>(button));
    }
    box.setEscapeButton(cancel);
    box.exec();
    return box.clickedButton() == save      ? Keep::Save
           : box.clickedButton() == discard ? Keep::Discard
                                            : Keep::Cancel;
}

bool BenchWindow::agrees(const std::string& question, const std::string& yes)
{
    const DialogMark mark(m_dialogs);
    QMessageBox box(QMessageBox::Question, tr("Zelvora Bench"), toText(question), QMessageBox::Cancel, this);
    box.setObjectName(QStringLiteral("Agree"));
    box.setTextFormat(Qt::PlainText);
    const auto* const agreed = box.addButton(toText(yes), QMessageBox::AcceptRole);
    box.setDefaultButton(QMessageBox::Cancel);
    box.exec();
    return box.clickedButton() == agreed;
}

std::optional<dwg::Pixels> BenchWindow::paintPreview(const dwg::Document& document)
{
    constexpr int kWidth = 256, kHeight = 192;
    return dwg::renderPreview(document, kWidth, kHeight);
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
    std::vector<std::shared_ptr<BenchDrawing>> unsaved;
    std::vector<std::string> titles;
    for (const auto& drawing : m_workshop.drawings()) {
        if (!drawing->isModified())
            continue;
        unsaved.push_back(drawing);
        titles.push_back(drawing->title());
    }
    if (unsaved.empty())
        return true;
    const Keep keep = askToKeep(titles);
    return keep == Keep::Discard ||
           (keep == Keep::Save && std::all_of(unsaved.begin(), unsaved.end(), [this](const auto& drawing) {
                m_workshop.activate(drawing);
                return keepDrawing(m_workshop, drawing);
            }));
}

void BenchWindow::closeEvent(QCloseEvent* event)
{
    if (!agreesToClose()) {
        event->ignore();
        return;
    }
    rememberPlace();
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
    if (event->type() == QEvent::ShortcutOverride && m_line->text().isEmpty()) {
        // With nothing typed to take back, the keys mean the drawing.
        const QKeySequence keys(static_cast<QKeyEvent*>(event)->keyCombination());
        for (const char* name : {"U", "REDO"}) {
            if (findChild<QAction*>(QLatin1String(name))->shortcuts().contains(keys)) {
                event->ignore();
                return true;
            }
        }
    }
    if (event->type() != QEvent::KeyPress)
        return QMainWindow::eventFilter(watched, event);
    switch (static_cast<QKeyEvent*>(event)->key()) {
    case Qt::Key_Escape:
        m_line->clear();
        m_commandLine.cancel();
        return true;
    case Qt::Key_Up:
        recall(-1);
        return true;
    case Qt::Key_Down:
        recall(1);
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
    const QString typed = m_line->text();
    if (!typed.isEmpty() && (m_typedLines.isEmpty() || m_typedLines.back() != typed))
        m_typedLines += typed;
    m_recalled = m_typedLines.size();
    m_line->clear();
    m_commandLine.type(toBytes(typed) + "\r");
}

/// Up and Down bring back what was typed before; behind the last line stands an empty one.
void BenchWindow::recall(int step)
{
    m_recalled = qBound(qsizetype{0}, m_recalled + step, m_typedLines.size());
    m_line->setText(m_recalled < m_typedLines.size() ? m_typedLines[m_recalled] : QString());
}

void BenchWindow::makeMenus()
{
    struct Entry {
        const char* name;
        QString caption;
        QKeySequence keys;
    };
    const auto add = [this](const QString& title, const QList<Entry>& entries) {
        QMenu* const menu = menuBar()->addMenu(title);
        for (const Entry& entry : entries) {
            QAction* const action = menu->addAction(entry.caption, entry.keys);
            action->setObjectName(QLatin1String(entry.name));
            const std::string command = entry.name;
            // A command from the menu takes over, as Esc and its name typed would; what is an option of the
            // command that runs is that.
            connect(action, &QAction::triggered, this, [this, command] {
                m_line->clear();
                if (command != "U" || m_commandLine.prompt().text.find("[Undo]") == std::string::npos)
                    m_commandLine.cancel();
                m_commandLine.type(command + "\r");
                m_line->setFocus();
            });
        }
    };
    add(tr("&File"), {{"NEW", tr("&New"), QKeySequence::New},
                      {"OPEN", tr("&Open..."), QKeySequence::Open},
                      {"CLOSE", tr("&Close"), {}},
                      {"QSAVE", tr("&Save"), QKeySequence::Save},
                      {"SAVEAS", tr("Save &As..."), {}},
                      {"DWGPROPS", tr("Drawing &Properties..."), {}},
                      {"QUIT", tr("E&xit"), {}}});
    add(tr("&Edit"), {{"U", tr("&Undo"), QKeySequence::Undo},
                      {"REDO", tr("&Redo"), QKeySequence::Redo},
                      {"ERASE", tr("&Erase"), {}}});
    // Drafters know this key also where the system has another one.
    QList<QKeySequence> redo = QKeySequence::keyBindings(QKeySequence::Redo);
    if (const QKeySequence known(Qt::CTRL | Qt::Key_Y); !redo.contains(known))
        redo += known;
    findChild<QAction*>(QStringLiteral("REDO"))->setShortcuts(redo);
    add(tr("&View"), {{"ZOOM\rE", tr("Zoom to &Whole Drawing"), {}}, {"REGEN", tr("&Regenerate"), {}}});
    add(tr("&Help"), {{"HELP", tr("&Commands"), QKeySequence::HelpContents}});
}

/// Where it stood last; the first time at the right edge of the screen, so that the program that starts it
/// stays in sight.
void BenchWindow::restorePlace()
{
    m_lastFolder = toText(settingsValue(kApplication, kSection, "folder", {}));
    const QByteArray place =
        QByteArray::fromBase64(QByteArray::fromStdString(settingsValue(kApplication, kSection, "place", {})));
    if (!place.isEmpty() && restoreGeometry(place))
        return;
    const QRect room = screen()->availableGeometry();
    resize(qMin(960, room.width() * 3 / 5), qMin(720, room.height() * 9 / 10));
    move(room.right() - width(), room.top());
}

void BenchWindow::rememberPlace()
{
    setSettingsValue(kApplication, kSection, "place", saveGeometry().toBase64().toStdString());
}

void BenchWindow::showPrompt()
{
    const Prompt prompt = m_commandLine.prompt();
    m_prompt->setText(shortened(toText(prompt.text)));
    m_prompt->setToolTip(plainTip(m_prompt->text()));
    m_canvas->show(m_workshop.active());
    m_canvas->setPrompt(prompt);
}

} // namespace zv::bench
