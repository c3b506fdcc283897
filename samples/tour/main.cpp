#include "Tour.h"

#include "app/RunningProgram.h"
#include "browser/BrowserWindows.h"
#include "controls/DwgThumbnail.h"
#include "controls/ProgramStyle.h"
#include "drawing/paint/Picture.h"
#include "host/ProgramHost.h"
#include "host/QtEventPump.h"
#include "platform/Automation.h"
#include "platform/System.h"
#include "search/SearchWindows.h"
#include "window/MessageBoxes.h"
#include "window/TextBytes.h"

#include <QApplication>
#include <QCheckBox>
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
constexpr int kLongestTourMs = 120000;

/// The program as its own main sets it up, on the folder of the office.
struct Setting {
    explicit Setting(const QString& office)
        : program({zv::toBytes(office), zv::userFolder()}, messages), host(program)
    {
        program.setActionServices(host.services());
        zv::addBrowserWindows(program);
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

/// Searches a word over all libraries and places a drawing that was found.
bool searchAndPlace(Tour& tour)
{
    tour.click("Command4");
    auto* results = qobject_cast<QListWidget*>(tour.control("List1", "Search"));
    if (!results)
        return false;
    qobject_cast<QCheckBox*>(tour.control("Check1", "Search"))->setChecked(true);
    qobject_cast<QLineEdit*>(tour.control("Text1", "Search"))->setText(QStringLiteral("valve"));
    tour.click("Command11", "Search");
    if (results->count() == 0) {
        std::fprintf(stderr, "zelvora-tour: the search found nothing\n");
        return false;
    }
    results->setCurrentRow(0);
    tour.picture(QStringLiteral("searched-all-libraries"), "Search");
    qobject_cast<QRadioButton*>(tour.control("Option2", "Search"))->setChecked(true);
    tour.click("Command3", "Search");
    pickPoint(tour, QStringLiteral("bench-asks-where-the-hit-goes"), QStringLiteral("420"),
              QStringLiteral("180"));
    return true;
}

/// How many blocks a drawing shows; -1 when it cannot be read.
qsizetype insertsIn(const std::string& path)
{
    const auto drawing = zv::dwg::openDrawing(path, {});
    if (!drawing)
        return -1;
    const auto& entities = drawing->document.blocks[drawing->document.modelSpace].entities;
    return std::count_if(entities.begin(), entities.end(),
                         [](const zv::dwg::Entity& entity) { return entity.kind == "INSERT"; });
}

bool untilIdle(zv::AutomationObject& document)
{
    return Tour::until("the bench has placed the block", [&] {
        const auto active = zv::asNumber(document.call("GetVariable", {std::string("cmdactive")}));
        return active && *active == 0;
    });
}

/// The drafter's day: place by a double-click, save, close; reopen, place, find and place, save.
bool insertBlocks(Tour& tour, const QString& office, const QString& pictures)
{
    QProcess bench;
    bench.setProcessChannelMode(QProcess::ForwardedChannels);
    bench.start(office + QStringLiteral("/zelvora-bench"), QStringList());
    zv::QtEventPump pump;
    const std::unique_ptr<zv::Automation> automation = zv::systemAutomation(pump);
    zv::AutomationObjectPtr application;
    if (!Tour::until("the bench answers", [&] {
            auto attached = automation->attach("AutoCAD.Application");
            if (attached)
                application = *attached;
            return attached.ok();
        }))
        return false;
    const QString placed = pictures + QStringLiteral("/placed.dwg");
    const std::string saved = zv::toBytes(placed);
    QFile::remove(placed);

    qobject_cast<QRadioButton*>(tour.control("Option1"))->setChecked(true);
    tour.doubleClick("DwgThumbnail2");
    pickPoint(tour, QStringLiteral("bench-asks-for-the-point"), QStringLiteral("300"), QStringLiteral("250"));
    const auto first = zv::asObject(application->get("ActiveDocument"));
    if (!first || !untilIdle(**first))
        return false;
    static_cast<void>((*first)->call("SetVariable", {std::string("filedia"), std::int64_t(0)}));
    static_cast<void>((*first)->call("SendCommand", {"(command \"_.SAVEAS\" \"" + saved + "\")\r"}));
    static_cast<void>((*first)->call("SendCommand", {std::string("_.CLOSE\r")}));
    const auto documents = zv::asObject(application->get("Documents"));
    if (insertsIn(saved) != 1 || !documents || !(*documents)->call("Open", {saved}))
        return false;
    const auto second = zv::asObject(application->get("ActiveDocument"));
    tour.doubleClick("DwgThumbnail3");
    pickPoint(tour, QStringLiteral("bench-asks-again-after-reopening"), QStringLiteral("360"),
              QStringLiteral("300"));
    if (!second || !untilIdle(**second) || !searchAndPlace(tour) || !untilIdle(**second))
        return false;
    static_cast<void>((*second)->call("SendCommand", {std::string("_.ZOOM\r_E\r")}));
    QTest::qWait(kRepaintMs);
    tour.pictureOfScreen(QStringLiteral("blocks-in-the-drawing"));
    static_cast<void>((*second)->call("SendCommand", {std::string("_.QSAVE\r")}));
    bench.terminate();
    bench.waitForFinished();
    return insertsIn(saved) == 3;
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
    return browse(tour, office) && insertBlocks(tour, office, pictures) ? 0 : 1;
}
