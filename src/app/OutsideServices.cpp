#include "app/OutsideServices.h"

#include "config/PublicValues.h"
#include "log/ActivityLog.h"
#include "platform/Desktop.h"
#include "queue/QueueFile.h"

namespace zv {
namespace {

Result<void> queueDrawing(Program& program, const std::string& drawing,
                          const std::function<void()>& whileOpen)
{
    const auto added = addToQueue(queuePath(program.folders().user, program.values().LoginName), drawing);
    if (added)
        whileOpen();
    return added;
}

void logAction(Program& program, const std::string& drawing, std::string_view method)
{
    const PublicValues& known = program.values();
    if (known.LogEnabled)
        writeLog(known.LogPath, logEntry(known.LoginName, drawing, method));
}

} // namespace

OutsideServices::OutsideServices(Program& program)
    : m_automation(systemAutomation(m_pump)),
      m_splash(program), m_services{
                             {*m_automation, m_splash, activateWindowByTitle},
                             [&program](const std::string& drawing, const std::function<void()>& whileOpen) {
                                 return queueDrawing(program, drawing, whileOpen);
                             },
                             [&program](const std::string& drawing, std::string_view method) {
                                 logAction(program, drawing, method);
                             }}
{
}

} // namespace zv
