#include "print/PrintLib.h"

#include "config/Keys.h"
#include "config/StartUp.h"
#include "controls/Clip.h"
#include "controls/DwgViewX.h"
#include "controls/NamedControls.h"
#include "controls/PathList.h"
#include "help/ProgramHelp.h"
#include "library/Catalogue.h"
#include "platform/Files.h"
#include "platform/System.h"
#include "print/TimeLeft.h"
#include "window/MainWindow.h"
#include "window/OuterGeometry.h"
#include "window/TextBytes.h"

#include <QBoxLayout>
#include <QCloseEvent>
#include <QCoreApplication>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPointer>
#include <QProgressBar>
#include <QPushButton>
#include <QTimer>

namespace zv {

namespace {

/// How long the end of a stopped run can be read before the window goes.
constexpr int kReadableMs = 1000;
constexpr int kStatusLines = 2;
constexpr int kPathLines = 3; ///< A caption and a long path.

QPushButton* button(const char* name, const QString& caption, const QString& tip, QWidget* parent)
{
    auto* made = named<QPushButton>(name, parent);
    made->setText(caption);
    made->setToolTip(tip);
    return made;
}

/// A text of a few lines that only tells.
QPlainTextEdit* status(const char* name, const QString& accessibleName, int lines, QWidget* parent)
{
    auto* text = named<QPlainTextEdit>(name, parent);
    text->setReadOnly(true);
    text->setTabChangesFocus(true);
    text->setAccessibleName(accessibleName);
    const int frame = 2 * (text->frameWidth() + int(text->document()->documentMargin()));
    text->setFixedHeight(lines * text->fontMetrics().lineSpacing() + frame);
    text->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    text->setWordWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    return text;
}

} // namespace

PrintLib::PrintLib(Program& program)
    : Window(program, QStringLiteral("PrintLib"), QStringLiteral("Output Libraries")),
      m_closing(new QTimer(this))
{
    makeChoice();
    makeViewer();
    makeStatus();
    layOut();
    connectHandlers();
    Timer1 = named<QTimer>("Timer1", nullptr);
    Timer1->setParent(this);
    List1->setFocus();
}

void PrintLib::makeChoice()
{
    Frame1 = namedFrame("Frame1", QStringLiteral("Select Libraries to Print"), this);
    List1 = named<PathList>("List1", Frame1);
    List1->setAccessibleName(tr("Libraries to print"));
    List1->setSelectionMode(QAbstractItemView::MultiSelection);
    Command7 = button("Command7", QStringLiteral("&Print Lib"), QStringLiteral("Print Library"), this);
    Command5 = button("Command5", QStringLiteral("&Close"), QStringLiteral("Close Program"), this);
    Command6 = button("Command6", QStringLiteral("&Help"), QStringLiteral("Zelvora Help Menu"), this);
    // It takes the focus at the end of a run and does nothing.
    Command1 = named<QPushButton>("Command1", this);
    Command1->setFixedSize(0, 0);
    Command1->setAccessibleName(tr("End of the print run"));
}

void PrintLib::makeViewer()
{
    Frame5 = namedFrame("Frame5", QStringLiteral("Current Drawing"), this);
    DwgViewX1 = named<DwgViewX>("DwgViewX1", Frame5);
    DwgViewX1->setMinimumSize(120, 90);
    DwgViewX1->hide();
}

void PrintLib::makeStatus()
{
    Frame3 = namedFrame("Frame3", QStringLiteral("Status"), this);
    Text1 = status("Text1", tr("Current library"), kStatusLines, Frame3);
    Text3 = status("Text3", tr("Current drawing"), kPathLines, Frame3);
    Label1 = named<QLabel>("Label1", Frame3);
    ProgressBar1 = named<QProgressBar>("ProgressBar1", Frame3);
    ProgressBar1->setAccessibleName(tr("Drawings printed"));
    ProgressBar1->setTextVisible(false);
    LabelTimeLeft = named<QLabel>("LabelTimeLeft", Frame3);
    Animation1 = named<ClipPlayer>("Animation1", Frame3);
    Animation1->setAutoPlay(true);
    Animation1->setFixedSize(Animation1->sizeHint());
    Animation1->hide();
}

void PrintLib::layOut()
{
    (new QVBoxLayout(Frame1))->addWidget(List1);
    (new QVBoxLayout(Frame5))->addWidget(DwgViewX1);
    auto* counts = new QVBoxLayout;
    Label1->setMinimumHeight(kStatusLines * Label1->fontMetrics().lineSpacing());
    counts->addWidget(Label1);
    counts->addWidget(ProgressBar1);
    counts->addWidget(LabelTimeLeft);
    LabelTimeLeft->setMinimumHeight(LabelTimeLeft->fontMetrics().lineSpacing());
    auto* texts = new QVBoxLayout;
    texts->addWidget(Text1);
    texts->addWidget(Text3);
    auto* inStatus = new QHBoxLayout(Frame3);
    inStatus->addLayout(texts, 3);
    inStatus->addLayout(counts, 2);
    inStatus->addWidget(Animation1, 0, Qt::AlignTop);

    auto* shown = new QHBoxLayout;
    shown->addWidget(Frame1, 2);
    shown->addWidget(Frame5, 3);
    auto* buttons = new QHBoxLayout;
    buttons->addStretch(1);
    for (QPushButton* command : {Command7, Command5, Command6})
        buttons->addWidget(command);
    auto* all = new QVBoxLayout(this);
    all->addLayout(shown, 1);
    all->addWidget(Frame3);
    all->addLayout(buttons);
    all->setContentsMargins(8, 8, 8, 8);
    resize(kMainWindowDesign / kTwipsPerPixel);
    const QList<QWidget*> order{Command1, List1, Command7, Command5, Command6, DwgViewX1, Text1, Text3};
    for (qsizetype i = 1; i < order.size(); ++i)
        setTabOrder(order[i - 1], order[i]);
}

void PrintLib::connectHandlers()
{
    connect(Command7, &QPushButton::clicked, this, &PrintLib::run);
    connect(Command6, &QPushButton::clicked, this, [this] { showHelpContents(program()); });
    connect(Command5, &QPushButton::clicked, this, [this] {
        if (m_running)
            closeRun();
        else
            program().unload(objectName());
    });
    m_closing->setSingleShot(true);
    m_closing->setInterval(kReadableMs);
    connect(m_closing, &QTimer::timeout, this, [this] { program().unload(objectName()); });
}

// Libraries are those of the installation folder, also where the master folder lies elsewhere.
void PrintLib::load()
{
    DwgViewX1->setPrintSilently(false);
    DwgViewX1->setFontFolder(values().FontPath);
    setTopmost(values().AlwaysOnTop == 1);
    printStop = 0;
    QStringList names{toText(values().LoginName)};
    const std::string catalogue = profiles().path(ProfileFile::Installation);
    repairLibraryCount(catalogue);
    for (const std::string& name : readCatalogue(catalogue))
        names << toText(name);
    List1->addItemsWithExtent(names);
}

void PrintLib::stay()
{
    m_leaving = false;
    m_closing->stop();
}

/// A window that is on its way out after a stop stays when it is asked for again.
void PrintLib::appear()
{
    stay();
    Window::appear();
}

void PrintLib::unloading()
{
    printStop = 1;
    showMainWindow(program());
    if (MainWindow* window = mainWindow(program()))
        window->setDesignSize(kMainWindowDesign);
}

/// The run is still on its way through this window when the main window's end unloads it; it goes after that.
bool PrintLib::event(QEvent* event)
{
    if (event->type() == QEvent::DeferredDelete && m_running)
        return true;
    return Window::event(event);
}

void PrintLib::closeEvent(QCloseEvent* event)
{
    if (!m_running) {
        Window::closeEvent(event);
        return;
    }
    event->ignore();
    closeRun();
}

/// The main window comes back at once. This one is unloaded when the run has wound up.
void PrintLib::closeRun()
{
    printStop = 1;
    m_leaving = true;
    showMainWindow(program());
}

// ---- the run

void PrintLib::run()
{
    stay();
    DwgViewX1->setPrintSilently(false);
    DwgViewX1->show();
    printStop = 0;
    const std::vector<PrintedLibrary> libraries = selectedLibraries();
    if (libraries.empty()) {
        askForSelection();
    } else {
        setRunning(true);
        printLibraries(libraries);
        setRunning(false);
    }
    windUp();
}

void PrintLib::printLibraries(const std::vector<PrintedLibrary>& libraries)
{
    const Result<int> total = countDrawings(libraries, *this);
    const Result<void> done = total ? printDrawings(libraries, *total, *this) : total.error();
    Animation1->stop();
    if (done)
        showEnd(*total);
    else
        program().fail(done.error().text);
}

std::vector<PrintedLibrary> PrintLib::selectedLibraries() const
{
    std::vector<PrintedLibrary> libraries;
    for (int row = 0; row < List1->count(); ++row) {
        if (List1->item(row)->isSelected())
            libraries.push_back(printedLibrary(toBytes(List1->item(row)->text()),
                                               program().folders().installation, values().LoginName,
                                               values().MyLibPath));
    }
    return libraries;
}

void PrintLib::askForSelection()
{
    setTopmost(false);
    program().messages().show(
        {"Please Select Library to Print", "No Library Selected", MessageIcon::Warning});
    // Whatever the user wants of the program elsewhere.
    setTopmost(true);
}

void PrintLib::setRunning(bool running)
{
    m_running = running;
    for (QWidget* control : std::initializer_list<QWidget*>{Command7, Command6, List1})
        control->setEnabled(!running);
    LabelTimeLeft->clear();
    m_pace.invalidate();
    // Busy, until the drawings are counted; and not for ever where there were none.
    if (running)
        ProgressBar1->setRange(0, 0);
    else if (ProgressBar1->maximum() == 0)
        ProgressBar1->setRange(0, 1);
}

/// The total on both sides, whatever was done.
void PrintLib::showEnd(int total)
{
    Text1->setPlainText(QStringLiteral("Printing of Library Complete"));
    Text3->clear();
    Label1->setText(QStringLiteral("Printed: \n%1 of %1").arg(total));
}

void PrintLib::windUp()
{
    DwgViewX1->hide();
    Animation1->hide();
    DwgViewX1->setPrintSilently(false);
    Command1->click();
    Command1->setFocus();
    // Unloaded in the middle of the run.
    if (program().loaded(objectName()) != this)
        QMetaObject::invokeMethod(
            qApp, [gone = QPointer<PrintLib>(this)] { delete gone; }, Qt::QueuedConnection);
    else if (m_leaving)
        m_closing->start();
}

// ---- what the run tells and does

void PrintLib::beginLibrary(const std::string& name)
{
    Text1->setPlainText(QStringLiteral("Printing Library \n") + toText(name));
    Animation1->open(joinPath(program().folders().installation, "Zelvora_Logo.avi"));
    Animation1->show();
}

bool PrintLib::showDrawing(const std::string& path)
{
    return DwgViewX1->setDrawing(path);
}

void PrintLib::showCount(int done, int total)
{
    Label1->setText(QStringLiteral("Printing: \n%1 of %2").arg(done).arg(total));
    ProgressBar1->setRange(0, total);
    ProgressBar1->setValue(done - 1);
    if (m_pace.isValid())
        LabelTimeLeft->setText(toText(timeLeftText(m_pace.elapsed(), done - 1 - m_paced, total - done + 1)));
    else
        m_paced = done;
}

void PrintLib::printWithDialog()
{
    DwgViewX1->setPrintSilently(false);
    DwgViewX1->print();
    // The time that the user took for the dialog says nothing of the drawings.
    m_pace.start();
}

void PrintLib::printSilently()
{
    DwgViewX1->setPrintSilently(true);
    DwgViewX1->print();
}

void PrintLib::startHelper()
{
    startProgram({joinPath(program().folders().installation, std::string("Plotmute") + kProgramEnding)},
                 ProgramWindow::Minimized);
}

void PrintLib::endDrawing(const std::string& path)
{
    Text3->setPlainText(QStringLiteral("Printing Drawing: \n") + toText(path));
    ProgressBar1->setValue(ProgressBar1->value() + 1);
}

bool PrintLib::turn()
{
    QCoreApplication::processEvents();
    return !printStop;
}

} // namespace zv
