#include "browser/Zelvora.h"

#include "config/Keys.h"
#include "config/PublicValues.h"
#include "controls/DwgThumbnail.h"
#include "controls/DwgViewX.h"
#include "controls/PathList.h"
#include "controls/PictureButton.h"
#include "library/ListFile.h"
#include "window/TextBytes.h"

#include <QCheckBox>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMouseEvent>
#include <QPlainTextEdit>
#include <QRadioButton>

#include <algorithm>

namespace zv {
namespace {

constexpr int kBlack = 0;
constexpr int kWhite = 0xFFFFFF;
const QColor kScaleGround(0xFE, 0xFC, 0xF0); ///< A pale cream, whatever the palette is.

/// What an option makes of the action button.
struct ModeWords {
    const char* caption;
    const char* toolTip;
};
constexpr std::array<ModeWords, 4> kModeWords{{
    {"&Insert", "Insert as Block"},
    {"&Xref", "Insert Drawing as Xref"},
    {"&Open", "Open Selected File or Copy File then Open"},
    {"&Add", "Add to Drawing Queue"},
}};

void setBold(QWidget* control, bool bold)
{
    QFont font = control->font();
    font.setBold(bold);
    control->setFont(font);
}

} // namespace

// ---- selecting a cell

void Zelvora::clearSelectionMarks()
{
    markCell(0);
}

/// Makes this cell the white one and all others black; 0 makes all of them black.
void Zelvora::markCell(int marked)
{
    for (int cell = 1; cell <= kPanelCells; ++cell)
        if (cell != marked)
            DwgThumbnails[cell]->setBitmapBackColor(kBlack);
    for (int cell = 1; cell <= kPanelCells; ++cell)
        if (cell != marked)
            DwgThumbnails[cell]->setBackColor(kBlack);
    if (marked == 0)
        return;
    DwgThumbnails[marked]->setBitmapBackColor(kWhite);
    DwgThumbnails[marked]->setBackColor(kWhite);
}

/// `line` is the cell's line in the library, from 1.
void Zelvora::selectCell(int cell, int line)
{
    fields.panels.FocusCell = std::int16_t(cell);
    markCell(cell);
    if (!fields.panels.isEnlarged())
        Command12->setEnabled(true);
    readSelection(cell, line);
}

/// Reads the library up to the selected drawing. Whatever fails on the way ends the reading, with nothing
/// told: a list that is gone or has become shorter, properties that cannot be read, and the closing of every
/// file by the selection of the row, which has by then done all this itself.
void Zelvora::readSelection(int cell, int target)
{
    const auto list = readListFile(fields.LibraryPath);
    if (!list || target > int(list->size()))
        return;
    const unsigned filesClosed = fields.filesClosed;
    int line = 0;
    bool noted = false;
    for (const ListLine& entry : *list) {
        if (filesClosed != fields.filesClosed)
            return;
        ++line;
        fields.LinePath = entry.path;
        // The panel's number, not the target, is where the row is set.
        if (line == int(fields.panels.CurrentPage)) {
            // A line that was added since the labels were listed has no row, but it is what the cell shows.
            List1->setCurrentRow(target <= List1->count() ? target - 1 : -1);
            noted = true;
        }
        if (!noted || line != target)
            continue;
        fields.selectedDrawing = fields.LinePath;
        if (!showDrawingInformation(fields.selectedDrawing)) {
            // The label is the new drawing's, so the one before it must not stay in sight.
            if (fields.panels.isEnlarged())
                DwgViewX1->setDrawing({});
            return;
        }
        if (fields.panels.isEnlarged() && !reloadViewer())
            return;
        // Cell 1 reads on to the end on every panel but the first; nothing comes of it.
        if (cell != 1 || target == 1)
            return;
    }
}

/// False when the properties cannot be read; Text1 is as it was then.
bool Zelvora::showDrawingInformation(const std::string& path)
{
    if (!fields.props.load(path))
        return false;
    Text1->setPlainText(toText("Drawing Name: " + path + "\r\n\r\n" + fields.props.comments()));
    return true;
}

// ---- the focus among the cells

void Zelvora::keyPressEvent(QKeyEvent* event)
{
    if (event->modifiers() & ~Qt::KeypadModifier || !moveCellFocus(event->key()))
        Window::keyPressEvent(event);
}

/// False when no cell has the focus, or the key leads nowhere.
bool Zelvora::moveCellFocus(int key)
{
    const auto focused = std::find(DwgThumbnails.begin() + 1, DwgThumbnails.end(), focusWidget());
    if (focused == DwgThumbnails.end())
        return false;
    const int cell = int(focused - DwgThumbnails.begin());
    const int column = (cell - 1) % kColumns;
    int target = 0;
    if (key == Qt::Key_Left && column > 0)
        target = cell - 1;
    else if (key == Qt::Key_Right && column < kColumns - 1)
        target = cell + 1;
    else if (key == Qt::Key_Up)
        target = cell - kColumns;
    else if (key == Qt::Key_Down)
        target = cell + kColumns;
    if (target < 1 || target > kPanelCells || !DwgThumbnails[target]->isVisible())
        return false;
    DwgThumbnails[target]->setFocus(Qt::TabFocusReason);
    return true;
}

// ---- the mode options

Zelvora::Mode Zelvora::mode() const
{
    if (Option2->isChecked())
        return Mode::Xref;
    if (Option3->isChecked())
        return Mode::OpenCopy;
    return Option4->isChecked() ? Mode::Queue : Mode::Block;
}

void Zelvora::setOption(Mode chosen)
{
    const bool block = chosen == Mode::Block;
    writeSetting(keys::zelvora::insertmode, std::to_string(int(chosen)));
    markOption(chosen);
    Check1->setEnabled(block);
    Label1->setEnabled(block);
    Check4->setEnabled(block);
    x->setEnabled(block);
    if (block)
        setScaleGround(true);
    Command24->setVisible(chosen == Mode::Queue);
    const ModeWords& words = kModeWords[std::size_t(chosen)];
    Command11->setText(QLatin1String(words.caption));
    Command11->setToolTip(QLatin1String(words.toolTip));
    fields.queueMode = chosen == Mode::Queue ? 1 : 0;
    resetPictures();
    if (!block)
        return;
    if (Check1->isChecked())
        setScaleEnabled(false);
    lockScaleOnce();
}

/// Makes the caption of one option bold and those of the others not.
void Zelvora::markOption(Mode chosen)
{
    setBold(Option1, chosen == Mode::Block);
    setBold(Option2, chosen == Mode::Xref);
    setBold(Option3, chosen == Mode::OpenCopy);
    setBold(Option4, chosen == Mode::Queue);
}

void Zelvora::setScaleEnabled(bool enabled)
{
    x->setEnabled(enabled);
    Label1->setEnabled(enabled);
    setScaleGround(enabled);
}

void Zelvora::setScaleGround(bool inUse)
{
    QPalette colors = palette();
    if (inUse) {
        // The ground is the same in a dark palette, so the text on it has to be dark there too.
        colors.setColor(QPalette::Base, kScaleGround);
        colors.setColor(QPalette::Text, Qt::black);
        colors.setColor(QPalette::Disabled, QPalette::Text, Qt::gray);
    } else {
        colors.setColor(QPalette::Base, colors.color(QPalette::Button));
    }
    x->setPalette(colors);
}

void Zelvora::lockScaleOnce()
{
    if (fields.OneShotScaleLock != 1)
        return;
    x->setEnabled(false);
    fields.OneShotScaleLock = 0;
}

// ---- the check boxes and the scale

void Zelvora::setAutoScale(bool on)
{
    writeSetting(keys::zelvora::writeAutoScale, on ? "1" : "0");
    setScaleEnabled(!on);
    lockScaleOnce();
}

void Zelvora::setAlwaysOnTop(bool on)
{
    writeSetting(keys::zelvora::AOT, on ? "1" : "0");
    values().AlwaysOnTop = on ? 1 : 0;
    setTopmost(on);
}

void Zelvora::setExplode(bool on)
{
    writeSetting(keys::zelvora::XPmode, on ? "1" : "0");
}

bool Zelvora::eventFilter(QObject* watched, QEvent* event)
{
    // The text is stored as it stands before the key does its work.
    if (watched == x && event->type() == QEvent::KeyPress)
        writeSetting(keys::zelvora::XYZ, toBytes(x->text()));
    if (watched == Picture13 && event->type() == QEvent::MouseButtonRelease &&
        static_cast<QMouseEvent*>(event)->button() == Qt::LeftButton &&
        Picture13->rect().contains(static_cast<QMouseEvent*>(event)->position().toPoint()))
        Check2->toggle();
    return Window::eventFilter(watched, event);
}

} // namespace zv
