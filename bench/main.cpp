#include "BenchWindow.h"
#include "HandOver.h"
#include "HostServer.h"

#include "controls/ProgramStyle.h"
#include "platform/HostEvents.h"
#include "window/TextBytes.h"

#include <QApplication>
#include <QFileInfo>
#include <QMessageBox>
#include <QSocketNotifier>

#include <cstdio>
#include <memory>

namespace {

/// A second start may come from where nobody reads what it writes.
void tell(const std::string& problem)
{
    std::fprintf(stderr, "zelvora-bench: %s\n", problem.c_str());
    QMessageBox box(QMessageBox::Warning, QStringLiteral("Zelvora Bench"), zv::toText(problem));
    box.setObjectName(QStringLiteral("Problem"));
    box.setTextFormat(Qt::PlainText);
    box.exec();
}

/// Whether a bench that runs already has taken the start over; `status` is then that of this program.
bool isHandedOver(const std::string& drawing, int& status)
{
    const zv::Result<void> done = zv::bench::handOver(zv::bench::HostServer::names().front(), drawing);
    if (!done && done.error().code == zv::ErrorCode::NotFound)
        return false;
    status = done ? 0 : 1;
    if (!done)
        tell(drawing.empty() ? done.error().text : drawing + " was not opened: " + done.error().text);
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
    int status = 0;
    if (isHandedOver(drawing, status))
        return status;
    zv::bench::BenchWindow window;
    zv::bench::HostServer server({window.workshop(), window.commandLine(), window});
    const std::vector<std::string> names = zv::bench::HostServer::names();
    for (const std::string& name : names) {
        const zv::Result<void> listening = server.listen(name);
        // Beside a real AutoCAD the bench goes by its own name alone.
        if (!listening && name != names.front() && listening.error().code == zv::ErrorCode::Denied) {
            window.write(listening.error().text);
        } else if (!listening) {
            // Of two that start at once one is the first.
            if (listening.error().code != zv::ErrorCode::Busy || !isHandedOver(drawing, status)) {
                tell(listening.error().text);
                status = 1;
            }
            return status;
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
