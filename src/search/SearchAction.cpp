#include "config/Keys.h"
#include "config/PublicValues.h"
#include "controls/PathList.h"
#include "host/ActionProcedure.h"
#include "host/HostDialogs.h"
#include "platform/Text.h"
#include "search/Search.h"
#include "window/MainWindow.h"
#include "window/TextBytes.h"

#include <QCheckBox>
#include <QLineEdit>
#include <QRadioButton>

namespace zv {
namespace {

/// The search window as the action procedure sees it.
class SearchActionWindow final : public ActionWindow {
public:
    explicit SearchActionWindow(Search& window) : m_window(window) {}

    void hideWindow() override { program().hide(m_window.objectName()); }
    void showWindow() override
    {
        // One that was closed meanwhile stays closed.
        if (program().loaded(m_window.objectName()))
            program().show(m_window.objectName());
    }
    void setDefaultPointer() override { m_window.unsetCursor(); }
    Messages& messages() override { return m_window.messages(); }

    ActionMode mode() const override
    {
        if (m_window.Option4->isChecked())
            return ActionMode::Queue;
        if (m_window.Option2->isChecked())
            return ActionMode::Block;
        if (m_window.Option1->isChecked())
            return ActionMode::Xref;
        return m_window.Option3->isChecked() ? ActionMode::OpenCopy : ActionMode::None;
    }
    bool autoScale() const override { return m_window.Check2->isChecked(); }
    bool explode() const override { return m_window.Check3->isChecked(); }
    std::string scaleText() const override { return toBytes(m_window.Text3->text()); }
    void setScaleText(const std::string& text) override
    {
        m_window.Text3->setText(toText(text));
        // Of a long number the front is the part that tells.
        m_window.Text3->setCursorPosition(0);
    }

    Result<std::string> firstCustomProperty(const std::string& drawing) override
    {
        if (const auto loaded = m_window.drawingProps.load(drawing); !loaded)
            return loaded.error();
        return m_window.drawingProps.customProperty(0);
    }
    bool openXattach(const std::string& drawing, const std::string& storedScale) override
    {
        return zv::openXattach(program(), OpenedFrom::Search, drawing, storedScale);
    }
    bool openCmode(const std::string& drawing) override
    {
        return zv::openCmode(program(), OpenedFrom::Search, drawing);
    }
    // Only the main window opens Cart, so the mark is none of this window's.
    void clearCartMark() override {}
    void enableMainWindow() override
    {
        if (MainWindow* window = mainWindow(program()))
            window->setEnabled(true);
    }

private:
    Program& program() const { return m_window.program(); }

    Search& m_window;
};

} // namespace

void Search::actOnChosen()
{
    fields.searchDrawing = chosen();
    fields.cmodeState = std::int16_t(OpenedFrom::Search);
    if (fields.searchDrawing.empty()) {
        messages().show({"Please Select a Drawing File", "No File Selected", MessageIcon::Information});
        return;
    }
    runAction();
}

void Search::actOnDoubleClick()
{
    fields.searchDrawing = chosen();
    runAction();
}

void Search::runAction()
{
    const std::string drawing = fields.searchDrawing;
    // The main window's choice follows what is placed from here.
    if (!Option4->isChecked())
        fields.selectedDrawing = drawing;
    const PublicValues& known = values();
    const ActionSettings settings{known.XbCheck != 0, known.Fds == 1, known.Acad2002 != 0};
    SearchActionWindow window(*this);
    const auto done =
        zv::runAction(ActionCaller::Search, drawing, drawing, window, program().actionServices(), settings);
    if (!done)
        program().failUnchanged(done.error());
}

} // namespace zv
