#include "BenchWindow.h"
#include "HostServer.h"

#include "controls/ProgramStyle.h"
#include "platform/LocalHosts.h"
#include "window/TextBytes.h"

#include <QApplication>
#include <QSocketNotifier>

#include <cstdio>

int main(int argc, char** argv)
{
    const int endRequests = zv::openEndRequests();
    QApplication application(argc, argv);
    QApplication::setApplicationName(QStringLiteral("Zelvora Bench"));
    QApplication::setStyle(new zv::ProgramStyle);
    QApplication::setQuitOnLastWindowClosed(false);

    zv::bench::BenchWindow window;
    zv::bench::HostServer server({window.workshop(), window.commandLine(), window});
    for (const char* name : {"AutoCAD.Application", "AutoCAD.Application.20"}) {
        if (const zv::Result<void> listening = server.listen(name); !listening) {
            std::fprintf(stderr, "zelvora-bench: %s\n", listening.error().text.c_str());
            return 1;
        }
    }
    QSocketNotifier ending(endRequests, QSocketNotifier::Read);
    QObject::connect(&ending, &QSocketNotifier::activated, &application,
                     // Quitting would ask about what is not saved.
                     [] { QCoreApplication::exit(0); });
    const QStringList arguments = QApplication::arguments();
    if (arguments.size() > 1) {
        const auto opened = window.workshop().open(zv::toBytes(arguments[1]));
        if (!opened)
            window.write(opened.error().text);
    }
    if (!window.workshop().active())
        window.workshop().add();
    window.show();
    return QApplication::exec();
}
