#include "host/ProgramHost.h"

#include "config/PublicValues.h"
#include "log/ActivityLog.h"
#include "platform/Desktop.h"
#include "queue/QueueFile.h"
#include "window/MainWindow.h"

namespace zv {

ProgramHost::ProgramHost(Program& program)
    : m_pump([this, &program](bool waiting) {
          m_splash.tellWaiting(waiting);
          if (MainWindow* const window = mainWindow(program))
              window->tellWaiting(waiting);
      }),
      m_automation(systemAutomation(m_pump)),
      m_splash(program), m_services{{*m_automation, m_splash, {}}, {}, {}}
{
    program.add(QStringLiteral("LoadAcad"), [&program] { return new LoadAcad(program); });
    m_services.activateWindow = activateWindowByTitle;
    m_services.addToQueue = [&program](const std::string& drawing, const std::function<void()>& whileOpen) {
        const std::string path = queuePath(program.folders().user, program.values().LoginName);
        return addToQueue(path, drawing, whileOpen);
    };
    m_services.writeLog = [&program](const std::string& drawing, std::string_view method) {
        const PublicValues& values = program.values();
        // Without the flag an empty entry goes the same way.
        zv::writeLog(values.LogPath,
                     values.LogEnabled ? logEntry(values.LoginName, drawing, method) : std::string());
    };
}

} // namespace zv
