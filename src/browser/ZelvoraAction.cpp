#include "browser/Zelvora.h"

#include "config/Keys.h"
#include "controls/DwgThumbnail.h"
#include "controls/PathList.h"
#include "controls/PictureButton.h"
#include "controls/SortedCombo.h"
#include "help/ProgramHelp.h"
#include "host/ActionProcedure.h"
#include "host/HostDialogs.h"
#include "platform/Text.h"
#include "window/TextBytes.h"

#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QRadioButton>

namespace zv {
namespace {

/// The main window as the action procedure sees it.
class MainActionWindow final : public ActionWindow {
public:
    explicit MainActionWindow(Zelvora& window) : m_window(window) {}

    void hideWindow() override { m_window.program().hide(m_window.objectName()); }
    void showWindow() override { m_window.program().show(m_window.objectName()); }
    void setDefaultPointer() override { m_window.unsetCursor(); }
    Messages& messages() override { return m_window.messages(); }

    ActionMode mode() const override
    {
        if (m_window.fields.queueMode == 1)
            return ActionMode::Queue;
        if (m_window.Option1->isChecked())
            return ActionMode::Block;
        if (m_window.Option2->isChecked())
            return ActionMode::Xref;
        return m_window.Option3->isChecked() ? ActionMode::OpenCopy : ActionMode::None;
    }
    bool autoScale() const override { return m_window.Check1->isChecked(); }
    bool explode() const override { return m_window.Check4->isChecked(); }
    std::string scaleText() const override { return toBytes(m_window.x->text()); }
    void setScaleText(const std::string& text) override
    {
        m_window.x->setText(toText(text));
        // Of a long number the front is the part that tells.
        m_window.x->setCursorPosition(0);
    }

    Result<std::string> firstCustomProperty(const std::string& drawing) override
    {
        DwgPropsX& props = m_window.fields.props;
        if (const auto loaded = props.load(drawing); !loaded)
            return loaded.error();
        return props.customProperty(0);
    }
    bool openXattach(const std::string& drawing, const std::string& storedScale) override
    {
        return zv::openXattach(m_window.program(), OpenedFrom::MainWindow, drawing, storedScale);
    }
    bool openCmode(const std::string& drawing) override
    {
        return zv::openCmode(m_window.program(), OpenedFrom::MainWindow, drawing);
    }
    void clearCartMark() override { m_window.fields.cartFromButton = 0; }
    void enableMainWindow() override { m_window.setEnabled(true); }

private:
    Zelvora& m_window;
};

} // namespace

// ---- doing something with a drawing

void Zelvora::runAction(ActionCaller caller, const std::string& drawing)
{
    const PublicValues& known = values();
    const ActionSettings settings{known.XbCheck != 0, known.Fds == 1, known.Acad2002 != 0};
    MainActionWindow window(*this);
    const auto done =
        zv::runAction(caller, drawing, fields.selectedDrawing, window, program().actionServices(), settings);
    if (!done)
        program().failUnchanged(done.error());
}

/// A cell that shows no drawing acts on nothing, whatever it has shown before.
void Zelvora::actOnCell(int cell)
{
    if (!fields.panels.showsLine(cell))
        return;
    runAction(cell == 1 ? ActionCaller::Thumbnail1 : ActionCaller::OtherThumbnail, fields.CellPath[cell]);
}

// Only these three cells are asked.
void Zelvora::actOnListFocus()
{
    for (int cell = 1; cell <= 3; ++cell) {
        if (DwgThumbnails[cell]->hasFocusRect()) {
            actOnCell(cell);
            return;
        }
    }
}

void Zelvora::tellWaiting(bool waiting)
{
    StatusBar1Panels[1]->setText(waiting ? tr("Waiting for AutoCAD") : QString());
}

// ---- leaving for another window

void Zelvora::openNewlib()
{
    profiles().write(keys::zelvora::del, "0");
    setEnabled(false);
    if (program().show(QStringLiteral("Newlib")))
        program().unload(objectName());
    else
        setEnabled(true);
}

/// Opens a window that brings this one back when it closes.
void Zelvora::openHiding(const QString& window)
{
    program().hide(objectName());
    if (!program().show(window))
        program().show(objectName());
}

void Zelvora::openSearch()
{
    const std::string library = toBytes(Combo1->currentText());
    if (findText(values().LoginName, library) != std::string::npos)
        fields.searchLibrary = library;
    program().show(QStringLiteral("Search"));
}

void Zelvora::openCart()
{
    if (fields.queueMode != 1)
        return;
    setEnabled(false);
    fields.cartFromButton = 1;
    Window* cart = program().load(QStringLiteral("Cart"));
    if (!cart) {
        setEnabled(true);
        return;
    }
    cart->setTopmost(true);
    program().show(QStringLiteral("Cart"));
}

void Zelvora::openHelp()
{
    showHelpContents(program());
}

} // namespace zv
