#include "library/Newlib.h"

#include "controls/DriveBox.h"
#include "controls/DwgThumbnail.h"
#include "controls/FileList.h"
#include "controls/FolderList.h"
#include "controls/NamedControls.h"
#include "controls/PathList.h"
#include "controls/PictureButton.h"
#include "controls/Resizer.h"
#include "library/LibraryCombo.h"
#include "library/LibraryControls.h"
#include "library/SizeCount.h"
#include "window/MainWindow.h"
#include "window/OuterGeometry.h"

#include <QLineEdit>
#include <QPlainTextEdit>

#include <algorithm>

// The editor's controls and their places: which library on the left, its drawings on the right, the drawing
// in hand below.

namespace zv {
namespace {

constexpr int kLeastChoice = 150; ///< Width of the frames on the left: their captions are read whole.

/// The least height of a line of controls.
int rowHeight(const QWidget& window)
{
    return window.fontMetrics().height() + 5;
}

/// The narrowest width at which a label takes no more than two lines.
int widthForTwoLines(const QLabel& label)
{
    const int two = 2 * label.fontMetrics().lineSpacing();
    int width = label.fontMetrics().horizontalAdvance(label.text()) / 2;
    while (label.heightForWidth(width) > two)
        ++width;
    return width;
}

/// Gives a label smaller letters where its width asks for it.
void fitLetters(QLabel& label)
{
    QFont letters = label.parentWidget()->font();
    const int size = QFontInfo(letters).pixelSize();
    for (int pixels = size - 1;
         QFontMetrics(letters).horizontalAdvance(label.text()) > label.width() && pixels >= size * 4 / 5;
         --pixels)
        letters.setPixelSize(pixels);
    label.setFont(letters);
}

QLineEdit* shownText(const char* name, QWidget* parent)
{
    auto* text = named<QLineEdit>(name, parent);
    text->setReadOnly(true);
    // A number that is longer than the field begins where it is read.
    QObject::connect(text, &QLineEdit::textChanged, text, [text] { text->setCursorPosition(0); });
    return text;
}

} // namespace

Newlib::Newlib(Program& program) : Window(program, QStringLiteral("Newlib"), QStringLiteral("Library Editor"))
{
    makeLibraryChoice();
    makeDrawings();
    makeDetails();
    Command9 = libraryButton("Command9", QStringLiteral("&Save"), QStringLiteral("Apply Changes"), this);
    Command8 = libraryButton("Command8", QStringLiteral("&Reset"), QStringLiteral("Discard"), this);
    Command11 =
        libraryButton("Command11", QStringLiteral("&Done"), QStringLiteral("Close and Save Changes"), this);
    m_sizes = std::make_unique<SizeCount>(
        [this](std::int32_t total) { Text8->setText(QStringLiteral("%1 KB").arg(total)); });
    setTabOrders();
    placeControls();
    connectHandlers();
    setMinimumSize(kSmallestLibraryWindow);
    resize(kMainWindowDesign / kTwipsPerPixel);
}

void Newlib::makeLibraryChoice()
{
    FrameNew = namedFrame("FrameNew", QStringLiteral("Type New Library Name"), this);
    Text1 = named<QLineEdit>("Text1", FrameNew);
    Text1->setAccessibleName(tr("New library name"));
    Combo2 = named<LibraryCombo>("Combo2", FrameNew);
    LabelSelect = labelFor(Combo2, "LabelSelect", QStringLiteral("Or Select Existing Library"), FrameNew);

    FrameRename = namedFrame("FrameRename", QStringLiteral("Rename Library"), this);
    Combo1 = named<LibraryCombo>("Combo1", FrameRename);
    Combo1->setAccessibleName(tr("Library to rename"));
    Text2 = named<QLineEdit>("Text2", FrameRename);
    LabelTo = labelFor(Text2, "LabelTo", QStringLiteral("To"), FrameRename);
    Text2->setAccessibleName(tr("New name of the library"));
    Command4 = libraryButton("Command4", QStringLiteral("OK"), tr("Rename Library"), FrameRename);

    FrameDelete = namedFrame("FrameDelete", QStringLiteral("Delete Library"), this);
    Combo3 = named<LibraryCombo>("Combo3", FrameDelete);
    Combo3->setAccessibleName(tr("Library to delete"));
    Command6 = libraryButton("Command6", QStringLiteral("&Delete"), QStringLiteral("Delete Current Library"),
                             FrameDelete);

    FramePath = namedFrame("FramePath", QStringLiteral("Set Library Path"), this);
    Command14 = libraryButton("Command14", QStringLiteral("&Set Path"),
                              QStringLiteral("Set Path for Zelvora Libraries (*.lst)"), FramePath);
}

void Newlib::makeDrawings()
{
    FrameFiles = namedFrame("FrameFiles", QStringLiteral("Add Drawing Files:"), this);
    Drive1 = named<DriveBox>("Drive1", FrameFiles);
    Dir1 = named<FolderList>("Dir1", FrameFiles);
    File1 = named<FileList>("File1", FrameFiles, ".dwg");
    File1->setAccessibleName(tr("Drawing files in the folder"));
    chainLists(*Drive1, *Dir1, messages());
    chainLists(*Dir1, *File1);
    Command1 =
        libraryButton("Command1", QStringLiteral("Add"), QStringLiteral("Add file to list"), FrameFiles);
    Command2 = libraryButton("Command2", QStringLiteral("Remove"),
                             QStringLiteral("Remove selected file from list"), FrameFiles);
    Command3 = libraryButton("Command3", QStringLiteral("Remove All"),
                             QStringLiteral("Remove all files from list"), FrameFiles);
    int picture = 0;
    for (PictureButton* command : {Command1, Command2, Command3})
        command->setPicture(ImageList::d(), ++picture);
    Command7 =
        libraryButton("Command7", QStringLiteral("UP"), QStringLiteral("Move File Up in List"), FrameFiles);
    Command10 = libraryButton("Command10", QStringLiteral("DN"), QStringLiteral("Move File Down in List"),
                              FrameFiles);
    List1 = named<PathList>("List1", FrameFiles);
    List1->setAccessibleName(tr("Drawings of the library"));
    Text5 = named<QLineEdit>("Text5", FrameFiles);
    LabelLabel = labelFor(Text5, "LabelLabel", QStringLiteral("Drawing Label:"), FrameFiles);
    Command5 = libraryButton("Command5", QStringLiteral("OK"), QStringLiteral("Rename Label"), FrameFiles);
    Text7 = shownText("Text7", FrameFiles);
    LabelFiles = labelFor(Text7, "LabelFiles", QStringLiteral("Total Files:"), FrameFiles);
    Text8 = shownText("Text8", FrameFiles);
    LabelSize = labelFor(Text8, "LabelSize", QStringLiteral("Total Size:"), FrameFiles);
}

void Newlib::makeDetails()
{
    FramePreview = namedFrame("FramePreview", QStringLiteral("Drawing Preview"), this);
    DwgThumbnail1 = named<DwgThumbnail>("DwgThumbnail1", FramePreview);
    DwgThumbnail1->setAccessibleName(tr("Drawing preview"));
    DwgThumbnail1->setFocusPolicy(Qt::NoFocus);
    FrameProperties = namedFrame("FrameProperties", QStringLiteral("DWG Properties"), this);
    Text3 = shownLines("Text3", FrameProperties);
    Text3->setAccessibleName(tr("Drawing comments"));
    Text4 = shownLines("Text4", FrameProperties);
    LabelKeywords = labelFor(Text4, "LabelKeywords", tr("Keywords:"), FrameProperties);
    Text6 = shownText("Text6", FrameProperties);
    LabelFileSize = labelFor(Text6, "LabelFileSize", tr("File Size:"), FrameProperties);
    Command12 = libraryButton("Command12", QStringLiteral("&Edit"), QStringLiteral("Edit AutoCAD DWGPROPS"),
                              FrameProperties);
    LabelNote = named<QLabel>("LabelNote", FrameProperties);
    LabelNote->setText(QStringLiteral("Select the Edit button to modify DWGPROPS"));
    LabelNote->setWordWrap(true);
}

void Newlib::placeControls()
{
    Resizer1 = new Resizer(this, kMainWindowDesign / kTwipsPerPixel);
    Resizer1->setObjectName(QStringLiteral("Resizer1"));
    placeLibraryChoice();
    placeDrawings();
    placeDetails();
    int left = 449;
    for (PictureButton* command : {Command9, Command8, Command11}) {
        Resizer1->place(command, {left, 572, 80, 26}, {command->minimumSizeHint().width(), rowHeight(*this)});
        left += 88;
    }
}

void Newlib::placeLibraryChoice()
{
    const int row = rowHeight(*this);
    const QSize line(0, row), caption(0, FrameNew->naturalCaptionHeight() + 2);
    const QSize text(0, fontMetrics().height());
    int top = 8;
    for (const auto& [frame, height] :
         {std::pair(FrameNew, 106), std::pair(FrameRename, 88), std::pair(FrameDelete, 88),
          std::pair(FramePath, 58), std::pair(FramePreview, 184)}) {
        Resizer1->place(frame, {8, top, 190, height}, {kLeastChoice, 0});
        Resizer1->reserve(frame, {8, 0, 174, 22}, caption);
        top += height + 8;
    }
    Resizer1->place(Text1, {8, 22, 174, 26}, line);
    Resizer1->place(LabelSelect, {8, 52, 174, 18}, text);
    connect(Resizer1, &Resizer::resized, this, [this] { fitLetters(*LabelSelect); });
    Resizer1->place(Combo2, {8, 72, 174, 26}, line);
    Resizer1->place(Combo1, {8, 22, 174, 26}, line);
    Resizer1->place(LabelTo, {8, 54, 22, 26}, LabelTo->sizeHint());
    Resizer1->place(Text2, {34, 54, 96, 26}, line);
    Resizer1->place(Command4, {136, 54, 46, 26}, {Command4->minimumSizeHint().width(), row});
    Resizer1->place(Combo3, {8, 22, 174, 26}, line);
    Resizer1->place(Command6, {8, 54, 174, 26}, line);
    Resizer1->place(Command14, {8, 24, 174, 26}, line);
    Resizer1->place(DwgThumbnail1, {8, 22, 174, 154}, {0, 60});
}

void Newlib::placeDrawings()
{
    const int row = rowHeight(*this);
    const QSize line(0, row);
    const auto natural = [row](QWidget* control) { return QSize(control->minimumSizeHint().width(), row); };
    Resizer1->place(FrameFiles, {206, 8, 499, 364});
    Resizer1->reserve(FrameFiles, {8, 0, 483, 22}, {0, FrameFiles->naturalCaptionHeight() + 2});
    Resizer1->place(Drive1, {8, 22, 170, 26}, line);
    Resizer1->place(Dir1, {8, 54, 170, 128});
    Resizer1->place(File1, {8, 188, 170, 168});
    int top = 22;
    for (PictureButton* command : {Command1, Command2, Command3}) {
        Resizer1->place(command, {186, top, 114, 26}, natural(command));
        top += 32;
    }
    Resizer1->place(Command7, {186, 174, 114, 26}, line);
    Resizer1->place(Command10, {186, 206, 114, 26}, line);
    Resizer1->place(List1, {308, 22, 183, 210});
    Resizer1->place(LabelLabel, {186, 238, 305, 18}, {0, fontMetrics().height()});
    Resizer1->place(Text5, {186, 258, 251, 26}, line);
    Resizer1->place(Command5, {443, 258, 48, 26}, natural(Command5));
    Resizer1->place(LabelFiles, {186, 298, 114, 26}, {LabelFiles->sizeHint().width(), row});
    Resizer1->place(Text7, {308, 298, 183, 26}, line);
    Resizer1->place(LabelSize, {186, 330, 114, 26}, {LabelSize->sizeHint().width(), row});
    Resizer1->place(Text8, {308, 330, 183, 26}, line);
}

void Newlib::placeDetails()
{
    const int row = rowHeight(*this), letters = fontMetrics().height();
    const int caption = FrameProperties->naturalCaptionHeight() + 2, note = 2 * fontMetrics().lineSpacing();
    const int keywords = letters + 12; // A line of it, with the edges of the text.
    constexpr int kGaps = 6 * 3;
    Resizer1->place(FrameProperties, {206, 380, 499, 184},
                    {0, caption + letters + keywords + row + note + row + kGaps});
    Resizer1->reserve(FrameProperties, {8, 0, 483, 22}, {0, caption});
    Resizer1->place(Text3, {8, 22, 300, 154});
    Resizer1->place(LabelKeywords, {316, 22, 175, 18}, {0, letters});
    Resizer1->place(Text4, {316, 42, 175, 36}, {0, keywords});
    Resizer1->place(LabelFileSize, {316, 84, 72, 26}, {LabelFileSize->sizeHint().width(), row});
    Resizer1->place(Text6, {394, 84, 97, 26},
                    {fontMetrics().horizontalAdvance(QStringLiteral("99999 KB")) + 12, row});
    Resizer1->place(LabelNote, {316, 114, 175, 34}, {widthForTwoLines(*LabelNote), note});
    Resizer1->place(Command12, {421, 150, 70, 26}, {Command12->minimumSizeHint().width(), row});
}

void Newlib::setTabOrders()
{
    const QList<QWidget*> order{Text1,     Combo2,   Combo1,    Text2,     Command4, Combo3,   Command6,
                                Command14, Drive1,   Dir1,      File1,     Command1, Command2, Command3,
                                List1,     Command7, Command10, Text5,     Command5, Text7,    Text8,
                                Text3,     Text4,    Text6,     Command12, Command9, Command8, Command11};
    for (qsizetype i = 1; i < order.size(); ++i)
        setTabOrder(order[i - 1], order[i]);
}

void Newlib::connectHandlers()
{
    const auto on = [this](PictureButton* command, auto handler) {
        connect(command, &QPushButton::clicked, this, handler);
    };
    connect(Text1, &QLineEdit::textChanged, this, &Newlib::typeName);
    connect(Combo2, &LibraryCombo::gotFocus, this, &Newlib::enterExisting);
    connect(Combo2, &QComboBox::currentTextChanged, this, [this] { EditMode = ModeExisting; });
    connect(Combo2, &QComboBox::activated, this, &Newlib::chooseExisting);
    connect(Combo1, &QComboBox::activated, this, &Newlib::chooseRenamed);
    connect(Combo3, &QComboBox::activated, this, &Newlib::chooseDeleted);
    for (PathList* list : {static_cast<PathList*>(File1), List1}) {
        const auto click = list == List1 ? &Newlib::clickList : &Newlib::clickFile;
        connect(list, &PathList::rowSelected, this, click);
        connect(list, &PathList::rowClickedAgain, this, click);
    }
    // Selecting all by the keys leaves the row as it is.
    connect(File1, &QListWidget::itemSelectionChanged, this, [this] {
        if (!File1->selectedItems().isEmpty())
            Command1->setEnabled(true);
    });
    on(Command1, &Newlib::add);
    on(Command2, &Newlib::removeLine);
    on(Command3, &Newlib::removeAll);
    on(Command4, &Newlib::renameLibrary);
    on(Command5, &Newlib::relabel);
    on(Command6, &Newlib::deleteLibrary);
    on(Command7, [this] { move(-1); });
    on(Command10, [this] { move(1); });
    on(Command8, &Newlib::reset);
    on(Command9, &Newlib::save);
    on(Command11, &Newlib::done);
    on(Command12, &Newlib::editDrawing);
    on(Command14, &Newlib::setPath);
}

} // namespace zv
