#include "BenchWindow.h"
#include "HostServer.h"

#include "controls/ProgramStyle.h"
#include "platform/Automation.h"
#include "platform/HostEvents.h"
#include "window/TextBytes.h"

#include <QApplication>
#include <QFileInfo>
#include <QSocketNotifier>

#include <cstdio>
#include <memory>

namespace {

/// Lets a bench that runs already open the drawing and come to the front; false when none runs.
bool handedOver(const std::string& drawing)
{
    zv::PlainEventPump pump;
    const auto automation = zv::systemAutomation(pump);
    const auto running = automation->attach(zv::bench::HostServer::names().front());
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

    QStringList arguments = QApplication::arguments();
    // So COM says that it starts this program for another one.
    arguments.removeAll(QStringLiteral("-Embedding"));
    const std::string drawing =
        arguments.size() > 1 ? zv::toBytes(QFileInfo(arguments[1]).absoluteFilePath()) : std::string();
    if (handedOver(drawing))
        return 0;
    zv::bench::BenchWindow window;
    zv::bench::HostServer server({window.workshop(), window.commandLine(), window});
    const std::vector<std::string> names = zv::bench::HostServer::names();
    for (const std::string& name : names) {
        const zv::Result<void> listening = server.listen(name);
        // Beside a real AutoCAD the bench goes by its own name alone.
        if (!listening && name != names.front() && listening.error().code == zv::ErrorCode::Denied) {
            window.write(listening.error().text);
        } else if (!listening) {
            std::fprintf(stderr, "zelvora-bench: %s\n", listening.error().text.c_str());
            return 1;
        }
    }
    std::unique_ptr<QSocketNotifier> ending;
    if (endRequests >= 0) {
        ending = std::make_unique<QSocketNotifier>(endRequests, QSocketNotifier::Read);
        QObject::connect(ending.get(), &QSocketNotifier::activated, &application,
                         // Quitting would ask about what is not saved.
                         [] { QCoreApplication::exit(0); });
    }
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
