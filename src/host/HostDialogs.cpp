#include "host/HostDialogs.h"

#include "controls/ElidedLabel.h"
#include "host/Xattach.h"
#include "host/cmode.h"
#include "window/BrowserFields.h"
#include "window/TextBytes.h"

namespace zv {
namespace {

const QString kXattach = QStringLiteral("Xattach");
const QString kCmode = QStringLiteral("cmode");

/// cmode may end by showing Xattach, so both know who called.
void setStates(Program& program, OpenedFrom from)
{
    program.fields().xrefState = program.fields().cmodeState = std::int16_t(from);
}

} // namespace

void addHostWindows(Program& program)
{
    program.add(kXattach, [&program] { return new Xattach(program); });
    program.add(kCmode, [&program] { return new cmode(program); });
}

bool openXattach(Program& program, OpenedFrom from, const std::string& drawing,
                 const std::string& storedScale)
{
    setStates(program, from);
    if (auto* const dialog = qobject_cast<Xattach*>(program.loadAnew(kXattach)))
        dialog->prepare(drawing, storedScale);
    return program.show(kXattach);
}

bool openCmode(Program& program, OpenedFrom from, const std::string& drawing)
{
    setStates(program, from);
    if (auto* const dialog = qobject_cast<cmode*>(program.loadAnew(kCmode)))
        dialog->Label1->setText(toText("Open: " + drawing));
    return program.show(kCmode);
}

} // namespace zv
