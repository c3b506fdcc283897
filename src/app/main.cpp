#include "app/RunningProgram.h"
#include "browser/BrowserWindows.h"
#include "controls/MessageBoxes.h"
#include "host/ProgramHost.h"
#include "platform/System.h"

#include <QApplication>
#include <QStyleFactory>

#include <clocale>
#include <exception>

namespace {

/// Ends the program with a plain message when a handler lets a failure of the language or of Qt through.
class Application final : public QApplication {
public:
    using QApplication::QApplication;

    void guard(zv::Program& program) { m_program = &program; }

    bool notify(QObject* receiver, QEvent* event) override
    {
        try {
            return QApplication::notify(receiver, event);
        } catch (const std::exception& failure) {
            if (m_program)
                m_program->fail(failure.what());
            return false;
        }
    }

private:
    zv::Program* m_program = nullptr;
};

} // namespace

int main(int argc, char** argv)
{
    Application application(argc, argv);
    std::setlocale(LC_ALL, "");
    QApplication::setApplicationName(QStringLiteral("Zelvora"));
    QApplication::setApplicationVersion(QStringLiteral(ZELVORA_VERSION));
    QApplication::setStyle(QStyleFactory::create(QStringLiteral("Fusion")));
    // Hidden windows are loaded all the same; the program knows when the last one has gone.
    QApplication::setQuitOnLastWindowClosed(false);

    zv::MessageBoxes messages;
    zv::RunningProgram program({zv::installationFolder(), zv::userFolder()}, messages);
    zv::ProgramHost host(program);
    program.setActionServices(host.services());
    application.guard(program);
    QObject::connect(&program, &zv::RunningProgram::ended, &application, &QCoreApplication::exit,
                     Qt::QueuedConnection);
    zv::addBrowserWindows(program);
    program.load(QStringLiteral("Zelvora"));
    return QApplication::exec();
}
