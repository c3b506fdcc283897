#include "window/MainWindow.h"

#include "config/PublicValues.h"

namespace zv {
namespace {

const QString kName = QStringLiteral("Zelvora");

} // namespace

MainWindow::MainWindow(Program& program, const QString& title)
    : Window(program, kName, title), fields(program.fields())
{
}

MainWindow* mainWindow(const Program& program)
{
    return qobject_cast<MainWindow*>(program.loaded(kName));
}

void showMainWindow(Program& program)
{
    program.show(kName);
    if (MainWindow* window = mainWindow(program); window && program.values().AlwaysOnTop == 1)
        window->setTopmost(true);
}

} // namespace zv
