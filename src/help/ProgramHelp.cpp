#include "help/ProgramHelp.h"

#include "platform/Files.h"
#include "window/Program.h"
#include "window/TextBytes.h"

#include <QCoreApplication>

namespace zv {
namespace {

std::unique_ptr<HTMLHelpViewer> sharedHelp;

// A window must not outlive the application, as a plain static would.
void endSharedHelp()
{
    sharedHelp.reset();
}

std::string helpFileOf(const Program& program)
{
    return joinPath(program.folders().installation, "Zelvora.chm");
}

} // namespace

HTMLHelpViewer& programHelp()
{
    if (!sharedHelp) {
        sharedHelp = std::make_unique<HTMLHelpViewer>(makeHelpSystem());
        qAddPostRoutine(endSharedHelp);
    }
    return *sharedHelp;
}

void pointToHelpFile(const Program& program)
{
    QCoreApplication::instance()->setProperty("helpFile", toText(helpFileOf(program)));
}

void showHelpContents(const Program& program)
{
    pointToHelpFile(program);
    programHelp().setHelpFile(helpFileOf(program));
    programHelp().ShowContents();
}

} // namespace zv
