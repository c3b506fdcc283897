#include "host/HostDialog.h"

#include "config/PublicValues.h"
#include "window/MainWindow.h"

namespace zv {
namespace {

const QString kMain = QStringLiteral("Zelvora");
const QString kSearch = QStringLiteral("Search");

constexpr std::int16_t kNormal = 0, kShowAgain = 1, kFromSearch = 7, kFromSearchShowAgain = 8;

} // namespace

HostDialog::HostDialog(Program& program, const QString& name, const QString& title, std::int16_t& state)
    : Window(program, name, title), m_state(state)
{
}

void HostDialog::unloading()
{
    if (!m_ended)
        bringCallerBack();
}

void HostDialog::hideWindow()
{
    program().hide(objectName());
}

void HostDialog::end(DialogEnd how)
{
    if (how == DialogEnd::Again)
        m_state = kShowAgain;
    else if (how == DialogEnd::AgainAsCalled)
        m_state = isFromSearch() ? kFromSearchShowAgain : kShowAgain;
    switch (m_state) {
    case kShowAgain:
        m_state = kNormal;
        showOnTop();
        break;
    case kFromSearchShowAgain:
        m_state = kFromSearch;
        showAgainForSearch();
        program().hide(kMain);
        break;
    default:
        endQuietly();
        bringCallerBack();
        program().unload(objectName());
        break;
    }
}

const std::string& HostDialog::chosenDrawing() const
{
    const BrowserFields& fields = program().fields();
    return isFromSearch() ? fields.searchDrawing : fields.selectedDrawing;
}

DialogSettings HostDialog::settings() const
{
    return {values().Fds == 1, values().Acad2002 != 0};
}

void HostDialog::cancel()
{
    program().unload(objectName());
}

void HostDialog::showOnTop()
{
    stayOnTop();
    program().show(objectName());
}

void HostDialog::bringCallerBack()
{
    if (isFromSearch() && program().loaded(kSearch)) {
        showSearch();
        return;
    }
    showMainWindow(program());
    if (MainWindow* main = mainWindow(program()))
        main->setTopmost(values().AlwaysOnTop == 1);
}

void HostDialog::showSearch()
{
    program().loaded(kSearch)->setTopmost(true);
    program().hide(kMain);
    program().show(kSearch);
}

} // namespace zv
