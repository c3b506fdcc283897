#include "app/RunningProgram.h"
#include "browser/BrowserWindows.h"
#include "config/OfficeWindows.h"
#include "controls/DwgThumbnail.h"
#include "controls/ImageList.h"
#include "controls/ProgramStyle.h"
#include "drawing/paint/Picture.h"
#include "host/HostDialogs.h"
#include "host/ProgramHost.h"
#include "library/LibraryWindows.h"
#include "platform/Files.h"
#include "platform/System.h"
#include "platform/Workers.h"
#include "print/PrintWindows.h"
#include "queue/QueueWindows.h"
#include "search/SearchWindows.h"
#include "window/MessageBoxes.h"
#include "window/RepeatedKeys.h"

#include <QApplication>

#include <clocale>
#include <cstdlib>

namespace {

/// An application in which no exception leaves a handler.
class Application final : public QApplication {
public:
    using QApplication::QApplication;

    /// Null guards no longer.
    void guardBy(zv::RunningProgram* program) { m_program = program; }

    bool notify(QObject* receiver, QEvent* event) override
    {
        bool handled = false;
        const auto deliver = [&] { handled = QApplication::notify(receiver, event); };
        if (m_program)
            m_program->guarded(deliver);
        else
            deliver();
        return handled;
    }

private:
    zv::RunningProgram* m_program = nullptr;
};

constexpr std::chrono::milliseconds kLastReads(500); ///< So long a read may still take at the end.

int run(Application& application)
{
    std::setlocale(LC_ALL, "");
    QApplication::setApplicationName(QStringLiteral("Zelvora"));
    QApplication::setApplicationVersion(QStringLiteral(ZELVORA_VERSION));
    QApplication::setStyle(new zv::ProgramStyle);
    QApplication::setWindowIcon(zv::namedPicture(QStringLiteral("logo")));
    // Hidden windows are loaded all the same; the program knows when the last one has gone.
    QApplication::setQuitOnLastWindowClosed(false);

    zv::DwgThumbnail::setRenderer([](const std::string& path, QSize pixels) {
        return zv::dwg::drawThumbnail(path, pixels, Qt::black,
                                      zv::joinPath(zv::installationFolder(), "fonts"));
    });
    zv::MessageBoxes messages;
    zv::RunningProgram program({zv::installationFolder(), zv::userFolder()}, messages);
    zv::ProgramHost host(program);
    program.setActionServices(host.services());
    application.guardBy(&program);
    zv::RepeatedKeys repeatedKeys;
    application.installEventFilter(&repeatedKeys);
    QObject::connect(&program, &zv::RunningProgram::ended, &application, &QCoreApplication::exit,
                     Qt::QueuedConnection);
    zv::addBrowserWindows(program);
    zv::addLibraryWindows(program);
    zv::addOfficeWindows(program);
    zv::addPrintWindows(program);
    zv::addHostWindows(program);
    zv::addQueueWindows(program);
    zv::addSearchWindows(program);
    program.guarded([&program] { program.load(QStringLiteral("Zelvora")); });
    const int status = QApplication::exec();
    application.guardBy(nullptr);
    return status;
}

} // namespace

int main(int argc, char** argv)
{
    Application application(argc, argv);
    const int status = run(application);
    // A share that has gone away may hold a read up for minutes; the program does not wait for it.
    if (!zv::waitForWorkers(kLastReads))
        std::_Exit(status);
    return status;
}
