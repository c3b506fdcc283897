#include "host/CmodeProcedure.h"

#include "host/SendableText.h"
#include "platform/FileCopy.h"
#include "platform/Files.h"
#include "platform/Folders.h"

namespace zv {

namespace {

/// One press of Command3.
class OpenRun {
public:
    OpenRun(const OpenOrder& order, DialogWindow& window, HostServices& services,
            const DialogSettings& settings)
        : m_order(order), m_window(window), m_action(window, services, settings)
    {
    }

    void run()
    {
        m_action.run([this] { return open(); });
    }

private:
    DialogEnd open();
    void copy();
    Result<void> openInHost(const std::string& path);

    const OpenOrder& m_order;
    DialogWindow& m_window;
    DialogAction m_action;
};

DialogEnd OpenRun::open()
{
    if (m_order.copy) {
        m_action.activate();
        copy();
    }
    const std::string& path = m_order.copy ? m_order.target : m_order.drawing;
    m_action.showHost();
    if (!fileExists(path)) {
        m_window.messages().show({"File " + path + " does not exist.", {}, MessageIcon::None});
        m_action.bracket().restore();
        return DialogEnd::Done;
    }
    const auto opened = openInHost(path);
    m_action.restoreSnap();
    m_action.bracket().restore();
    return opened ? DialogEnd::Done : DialogEnd::Again;
}

/// A copy that fails stops nothing: whether there is something to be opened is seen then.
void OpenRun::copy()
{
    if (isSameFile(m_order.drawing, m_order.target))
        return;
    if (fileExists(m_order.target) &&
        !m_window.messages().ask({"File: " + m_order.target + " Already Exists, Would you Like to Overwrite?",
                                  "File Already Exists in Specified Directory", MessageIcon::Question}))
        return;
    m_window.rememberFolder(parentFolder(m_order.target));
    static_cast<void>(copyIntoPlace(m_order.drawing, m_order.target));
}

Result<void> OpenRun::openInHost(const std::string& path)
{
    const Result<AutomationObjectPtr> application = asObject(m_action.document()->get("Application"));
    if (!application)
        return application.error();
    const Result<AutomationObjectPtr> documents = asObject((*application)->get("Documents"));
    if (!documents)
        return documents.error();
    const auto opened = (*documents)->call("Open", {path});
    if (!opened)
        return opened.error();
    return {};
}

} // namespace

void openDrawing(const OpenOrder& order, DialogWindow& window, HostServices& services,
                 const DialogSettings& settings)
{
    if (order.copy ? refusesText(order.target, window.messages())
                   : refusesDrawing(order.drawing, window.messages()))
        return;
    OpenRun(order, window, services, settings).run();
}

} // namespace zv
