#include "browser/Zelvora.h"

#include "controls/CaptionFrame.h"
#include "controls/DwgThumbnail.h"
#include "controls/DwgViewX.h"
#include "controls/FlowLayout.h"
#include "controls/PathList.h"
#include "controls/PictureButton.h"
#include "controls/Resizer.h"
#include "controls/SortedCombo.h"
#include "window/OuterGeometry.h"

#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QRadioButton>
#include <QStatusBar>

#include <algorithm>
#include <array>
#include <cmath>

namespace zv {
namespace {

// What the size of Frame4 is divided by for the size and the places of the cells.
constexpr double kCellWidth = 5.25;
constexpr double kCellHeight = 4.3;
constexpr std::array<double, kColumns> kColumnLeft{43.0, 4.67, 2.465, 1.675, 1.27};
constexpr std::array kRowTop{21.5, 3.55, 1.94, 1.334};

constexpr int kCaptionMargins = 32; ///< Round the caption of a frame, in its width.

// Heights in pixels.
constexpr int kFrameMargins = 12;
constexpr int kLeastBox = 90;          ///< Width in which the name of a library can be told.
constexpr int kNarrow = 290;           ///< Width of a window whose tabs need every pixel.
constexpr int kPage = 40;              ///< Of the tools, with their captions left out.
constexpr int kLowPage = 26;           ///< The same where every pixel counts.
constexpr int kLowestWithStatus = 260; ///< What stands above the action area, and the status bar.

int part(int whole, double divisor)
{
    return int(std::lround(whole / divisor));
}

/// Captions below the pictures of a page are shown when there is room for each of them, else none is.
void showCaptionsTogether(const QObjectList& page)
{
    QList<PictureButton*> buttons;
    for (QObject* child : page)
        if (auto* button = qobject_cast<PictureButton*>(child))
            buttons.append(button);
    const bool room = std::all_of(buttons.cbegin(), buttons.cend(), [](const PictureButton* button) {
        return button->width() >= button->sizeHint().width() &&
               button->height() >= button->sizeHint().height();
    });
    for (PictureButton* button : buttons)
        button->setCaptionShown(room);
}

} // namespace

void Zelvora::placeControls()
{
    Resizer1 = new Resizer(this, kMainWindowDesign / kTwipsPerPixel);
    Resizer1->setObjectName(QStringLiteral("Resizer1"));
    const auto place = [this](QWidget* control, int left, int top, int width, int height,
                              QSize least = {0, 0}) {
        Resizer1->place(control, {left, top, width, height}, least);
    };
    const int row = std::max(22, fontMetrics().height() + 8);
    const QSize line(0, row);
    const auto natural = [row](QWidget* control) { return QSize(control->sizeHint().width(), row); };

    place(Picture5, 8, 4, 88, 28, Picture5->minimumSizeHint());
    place(Picture9, 96, 4, 88, 28, Picture9->minimumSizeHint());
    place(Picture13, 573, 4, 92, 26, natural(Check2) + QSize(8, 0));
    place(Check2, 4, 2, 86, 22, natural(Check2));
    place(Picture12, 675, 4, 30, 26, Picture12->minimumSizeHint());

    for (QWidget* page : {Picture3, Picture14})
        place(page, 8, 32, 697, 60, {0, 40});
    int left = 4;
    for (PictureButton* tool : {Command12, Command21, Command16, Command22, Command15, Command13, Command14,
                                Command10, Command18}) {
        place(tool, left, 2, 62, 56, tool->minimumSizeHint());
        left += 66;
    }
    left = 4;
    for (PictureButton* setting : {Command1, Command8, Command9, Command7, Command5}) {
        place(setting, left, 2, 112, 56, setting->minimumSizeHint());
        left += 116;
    }
    for (PictureBox* logo : {Picture2, Picture11})
        place(logo, 620, 4, 72, 52, logo->minimumSizeHint());

    place(LibraryRow, 8, 100, 466, 26, line);
    for (QWidget* view : std::initializer_list<QWidget*>{Frame4, Frame8})
        place(view, 8, 132, 466, 350, {100, 64});
    place(Labelx, 60, 120, 346, 120);
    place(DwgViewX1, 8, 22, 450, 320);
    place(TurnRow, 8, 488, 466, 26, line);

    // The caption in the upper edge of a frame keeps its height.
    const QSize caption(0, Frame1->naturalCaptionHeight() + 2);
    for (QWidget* frame : std::initializer_list<QWidget*>{Frame1, Frame2, Frame8})
        Resizer1->reserve(frame, {8, 0, 207, 22}, caption);
    place(Frame1, 482, 100, 223, 216);
    place(List1, 8, 22, 207, 186);
    place(Frame2, 482, 322, 223, 192);
    place(Text1, 8, 22, 207, 162);

    place(Picture4, 8, 518, 697, 60);
    place(StatusBar1, 0, 582, 713, 24, line);
}

/// In a narrow window the action area takes more lines, and in a low one the list keeps two rows, for which
/// what tells least makes room.
void Zelvora::fitToRoom()
{
    const int room =
        width() * Resizer1->designPlace(Picture4).width() * kTwipsPerPixel / kMainWindowDesign.width();
    Resizer1->setLeast(Picture4, {0, ActionRows->heightForWidth(room)});

    const int row = fontMetrics().height() + 2;
    const int list = List1->heightOfTwoRows();
    const int frame = Frame1->naturalCaptionHeight() + kFrameMargins + list;
    // The longer of the two captions is cut before the panel is.
    const QString& caption = width() < kNarrow ? Frame1->title() : Frame2->title();
    const int captions = Frame1->fontMetrics().horizontalAdvance(caption) + kCaptionMargins;
    Resizer1->setLeast(Frame1, {captions, frame});
    Resizer1->setLeast(Frame2, {captions, 0});
    Resizer1->setLeast(List1, {0, list});
    // The box of libraries is worth more than the word before it, and so are the tabs than a mark's.
    const int rowWidth =
        width() * Resizer1->designPlace(LibraryRow).width() * kTwipsPerPixel / kMainWindowDesign.width();
    LabelLibrary->setVisible(rowWidth >
                             LabelLibrary->sizeHint().width() + Command4->sizeHint().width() + kLeastBox);
    Check2->setText(width() < kNarrow ? QString() : tr("On top"));
    const QSize mark(Check2->sizeHint().width(), row + 6);
    Resizer1->setLeast(Check2, mark);
    Resizer1->setLeast(Picture13, mark + QSize(8, 0));
    const bool low = height() < kLowestWithStatus + ActionRows->heightForWidth(room);
    StatusBar1->setVisible(!low);
    Resizer1->setLeast(StatusBar1, {0, low ? 0 : std::max(22, row + 6)});
    for (QWidget* page : {Picture3, Picture14})
        Resizer1->setLeast(page, {0, low ? kLowPage : kPage});
}

void Zelvora::setDesignSize(QSize twips)
{
    Resizer1->setDesignSize(twips / kTwipsPerPixel);
}

void Zelvora::layOutCells()
{
    for (int cell = 1; cell <= kPanelCells; ++cell) {
        const std::size_t column = std::size_t(cell - 1) % kColumnLeft.size();
        const std::size_t gridRow = std::size_t(cell - 1) / kColumnLeft.size();
        DwgThumbnails[cell]->setGeometry(
            part(Frame4->width(), kColumnLeft[column]), part(Frame4->height(), kRowTop[gridRow]),
            part(Frame4->width(), kCellWidth), part(Frame4->height(), kCellHeight));
    }
    Frame4->setCaptionHeight(part(Frame4->height(), kRowTop[0]));
    showCaptionsTogether(Picture3->children());
    showCaptionsTogether(Picture14->children());
    if (fields.panels.isEnlarged())
        DwgViewX1->zoomExtents();
}

} // namespace zv
