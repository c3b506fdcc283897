#include "library/MyLib.h"

#include "controls/DwgThumbnail.h"
#include "controls/NamedControls.h"
#include "controls/PathList.h"
#include "controls/PictureButton.h"
#include "controls/Resizer.h"
#include "help/ProgramHelp.h"
#include "library/LibraryControls.h"
#include "window/MainWindow.h"
#include "window/OuterGeometry.h"

#include <QComboBox>
#include <QLineEdit>
#include <QPlainTextEdit>

#include <algorithm>
#include <limits>

// The controls of the favourites and their places: the office's drawings on the left, the user's own on the
// right, the drawing in hand below.

namespace zv {
namespace {

constexpr int kLeastExternal = 128; ///< Width at which the frame's caption is read whole.

} // namespace

MyLib::MyLib(Program& program) : Window(program, QStringLiteral("MyLib"), QStringLiteral("MyLib"))
{
    makeLists();
    makeDetails();
    Command6 = libraryButton("Command6", QStringLiteral("&Help"), QStringLiteral("Zelvora Help Menu"), this);
    Command11 =
        libraryButton("Command11", QStringLiteral("&Ok"), QStringLiteral("Close and Save Changes"), this);
    Command8 = libraryButton("Command8", QStringLiteral("&Cancel"), QStringLiteral("Discard"), this);
    setTabOrders();
    placeControls();
    connectHandlers();
    setMinimumSize(kSmallestLibraryWindow);
    resize(kMainWindowDesign / kTwipsPerPixel);
    Combo1->setFocus();
}

void MyLib::makeLists()
{
    FrameSource = namedFrame("FrameSource", QStringLiteral("Select Library"), this);
    Combo1 = named<QComboBox>("Combo1", FrameSource);
    Combo1->setEditable(true);
    Combo1->setInsertPolicy(QComboBox::NoInsert);
    // What is typed is taken as it stands.
    Combo1->setCompleter(nullptr);
    Combo1->setMaxCount(std::numeric_limits<int>::max());
    Combo1->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    Combo1->setMinimumContentsLength(8);
    Combo1->setAccessibleName(tr("Library"));
    disconnect(Combo1->lineEdit(), &QLineEdit::editingFinished, Combo1, nullptr);
    List2 = named<PathList>("List2", FrameSource);
    List2->setSelectionMode(QAbstractItemView::ExtendedSelection);
    List2->setAccessibleName(tr("Drawings of the library"));

    Command1 =
        libraryButton("Command1", QStringLiteral("Add"), tr("Add the selected drawings to MyLib"), this);
    Command2 = libraryButton("Command2", QStringLiteral("Remove"),
                             tr("Remove the selected drawing from MyLib"), this);
    Command3 =
        libraryButton("Command3", QStringLiteral("Remove All"), tr("Remove all drawings from MyLib"), this);
    int picture = 0;
    for (PictureButton* command : {Command1, Command2, Command3})
        command->setPicture(ImageList::d(), ++picture);
    FrameExternal = namedFrame("FrameExternal", QStringLiteral("Add External Files:"), this);
    Command4 = libraryButton("Command4", QStringLiteral("&Browse"),
                             tr("Add a drawing from any folder to MyLib"), FrameExternal);

    FrameMine = namedFrame("FrameMine", QStringLiteral("MyLib For User"), this);
    Text1 = named<QLineEdit>("Text1", FrameMine);
    Text1->setReadOnly(true);
    Text1->setAccessibleName(tr("MyLib for user"));
    List1 = named<PathList>("List1", FrameMine);
    List1->setAccessibleName(tr("Drawings of MyLib"));
    Text4 = named<QLineEdit>("Text4", FrameMine);
    LabelLabel = labelFor(Text4, "LabelLabel", tr("Drawing Label:"), FrameMine);
    Command5 = libraryButton("Command5", QStringLiteral("O&k"), tr("Rename Label"), FrameMine);
}

void MyLib::makeDetails()
{
    FrameInfo = namedFrame("FrameInfo", QStringLiteral("Drawing Info"), this);
    DwgThumbnail1 = named<DwgThumbnail>("DwgThumbnail1", FrameInfo);
    DwgThumbnail1->setAccessibleName(tr("Drawing preview"));
    DwgThumbnail1->setFocusPolicy(Qt::NoFocus);
    Text3 = shownLines("Text3", FrameInfo);
    LabelComments = labelFor(Text3, "LabelComments", QStringLiteral("Drawing Comments:"), FrameInfo);
    Text2 = shownLines("Text2", FrameInfo);
    LabelKeywords = labelFor(Text2, "LabelKeywords", QStringLiteral("Keywords:"), FrameInfo);
}

void MyLib::placeControls()
{
    Resizer1 = new Resizer(this, kMainWindowDesign / kTwipsPerPixel);
    Resizer1->setObjectName(QStringLiteral("Resizer1"));
    const int row = std::max(22, fontMetrics().height() + 8);
    const int letters = fontMetrics().height();
    const QSize line(0, row);
    const auto natural = [row](QWidget* control) { return QSize(control->minimumSizeHint().width(), row); };
    const auto frame = [this](CaptionFrame* box, const QRect& design) {
        Resizer1->place(box, design);
        Resizer1->reserve(box, {8, 0, design.width() - 16, 22}, {0, box->naturalCaptionHeight() + 2});
    };
    frame(FrameSource, {8, 8, 264, 344});
    Resizer1->place(Combo1, {8, 22, 248, 26}, line);
    Resizer1->place(List2, {8, 56, 248, 280});

    int top = 64;
    for (PictureButton* command : {Command1, Command2, Command3}) {
        Resizer1->place(command, {280, top, 153, 26}, natural(command));
        top += 34;
    }
    frame(FrameExternal, {280, 294, 153, 58});
    Resizer1->setLeast(FrameExternal, {kLeastExternal, 0});
    Resizer1->place(Command4, {8, 24, 137, 26}, natural(Command4));

    frame(FrameMine, {441, 8, 264, 344});
    Resizer1->place(Text1, {8, 22, 248, 26}, line);
    Resizer1->place(List1, {8, 56, 248, 226});
    Resizer1->place(LabelLabel, {8, 288, 248, 18}, {0, letters});
    Resizer1->place(Text4, {8, 310, 194, 26}, line);
    Resizer1->place(Command5, {208, 310, 48, 26}, natural(Command5));

    frame(FrameInfo, {8, 360, 697, 204});
    Resizer1->place(DwgThumbnail1, {8, 22, 208, 174}, {60, 60});
    Resizer1->place(LabelComments, {224, 22, 465, 18}, {0, letters});
    Resizer1->place(Text3, {224, 42, 465, 78});
    Resizer1->place(LabelKeywords, {224, 124, 465, 18}, {0, letters});
    Resizer1->place(Text2, {224, 144, 465, 52});

    int left = 449;
    for (PictureButton* command : {Command6, Command11, Command8}) {
        Resizer1->place(command, {left, 572, 80, 26}, natural(command));
        left += 88;
    }
}

void MyLib::setTabOrders()
{
    const QList<QWidget*> order{Combo1, List2,    Command1, Command2, Command3, Command4,  Text1,   List1,
                                Text4,  Command5, Text3,    Text2,    Command6, Command11, Command8};
    for (qsizetype i = 1; i < order.size(); ++i)
        setTabOrder(order[i - 1], order[i]);
}

void MyLib::connectHandlers()
{
    const auto on = [this](PictureButton* command, auto handler) {
        connect(command, &QPushButton::clicked, this, handler);
    };
    connect(Combo1, &QComboBox::activated, this, &MyLib::chooseLibrary);
    connect(Combo1->lineEdit(), &QLineEdit::returnPressed, this, &MyLib::chooseLibrary);
    for (PathList* list : {List2, List1}) {
        const auto click = list == List1 ? &MyLib::clickMine : &MyLib::clickSource;
        connect(list, &PathList::rowSelected, this, click);
        connect(list, &PathList::rowClickedAgain, this, click);
    }
    on(Command1, &MyLib::add);
    on(Command2, &MyLib::removeLine);
    on(Command3, &MyLib::removeAll);
    on(Command4, &MyLib::browse);
    on(Command5, &MyLib::relabel);
    on(Command6, [this] { showHelpContents(program()); });
    on(Command11, &MyLib::closeByButton);
    on(Command8, &MyLib::closeByButton);
}

} // namespace zv
