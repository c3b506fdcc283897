#include "Tour.h"

#include "app/RunningProgram.h"
#include "browser/BrowserWindows.h"
#include "config/OfficeWindows.h"
#include "controls/DwgThumbnail.h"
#include "controls/FileList.h"
#include "controls/FolderList.h"
#include "controls/ProgramStyle.h"
#include "drawing/paint/Picture.h"
#include "host/HostDialogs.h"
#include "host/ProgramHost.h"
#include "host/QtEventPump.h"
#include "library/LibraryWindows.h"
#include "library/Newlib.h"
#include "platform/Automation.h"
#include "platform/System.h"
#include "print/PrintWindows.h"
#include "queue/QueueWindows.h"
#include "search/SearchWindows.h"
#include "window/MessageBoxes.h"
#include "window/TextBytes.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QDir>
#include <QLineEdit>
#include <QListWidget>
#include <QProcess>
#include <QRadioButton>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

#include <algorithm>
#include <clocale>
#include <cstdio>
#include <cstdlib>

namespace {

using zv::tour::Tour;

/// Another process paints in its own time.
constexpr int kRepaintMs = 500;
constexpr int kLongestTourMs = 300000;

/// The program as its own main sets it up, on the folder of the office.
struct Setting {
    explicit Setting(const QString& office)
        : program({zv::toBytes(office), zv::userFolder()}, messages), host(program)
    {
        program.setActionServices(host.services());
        zv::addBrowserWindows(program);
        zv::addHostWindows(program);
        zv::addLibraryWindows(program);
        zv::addOfficeWindows(program);
        zv::addPrintWindows(program);
        zv::addQueueWindows(program);
        zv::addSearchWindows(program);
    }

    zv::MessageBoxes messages;
    zv::RunningProgram program;
    zv::ProgramHost host;
};

/// A user who has never started the program: no library is in view yet.
bool showFirstStart(const QString& office, const QString& pictures)
{
    QTemporaryDir home;
    const QByteArray data = qgetenv("XDG_DATA_HOME"), config = qgetenv("XDG_CONFIG_HOME");
    qputenv("XDG_DATA_HOME", home.filePath(QStringLiteral("data")).toLocal8Bit());
    qputenv("XDG_CONFIG_HOME", home.filePath(QStringLiteral("config")).toLocal8Bit());
    bool shown = false;
    {
        Setting setting(office);
        Tour tour(setting.program, pictures + QStringLiteral("/first-start"));
        shown = tour.start();
        tour.picture(QStringLiteral("no-library-yet"));
    }
    qputenv("XDG_DATA_HOME", data);
    qputenv("XDG_CONFIG_HOME", config);
    return shown;
}

/// A library of the catalogue whose list is gone, for as long as the picture needs.
void showMissingLibrary(Tour& tour, const QString& office)
{
    const QString list = office + QStringLiteral("/Vendor Details.lst"),
                  aside = list + QStringLiteral(".aside");
    QFile::rename(list, aside);
    tour.answerNextMessage(QStringLiteral("library-gone-message"));
    if (tour.chooseLibrary(QStringLiteral("Vendor Details")))
        tour.picture(QStringLiteral("library-gone"));
    QFile::rename(aside, list);
}

bool browse(Tour& tour, const QString& office)
{
    if (!tour.start())
        return false;
    tour.picture(QStringLiteral("last-library"));
    if (!tour.chooseLibrary(QStringLiteral("Doors and Windows")))
        return false;
    tour.click("Command3");
    tour.picture(QStringLiteral("next-panel"));
    tour.jumpToRow(45);
    tour.picture(QStringLiteral("jump-by-label"));
    tour.click("Command12");
    tour.picture(QStringLiteral("enlarged"));
    tour.click("Command12");
    tour.click("Picture9");
    tour.picture(QStringLiteral("settings-tab"));
    tour.click("Picture5");
    showMissingLibrary(tour, office);
    if (!tour.chooseLibrary(QStringLiteral("Stairs and Ramps")))
        return false;
    tour.picture(QStringLiteral("library-chosen"));
    return true;
}

/// Three drawings are gathered and copied out to a folder.
bool copyQueueOut(Tour& tour, const QString& pictures)
{
    const QString folder = pictures + QStringLiteral("/copied-out");
    QDir(folder).removeRecursively();
    QDir().mkpath(folder);
    qobject_cast<QRadioButton*>(tour.control("Option4"))->setChecked(true);
    for (const char* cell : {"DwgThumbnail1", "DwgThumbnail4", "DwgThumbnail6"}) {
        tour.answerNextMessage(QStringLiteral("added-to-the-queue"));
        tour.doubleClick(cell);
    }
    tour.click("Command24");
    if (!tour.appears("Cart"))
        return false;
    if (auto* queue = qobject_cast<QListWidget*>(tour.control("List1", "Cart")))
        queue->setCurrentRow(1);
    tour.picture(QStringLiteral("queue"), "Cart");
    tour.click("Command11", "Cart");
    if (!tour.appears("CartCopy"))
        return false;
    tour.enter("Text1", folder, "CartCopy");
    tour.picture(QStringLiteral("copy-the-queue"), "CartCopy");
    tour.answerNextMessage(QStringLiteral("queue-copied"));
    tour.click("Command11", "CartCopy");
    tour.click("Command2", "Cart");
    return QDir(folder).entryList(QDir::Files).size() == 3;
}

/// The administrator lets users put drawings of their own into their favourites.
bool setRule(Tour& tour)
{
    tour.click("Picture9");
    tour.click("Command9");
    auto* rule = qobject_cast<QCheckBox*>(tour.control("Check1", "Options"));
    if (!rule)
        return false;
    // Stored with the click, so a second tour finds it ticked.
    if (!rule->isChecked())
        rule->click();
    tour.picture(QStringLiteral("rules-of-the-office"), "Options");
    const bool set = rule->isChecked();
    tour.click("Command11", "Options");
    return set;
}

/// Prints a small library, the first drawing to the file that is chosen and the others beside it.
bool printLibrary(Tour& tour, const QString& pictures)
{
    const QDir printed(pictures + QStringLiteral("/printed"));
    QDir(printed.path()).removeRecursively();
    tour.click("Command7");
    auto* libraries = qobject_cast<QListWidget*>(tour.control("List1", "PrintLib"));
    if (!libraries || !QDir().mkpath(printed.path()))
        return false;
    const auto found = libraries->findItems(QStringLiteral("Vendor Details"), Qt::MatchExactly);
    if (found.isEmpty())
        return false;
    found.first()->setSelected(true);
    tour.printNextTo(printed.filePath(QStringLiteral("first.pdf")), QStringLiteral("print-dialog"));
    tour.click("Command7", "PrintLib");
    tour.picture(QStringLiteral("library-printed"), "PrintLib");
    tour.click("Command5", "PrintLib");
    tour.click("Picture5");
    // A few of its drawings are missing.
    return printed.exists(QStringLiteral("first.pdf")) && printed.entryList(QDir::Files).size() > 1;
}

/// The editor, from the settings of the main window, and back with the new libraries.
zv::Newlib* openEditor(Tour& tour, zv::Program& program)
{
    tour.click("Picture9");
    tour.click("Command1");
    return tour.appears("Newlib") ? static_cast<zv::Newlib*>(program.loaded(QStringLiteral("Newlib")))
                                  : nullptr;
}

bool closeEditor(Tour& tour)
{
    tour.click("Command11", "Newlib");
    if (!tour.appears("Zelvora"))
        return false;
    tour.click("Picture5");
    return true;
}

/// What was copied out becomes a library. It is shown in the main window, and deleted again.
bool makeLibrary(Tour& tour, zv::Program& program, const QString& folder)
{
    const QString name = QStringLiteral("Copied Details");
    zv::Newlib* editor = openEditor(tour, program);
    if (!editor)
        return false;
    tour.enter("Text1", name, "Newlib");
    if (!editor->Dir1->setPath(zv::toBytes(folder)))
        return false;
    QTest::keyClick(editor->File1, Qt::Key_A, Qt::ControlModifier);
    tour.picture(QStringLiteral("drawings-for-a-library"), "Newlib");
    tour.click("Command1", "Newlib");
    tour.jumpToRow(0, "Newlib");
    tour.enter("Text5", QStringLiteral("Our first detail"), "Newlib");
    tour.click("Command5", "Newlib");
    tour.picture(QStringLiteral("library-made"), "Newlib");
    tour.answerNextMessage(QStringLiteral("save-the-library"));
    if (!closeEditor(tour) || !tour.chooseLibrary(name))
        return false;
    tour.picture(QStringLiteral("library-shown"));
    const auto* labels = qobject_cast<QListWidget*>(tour.control("List1"));
    const bool whole = labels->count() == 3 && labels->item(0)->text() == QStringLiteral("Our first detail");
    if (!openEditor(tour, program) || !tour.chooseLibrary(name, "Newlib", "Combo3"))
        return false;
    tour.answerNextMessage(QStringLiteral("delete-the-library"));
    tour.click("Command6", "Newlib");
    return closeEditor(tour) && !tour.chooseLibrary(name) && whole &&
           tour.chooseLibrary(QStringLiteral("Stairs and Ramps"));
}

/// The bench, which runs as long as this lives.
class Bench {
public:
    explicit Bench(const QString& office)
    {
        m_process.setProcessChannelMode(QProcess::ForwardedChannels);
        m_process.start(office + QStringLiteral("/zelvora-bench"), QStringList());
    }
    ~Bench()
    {
        m_process.terminate();
        m_process.waitForFinished();
    }
    bool answers()
    {
        return Tour::until("the bench to answer", [this] {
            auto attached = m_automation->attach("AutoCAD.Application");
            if (attached)
                m_application = *attached;
            return attached.ok();
        });
    }
    zv::Result<zv::AutomationObjectPtr> document() const
    {
        return zv::asObject(m_application->get("ActiveDocument"));
    }
    zv::Result<zv::AutomationValue> type(const std::string& text) const
    {
        const auto drawing = document();
        if (!drawing)
            return drawing.error();
        return (*drawing)->call("SendCommand", {text});
    }
    void keepFileDialogsAway() const
    {
        if (const auto drawing = document())
            static_cast<void>((*drawing)->call("SetVariable", {std::string("filedia"), std::int64_t(0)}));
    }
    bool open(const std::string& path) const
    {
        const auto documents = zv::asObject(m_application->get("Documents"));
        return documents && (*documents)->call("Open", {path});
    }
    bool isIdle() const
    {
        const auto drawing = document();
        if (!drawing)
            return false;
        const auto active = zv::asNumber((*drawing)->call("GetVariable", {std::string("cmdactive")}));
        return active && *active == 0;
    }

private:
    QProcess m_process;
    zv::QtEventPump m_pump;
    std::unique_ptr<zv::Automation> m_automation = zv::systemAutomation(m_pump);
    zv::AutomationObjectPtr m_application;
};

/// Picks a point in the bench with the display's own pointer, and takes its rotation as it is offered.
void pickPoint(Tour& tour, const QString& name, const QString& x, const QString& y)
{
    zv::tour::xdotool({QStringLiteral("search"), QStringLiteral("--sync"), QStringLiteral("--onlyvisible"),
                       QStringLiteral("--name"), QStringLiteral("Bench"), QStringLiteral("windowraise"),
                       QStringLiteral("windowfocus"), QStringLiteral("mousemove"), QStringLiteral("--window"),
                       QStringLiteral("%1"), x, y});
    QTest::qWait(kRepaintMs);
    tour.pictureOfScreen(name);
    zv::tour::xdotool({QStringLiteral("click"), QStringLiteral("1")});
    zv::tour::xdotool({QStringLiteral("key"), QStringLiteral("Return")});
}

/// Searches a word in all libraries and places a drawing that was found.
bool searchAndPlace(Tour& tour, const Bench& bench)
{
    tour.click("Command4");
    auto* results = qobject_cast<QListWidget*>(tour.control("List1", "Search"));
    if (!results)
        return false;
    tour.click("Check1", "Search");
    tour.enter("Text1", QStringLiteral("valve"), "Search");
    {
        // Some libraries list drawings that are gone; the search tells it and goes on with the next.
        const auto answers = tour.answerMessages(QStringLiteral("search-skips-a-library"));
        tour.click("Command11", "Search");
    }
    if (results->count() == 0) {
        std::fprintf(stderr, "zelvora-tour: the search found nothing\n");
        return false;
    }
    results->setCurrentRow(0);
    tour.picture(QStringLiteral("searched"), "Search");
    qobject_cast<QRadioButton*>(tour.control("Option2", "Search"))->setChecked(true);
    tour.click("Command3", "Search");
    pickPoint(tour, QStringLiteral("bench-asks-where-the-hit-goes"), QStringLiteral("420"),
              QStringLiteral("180"));
    if (!Tour::until("the bench to place what was found", [&] { return bench.isIdle(); }))
        return false;
    tour.click("Command4", "Search");
    return tour.appears("Zelvora");
}

/// An xref in the scale of the two drawings, its point picked in the bench.
bool attachXref(Tour& tour, const Bench& bench)
{
    qobject_cast<QRadioButton*>(tour.control("Option2"))->setChecked(true);
    tour.doubleClick("DwgThumbnail4");
    if (!tour.appears("Xattach"))
        return false;
    tour.click("Check1", "Xattach");
    tour.enter("Text2", QStringLiteral("120"), "Xattach");
    tour.picture(QStringLiteral("insert-xref"), "Xattach");
    tour.click("Command3", "Xattach");
    if (!tour.appears("Zelvora") ||
        !Tour::until("the bench to attach the xref", [&] { return bench.isIdle(); }))
        return false;
    static_cast<void>(bench.type("_.ZOOM\r_E\r"));
    QTest::qWait(kRepaintMs);
    tour.pictureOfScreen(QStringLiteral("xref-in-the-drawing"));
    return true;
}

/// How many blocks and xrefs a drawing shows; -1 when it cannot be read.
qsizetype insertsIn(const std::string& path)
{
    const auto drawing = zv::dwg::openDrawing(path, {});
    if (!drawing)
        return -1;
    const auto& entities = drawing->document.blocks[drawing->document.modelSpace].entities;
    return std::count_if(entities.begin(), entities.end(),
                         [](const zv::dwg::Entity& entity) { return entity.kind == "INSERT"; });
}

/// A double-click places a drawing in the bench; the point is picked there.
bool placeBlock(Tour& tour, const Bench& bench, const char* cell, const char* picture, const QString& x,
                const QString& y)
{
    qobject_cast<QRadioButton*>(tour.control("Option1"))->setChecked(true);
    tour.doubleClick(cell);
    pickPoint(tour, QLatin1String(picture), x, y);
    return Tour::until("the bench to place the block", [&] { return bench.isIdle(); });
}

/// The drafter's day: place by a double-click, save, close; reopen, place, find and place, attach, save.
bool fillDrawing(Tour& tour, const Bench& bench, const QString& pictures)
{
    const QString placed = pictures + QStringLiteral("/placed.dwg");
    const std::string saved = zv::toBytes(placed);
    QFile::remove(placed);
    if (!placeBlock(tour, bench, "DwgThumbnail2", "bench-asks-for-the-point", QStringLiteral("300"),
                    QStringLiteral("250")))
        return false;
    bench.keepFileDialogsAway();
    static_cast<void>(bench.type("(command \"_.SAVEAS\" \"" + saved + "\")\r"));
    static_cast<void>(bench.type("_.CLOSE\r"));
    if (insertsIn(saved) != 1 || !bench.open(saved) ||
        !placeBlock(tour, bench, "DwgThumbnail3", "bench-asks-again-after-reopening", QStringLiteral("360"),
                    QStringLiteral("300")) ||
        !searchAndPlace(tour, bench))
        return false;
    static_cast<void>(bench.type("_.ZOOM\r_E\r"));
    QTest::qWait(kRepaintMs);
    tour.pictureOfScreen(QStringLiteral("blocks-in-the-drawing"));
    if (!attachXref(tour, bench))
        return false;
    static_cast<void>(bench.type("_.QSAVE\r"));
    return insertsIn(saved) == 4;
}

/// A copy in the project folder, opened beside the drawing.
bool openCopy(Tour& tour, const QString& pictures)
{
    const QString copy = pictures + QStringLiteral("/copied-out/opened.dwg");
    QFile::remove(copy);
    qobject_cast<QRadioButton*>(tour.control("Option3"))->setChecked(true);
    tour.doubleClick("DwgThumbnail6");
    if (!tour.appears("cmode"))
        return false;
    tour.enter("Text1", copy, "cmode");
    tour.picture(QStringLiteral("open-a-copy"), "cmode");
    tour.click("Command3", "cmode");
    if (!tour.appears("Zelvora"))
        return false;
    QTest::qWait(kRepaintMs);
    tour.pictureOfScreen(QStringLiteral("copy-opened"));
    return QFile::exists(copy);
}

} // namespace

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    std::setlocale(LC_ALL, "");
    QApplication::setApplicationName(QStringLiteral("Zelvora"));
    QApplication::setStyle(new zv::ProgramStyle);
    QApplication::setQuitOnLastWindowClosed(false);
    const QStringList arguments = QApplication::arguments();
    if (arguments.size() != 3) {
        std::fprintf(stderr, "zelvora-tour OFFICE PICTURES\n");
        return 2;
    }
    // Nobody is there to answer a question that the tour does not expect.
    QTimer::singleShot(kLongestTourMs, [] {
        std::fprintf(stderr, "zelvora-tour: came to no end\n");
        std::_Exit(1);
    });
    const QString office = arguments[1], pictures = arguments[2];
    QDir().mkpath(pictures + QStringLiteral("/first-start"));
    if (!showFirstStart(office, pictures))
        return 1;
    zv::DwgThumbnail::setRenderer([office](const std::string& path, QSize pixels) {
        return zv::dwg::drawThumbnail(path, pixels, Qt::black,
                                      zv::toBytes(office + QStringLiteral("/fonts")));
    });
    Setting setting(office);
    Tour tour(setting.program, pictures);
    if (!browse(tour, office) || !setRule(tour) || !printLibrary(tour, pictures) ||
        !copyQueueOut(tour, pictures) ||
        !makeLibrary(tour, setting.program, pictures + QStringLiteral("/copied-out")))
        return 1;
    Bench bench(office);
    return bench.answers() && fillDrawing(tour, bench, pictures) && openCopy(tour, pictures) ? 0 : 1;
}
