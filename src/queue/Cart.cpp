#include "queue/Cart.h"

#include "config/PublicValues.h"
#include "controls/CaptionFrame.h"
#include "controls/DwgThumbnail.h"
#include "controls/ImageList.h"
#include "controls/NamedControls.h"
#include "controls/PathList.h"
#include "platform/Files.h"
#include "queue/QueueFile.h"
#include "window/MainWindow.h"
#include "window/TextBytes.h"

#include <QGridLayout>
#include <QLabel>
#include <QPlainTextEdit>

namespace zv {
namespace {

constexpr int kWidestButton = 110;

} // namespace

Cart::Cart(Program& program) : Window(program, QStringLiteral("Cart"), QStringLiteral("Drawing Queue"))
{
    makeControls();
    layOut();
    connect(List1, &PathList::rowSelected, this, &Cart::showSelected);
    connect(List1, &PathList::rowClickedAgain, this, &Cart::showSelected);
    connect(Command5, &QPushButton::clicked, this, &Cart::removeSelected);
    connect(Command1, &QPushButton::clicked, this, &Cart::reset);
    connect(Command11, &QPushButton::clicked, this, &Cart::copy);
    connect(Command2, &QPushButton::clicked, this, &Cart::save);
    connect(Command3, &QPushButton::clicked, this, [this] { this->program().unload(objectName()); });
}

void Cart::makeControls()
{
    Frame1 = named<CaptionFrame>("Frame1", this);
    Frame1->setTitle(QStringLiteral("Items in the Drawing Queue"));
    List1 = named<PathList>("List1", Frame1);
    List1->setAccessibleName(Frame1->title());
    DwgThumbnail1 = named<DwgThumbnail>("DwgThumbnail1", this);
    Text1 = named<QPlainTextEdit>("Text1", this);
    Text1->setReadOnly(true);
    Text1->setTabChangesFocus(true);
    Text1->setToolTip(QStringLiteral("Drawing comments"));
    Text1->setAccessibleName(Text1->toolTip());
    Frame2 = named<CaptionFrame>("Frame2", this);
    Frame2->setTitle(QStringLiteral("Selection"));
    Command5 = namedButton("Command5", QStringLiteral("&Remove"), Frame2,
                           QStringLiteral("Remove Items from the Drawing Queue"));
    Command1 =
        namedButton("Command1", QStringLiteral("Re&set"), Frame2, QStringLiteral("Clear All Items in Queue"));
    Command11 = namedButton("Command11", QStringLiteral("&Copy"), Frame2,
                            QStringLiteral("Copy files to Project Folder"));
    Command2 =
        namedButton("Command2", QStringLiteral("&Ok"), Frame2, QStringLiteral("Save & Close Shopping Cart"));
    Command3 = namedButton("Command3", QStringLiteral("Ca&ncel"), Frame2,
                           QStringLiteral("Quit and Close Shopping Cart"));
    Picture2 = named<QLabel>("Picture2", this);
    Picture2->setToolTip(QStringLiteral("Double Click for About Zelvora"));
    Picture2->setPixmap(namedPicture(QStringLiteral("logo")).pixmap(48, 36));
    Picture2->setAlignment(Qt::AlignCenter);
}

void Cart::layOut()
{
    auto* const inList = new QVBoxLayout(Frame1);
    inList->setContentsMargins(8, 8, 8, 8);
    inList->addWidget(List1);

    auto* const inSelection = new QHBoxLayout(Frame2);
    inSelection->setContentsMargins(8, 8, 8, 8);
    inSelection->setSpacing(8);
    for (QPushButton* control : {Command5, Command1, Command11, Command2, Command3}) {
        // Five of them stand side by side in a small window, too.
        control->setMinimumWidth(control->fontMetrics().horizontalAdvance(control->text()) + 16);
        control->setMaximumWidth(kWidestButton);
        inSelection->addWidget(control, 1);
    }
    // What ends the window stands apart from what works on the list.
    inSelection->insertStretch(3);

    auto* const about = new QVBoxLayout;
    about->setSpacing(8);
    about->addWidget(DwgThumbnail1, 1);
    about->addWidget(Text1, 1);

    auto* const below = new QHBoxLayout;
    below->setSpacing(8);
    below->addWidget(Frame2, 1);
    below->addWidget(Picture2);

    auto* const grid = new QGridLayout(this);
    grid->setContentsMargins(8, 8, 8, 8);
    grid->setSpacing(8);
    grid->addWidget(Frame1, 0, 0);
    grid->addLayout(about, 0, 1);
    grid->addLayout(below, 1, 0, 1, 2);
    grid->setColumnStretch(0, 3);
    grid->setColumnStretch(1, 2);
    grid->setRowStretch(0, 1);
    resize(640, 440);
}

std::string Cart::path() const
{
    return queuePath(program().folders().user, values().LoginName);
}

void Cart::load()
{
    stayOnTop();
    if (!fileExists(path())) {
        // Another program of the user may have begun it meanwhile, or it is there and cannot be asked for.
        const auto made = createFile(path(), {});
        if (!made && made.error().code != ErrorCode::Busy) {
            program().fail(namingFile(path(), made.error()));
            return;
        }
    }
    const auto queued = readQueue(path());
    if (!queued) {
        program().fail(namingFile(path(), queued.error()));
        return;
    }
    QStringList rows;
    for (const std::string& drawing : *queued)
        rows << toText(drawing);
    const BrowserFields& fields = program().fields();
    if (isQueuedPath(fields.selectedDrawing) && fields.cartFromButton == 0)
        rows << toText(fields.selectedDrawing);
    List1->addItemsWithExtent(rows);
    List1->setFocus();
}

void Cart::unloading()
{
    if (MainWindow* main = mainWindow(program())) {
        main->setEnabled(true);
        main->activateWindow();
    }
}

std::vector<std::string> Cart::drawings() const
{
    std::vector<std::string> all;
    for (int row = 0; row < List1->count(); ++row)
        all.push_back(toBytes(List1->item(row)->text()));
    return all;
}

void Cart::showSelected()
{
    const std::string drawing = toBytes(List1->currentItem()->text());
    DwgPropsX& props = program().fields().props;
    const bool shown = bool(DwgThumbnail1->setDrawing(drawing));
    if (shown && props.load(drawing)) {
        Text1->setPlainText(toText(drawing + "\n\n" + props.comments()));
        return;
    }
    DwgThumbnail1->setDwgFileName(toText(joinPath(program().folders().installation, "failed.dwg")));
    Text1->setPlainText(toText(drawing));
}

void Cart::removeSelected()
{
    if (List1->currentRow() < 0)
        return;
    // No row takes the place of the one that goes.
    const int row = List1->currentRow();
    List1->setCurrentRow(-1);
    delete List1->takeItem(row);
    Text1->clear();
    DwgThumbnail1->setDwgFileName({});
}

void Cart::reset()
{
    if (!messages().ask({"Clear all items in Drawing Queue?", "Reset Drawing Queue", MessageIcon::Question}))
        return;
    List1->clear();
    Text1->clear();
    DwgThumbnail1->setDwgFileName({});
}

void Cart::copy()
{
    setEnabled(false);
    if (Window* window = program().load(QStringLiteral("CartCopy"))) {
        window->stayOnTop();
        program().show(window->objectName());
    } else {
        setEnabled(true);
    }
}

void Cart::save()
{
    if (const auto saved = saveQueue(path(), drawings()); !saved) {
        program().fail(namingFile(path(), saved.error()));
        return;
    }
    program().unload(objectName());
}

} // namespace zv
