#include "BenchWindow.h"
#include "HostServer.h"

#include "controls/ProgramStyle.h"
#include "platform/LocalHosts.h"
#include "window/TextBytes.h"

#include <QApplication>
#include <QFileInfo>
#include <QSocketNotifier>

#include <cstdio>

namespace {

/// Lets a bench that runs already open the drawing and come to the front; false when none runs.
bool handedOver(const std::string& drawing)
{
    zv::PlainEventPump pump;
    const auto running = zv::socketAutomation(pump, {})->attach("AutoCAD.Application");
    if (!running)
        return false;
    static_cast<void>((*running)->set("Visible", true));
    const auto documents = zv::asObject((*running)->get("Documents"));
    if (documents && !drawing.empty()) {
        const auto opened = (*documents)->call("Open", {drawing});
        if (!opened)
            std::fprintf(stderr, "zelvora-bench: %s\n", opened.error().text.c_str());
    }
    return true;
}

} // namespace

int main(int argc, char** argv)
{
    const int endRequests = zv::openEndRequests();
    QApplication application(argc, argv);
    QApplication::setApplicationName(QStringLiteral("Zelvora Bench"));
    QApplication::setStyle(new zv::ProgramStyle);
    QApplication::setQuitOnLastWindowClosed(false);

    const QStringList arguments = QApplication::arguments();
    const std::string drawing =
        arguments.size() > 1 ? zv::toBytes(QFileInfo(arguments[1]).absoluteFilePath()) : std::string();
    if (handedOver(drawing))
        return 0;
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
    if (!drawing.empty()) {
        const auto opened = window.workshop().open(drawing);
        if (!opened)
            window.write(opened.error().text);
    }
    if (!window.workshop().active())
        window.workshop().add();
    window.show();
    return QApplication::exec();
}
