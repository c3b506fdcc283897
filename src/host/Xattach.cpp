#include "host/Xattach.h"

#include "config/Keys.h"
#include "controls/CaptionFrame.h"
#include "controls/DwgThumbnail.h"
#include "controls/NamedControls.h"
#include "host/ActionProcedure.h"
#include "host/XrefText.h"
#include "platform/Files.h"
#include "platform/Text.h"
#include "window/BrowserFields.h"
#include "window/TextBytes.h"

#include <QCheckBox>
#include <QComboBox>
#include <QGridLayout>
#include <QKeyEvent>
#include <QLineEdit>
#include <QRadioButton>
#include <QShortcut>

namespace zv {
namespace {

constexpr double kKilobyte = 1024;

template <class Control> Control* captioned(const char* name, const QString& caption, QWidget* parent)
{
    auto* made = named<Control>(name, parent);
    made->setText(caption);
    return made;
}

QLineEdit* field(const char* name, const QString& text, QWidget* parent)
{
    auto* made = captioned<QLineEdit>(name, text, parent);
    made->setMinimumWidth(made->fontMetrics().horizontalAdvance(QStringLiteral("0000.00")) + 12);
    return made;
}

/// A field that is out of play has the ground of its window.
void setInPlay(QLineEdit* edit, QLabel* label, bool inPlay)
{
    edit->setEnabled(inPlay);
    label->setEnabled(inPlay);
    if (inPlay) {
        edit->setPalette({});
    } else {
        QPalette colors = edit->palette();
        colors.setColor(QPalette::Base, colors.color(QPalette::Window));
        edit->setPalette(colors);
    }
}

} // namespace

Xattach::Xattach(Program& program)
    : HostDialog(program, QStringLiteral("Xattach"), QStringLiteral("Insert Xref"),
                 program.fields().xrefState)
{
    makeControls();
    makeFrames();
    layOut();
    connectHandlers();
    setPointAsked(true);
}

void Xattach::makeControls()
{
    DwgThumbnail1 = named<DwgThumbnail>("DwgThumbnail1", this);
    Text1 = captioned<QLineEdit>("Text1", {}, this);
    Text1->setReadOnly(true);
    Text1->setAccessibleName(tr("Drawing"));
    Text12 = captioned<QLineEdit>("Text12", {}, this);
    Text12->setReadOnly(true);
    Label11 = labelFor(Text12, "Label11", QStringLiteral("Drawing File Size:"), this);
    Check5 = captioned<QCheckBox>(
        "Check5", QStringLiteral("Copy Xref to Project Folder, then Xref from Project Folder"), this);
    Text8 = captioned<QLineEdit>("Text8", {}, this);
    Text8->setAccessibleName(tr("Project folder"));
    Command1 = namedButton("Command1", QStringLiteral("&Browse..."), this);
    Command3 = namedButton("Command3", QStringLiteral("&Insert"), this);
    Command2 = namedButton("Command2", QStringLiteral("&Cancel"), this);
}

void Xattach::makeFrames()
{
    const QString prompt = QStringLiteral("Prompt:");
    Frame1 = namedFrame("Frame1", QStringLiteral("Xref Type"), this);
    Option1 = captioned<QRadioButton>("Option1", QStringLiteral("&Attach"), Frame1);
    Option2 = captioned<QRadioButton>("Option2", QStringLiteral("&Overlay"), Frame1);
    Option1->setChecked(true);

    Frame2 = namedFrame("Frame2", QStringLiteral("Insertion"), this);
    Check1 = captioned<QCheckBox>("Check1", prompt, Frame2);
    Check1->setChecked(true);
    Check1->setAccessibleName(tr("Prompt for the insertion point"));
    Text2 = field("Text2", QStringLiteral("0.00"), Frame2);
    Text3 = field("Text3", QStringLiteral("0.00"), Frame2);
    Text4 = field("Text4", QStringLiteral("0.00"), Frame2);
    Label2 = labelFor(Text2, "Label2", QStringLiteral("X:"), Frame2);
    Label3 = labelFor(Text3, "Label3", QStringLiteral("Y:"), Frame2);
    Label4 = labelFor(Text4, "Label4", QStringLiteral("Z:"), Frame2);

    Frame5 = namedFrame("Frame5", QStringLiteral("Scale"), this);
    Check2 = captioned<QCheckBox>("Check2", prompt, Frame5);
    Check2->setAccessibleName(tr("Prompt for the scale"));
    Text5 = field("Text5", QStringLiteral("1.00"), Frame5);
    Text6 = field("Text6", QStringLiteral("1.00"), Frame5);
    Text7 = field("Text7", QStringLiteral("1.00"), Frame5);
    Label5 = labelFor(Text5, "Label5", QStringLiteral("X:"), Frame5);
    Label6 = labelFor(Text6, "Label6", QStringLiteral("Y:"), Frame5);
    Label7 = labelFor(Text7, "Label7", QStringLiteral("Z:"), Frame5);

    Frame3 = namedFrame("Frame3", QStringLiteral("Rotation"), this);
    Check3 = captioned<QCheckBox>("Check3", prompt, Frame3);
    Check3->setAccessibleName(tr("Prompt for the rotation"));
    Text10 = field("Text10", QStringLiteral("0.00"), Frame3);
    Label9 = labelFor(Text10, "Label9", QStringLiteral("Angle:"), Frame3);

    Frame4 = namedFrame("Frame4", QStringLiteral("AutoScale"), this);
    Check4 = captioned<QCheckBox>("Check4", QStringLiteral("ON"), Frame4);
    Check4->setAccessibleName(Frame4->title());
    Text9 = field("Text9", {}, Frame4);
    Label10 = labelFor(Text9, "Label10", QStringLiteral("Drawing Scale:"), Frame4);
    Combo1 = named<QComboBox>("Combo1", Frame4);
    Combo1->setEditable(true);
    Combo1->lineEdit()->setReadOnly(true);
    Combo1->setInsertPolicy(QComboBox::NoInsert);
    for (const NamedScale& scale : namedScales())
        Combo1->addItem(QLatin1String(scale.name));
    Combo1->setMaxVisibleItems(16);
    Label8 = labelFor(Combo1, "Label8", QStringLiteral("Xref Scale:"), Frame4);
    Text11 = field("Text11", {}, Frame4);
    Text11->setAccessibleName(tr("Scale of the xref drawing as a factor"));
    showNamedScale({});
}

void Xattach::layOut()
{
    const auto inside = [](CaptionFrame* frame) {
        auto* grid = new QGridLayout(frame);
        grid->setContentsMargins(8, 4, 8, 4);
        grid->setHorizontalSpacing(8);
        grid->setVerticalSpacing(4);
        return grid;
    };
    auto* const type = inside(Frame1);
    type->addWidget(Option1, 0, 0);
    type->addWidget(Option2, 0, 1);

    const auto three = [&](CaptionFrame* frame, QCheckBox* check, std::array<QLabel*, 3> labels,
                           std::array<QLineEdit*, 3> fields) {
        auto* grid = inside(frame);
        grid->addWidget(check, 0, 0, 1, 2);
        for (int row = 0; row < 3; ++row) {
            grid->addWidget(labels[std::size_t(row)], row + 1, 0);
            grid->addWidget(fields[std::size_t(row)], row + 1, 1);
        }
        grid->setColumnStretch(1, 1);
        grid->setRowStretch(4, 1);
    };
    three(Frame2, Check1, {Label2, Label3, Label4}, {Text2, Text3, Text4});
    three(Frame5, Check2, {Label5, Label6, Label7}, {Text5, Text6, Text7});

    auto* const rotation = inside(Frame3);
    rotation->addWidget(Check3, 0, 0, 1, 2);
    rotation->addWidget(Label9, 1, 0);
    rotation->addWidget(Text10, 1, 1);
    rotation->setColumnStretch(1, 1);
    rotation->setRowStretch(2, 1);

    auto* const scale = inside(Frame4);
    scale->addWidget(Check4, 0, 0);
    scale->addWidget(Label10, 0, 1, Qt::AlignRight | Qt::AlignVCenter);
    scale->addWidget(Text9, 0, 2);
    scale->addWidget(Label8, 1, 0);
    scale->addWidget(Combo1, 1, 1);
    scale->addWidget(Text11, 1, 2);
    scale->setColumnStretch(1, 1);

    auto* const size = new QHBoxLayout;
    size->setSpacing(8);
    size->addWidget(Label11);
    size->addWidget(Text12);
    auto* const about = new QVBoxLayout;
    about->setSpacing(8);
    about->addLayout(size);
    about->addWidget(Frame1);
    about->addStretch();
    // The preview takes what room there is.
    auto* const seen = new QHBoxLayout;
    seen->setSpacing(8);
    seen->addWidget(DwgThumbnail1, 1);
    seen->addLayout(about);

    auto* const folder = new QHBoxLayout;
    folder->setSpacing(8);
    folder->addWidget(Text8, 1);
    folder->addWidget(Command1);
    auto* const buttons = new QHBoxLayout;
    buttons->setSpacing(8);
    buttons->addStretch();
    buttons->addWidget(Command3);
    buttons->addWidget(Command2);

    auto* const grid = new QGridLayout(this);
    grid->setContentsMargins(8, 8, 8, 8);
    grid->setHorizontalSpacing(8);
    grid->setVerticalSpacing(6);
    grid->addWidget(Text1, 0, 0, 1, 3);
    grid->addLayout(seen, 1, 0, 1, 3);
    grid->addWidget(Frame2, 2, 0);
    grid->addWidget(Frame5, 2, 1);
    grid->addWidget(Frame3, 2, 2);
    grid->addWidget(Frame4, 3, 0, 1, 3);
    grid->addWidget(Check5, 4, 0, 1, 3);
    grid->addLayout(folder, 5, 0, 1, 3);
    grid->addLayout(buttons, 6, 0, 1, 3);
    for (int column = 0; column < 3; ++column)
        grid->setColumnStretch(column, 1);
    grid->setRowStretch(1, 1);
    const QList<QWidget*> order = {Text1,  Text12, Option1, Check1,   Text2,    Text3,   Text4, Check2,
                                   Text5,  Text6,  Text7,   Check3,   Text10,   Check4,  Text9, Combo1,
                                   Text11, Check5, Text8,   Command1, Command3, Command2};
    for (qsizetype i = 1; i < order.size(); ++i)
        setTabOrder(order[i - 1], order[i]);
    resize(560, 520);
}

void Xattach::connectHandlers()
{
    connect(Check1, &QCheckBox::toggled, this, &Xattach::setPointAsked);
    connect(Check2, &QCheckBox::toggled, this, &Xattach::setScaleAsked);
    connect(Check3, &QCheckBox::toggled, this, &Xattach::setRotationAsked);
    connect(Check4, &QCheckBox::toggled, this, &Xattach::setAutoScale);
    connect(Check5, &QCheckBox::toggled, this, &Xattach::setCopying);
    connect(Combo1, &QComboBox::activated, this, &Xattach::pickScale);
    connect(Command1, &QPushButton::clicked, this, [this] {
        hideWindow();
        if (!program().show(QStringLiteral("xrefcopy")))
            showOnTop();
    });
    connect(Command2, &QPushButton::clicked, this, [this] { cancel(); });
    connect(Command3, &QPushButton::clicked, this, &Xattach::insert);
    for (QLineEdit* edit : {Text2, Text3, Text4, Text5, Text6, Text7, Text10, Text9, Text11, Text8})
        connect(edit, &QLineEdit::returnPressed, Command3, &QPushButton::click);
    connect(new QShortcut(Qt::Key_Escape, this), &QShortcut::activated, Command2, &QPushButton::click);
    Text11->installEventFilter(this);
    Combo1->installEventFilter(this);
}

void Xattach::load()
{
    if (isFromSearch())
        program().hide(QStringLiteral("Search"));
    if (Text11->text().isEmpty()) {
        showNamedScale(QStringLiteral("Full"));
        Text11->setText(QStringLiteral("1"));
    }
    stayOnTop();
    readCopySettings();
    showSize();
    const auto scale = runningHostScale(program().actionServices().automation);
    if (scale)
        Text9->setText(toText(numberText(*scale)));
    DwgThumbnail1->setDwgFileName(toText(chosenDrawing()));
    Command3->setFocus();
}

void Xattach::readCopySettings()
{
    const bool allowed = profiles().number(keys::xattach::projectfolder) == 1;
    for (QWidget* control :
         {static_cast<QWidget*>(Check5), static_cast<QWidget*>(Command1), static_cast<QWidget*>(Text8)})
        control->setEnabled(allowed);
    if (allowed && profiles().number(keys::xattach::forcecopy) == 1) {
        Check5->setEnabled(false);
        Check5->setChecked(true);
    }
    // The user's own choice comes last, also where the office wants the copy made.
    const Result<int> stored = profiles().storedNumber(keys::xattach::projectcopy);
    const int copies = stored.valueOr(keys::xattach::projectcopy.fallback);
    m_settingUnknown = !stored;
    if (copies == 1 || copies == 0)
        Check5->setChecked(copies == 1);
    m_settingUnknown = false;
    Text8->setText(toText(profiles().text(keys::xattach::projectpath)));
    if (!Check5->isChecked())
        Command1->setEnabled(false);
}

void Xattach::showSize()
{
    const auto length = fileLength(chosenDrawing());
    Text12->setText(length ? toText(numberText(roundHalfEven(double(*length) / kKilobyte)) + " KB")
                           : QStringLiteral("NA"));
}

void Xattach::prepare(const std::string& drawing, const std::string& storedScale)
{
    Text11->setText(toText(storedScale));
    const auto scale = namedScaleOf(storedScale);
    if (storedScale.empty()) {
        showNamedScale(QStringLiteral("Full"));
        Text11->setText(QStringLiteral("1"));
    } else {
        showNamedScale(scale ? Combo1->itemText(*scale) : QString());
        Check4->setChecked(true);
    }
    Text1->setText(toText(drawing));
    Text1->setToolTip(Text1->text());
}

/// Not a pick: nothing follows from it.
void Xattach::showNamedScale(const QString& name)
{
    Combo1->setCurrentIndex(Combo1->findText(name, Qt::MatchExactly | Qt::MatchCaseSensitive));
    Combo1->setEditText(name);
}

void Xattach::setPointAsked(bool asked)
{
    setInPlay(Text2, Label2, !asked);
    setInPlay(Text3, Label3, !asked);
    setInPlay(Text4, Label4, !asked);
}

void Xattach::setScaleAsked(bool asked)
{
    setScaleFields(!asked);
}

void Xattach::setRotationAsked(bool asked)
{
    setInPlay(Text10, Label9, !asked);
}

void Xattach::setScaleFields(bool inPlay)
{
    setInPlay(Text5, Label5, inPlay);
    setInPlay(Text6, Label6, inPlay);
    setInPlay(Text7, Label7, inPlay);
}

void Xattach::setAutoScale(bool on)
{
    Check2->setChecked(false);
    Frame5->setEnabled(!on);
    Check2->setEnabled(!on);
    setScaleFields(!on);
    Label8->setEnabled(on);
    Combo1->setEnabled(on);
    profiles().writeFlag(keys::xattach::writeAutoScale, on);
}

void Xattach::setCopying(bool on)
{
    // Where the office decides, the box tells and does nothing.
    if (!Check5->isEnabled())
        return;
    Command1->setEnabled(on);
    Text8->setEnabled(on);
    if (!m_settingUnknown)
        profiles().writeFlag(keys::xattach::projectcopy, on);
}

void Xattach::pickScale(int index)
{
    Text11->setText(QLatin1String(namedScales()[std::size_t(index)].factor));
    Check4->setChecked(true);
    profiles().write(keys::xattach::writeListindex, std::to_string(index));
    profiles().write(keys::xattach::writeXrefscale, toBytes(Combo1->itemText(index)));
}

bool Xattach::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == Combo1 && event->type() == QEvent::Wheel)
        return true;
    if (event->type() != QEvent::KeyPress)
        return HostDialog::eventFilter(watched, event);
    const auto* key = static_cast<QKeyEvent*>(event);
    if (watched == Text11 && !key->text().isEmpty() && key->key() != Qt::Key_Tab)
        showNamedScale(QStringLiteral("Custom"));
    // Only its list, dropped down, changes what the box shows.
    if (watched == Combo1 && !(key->modifiers() & Qt::AltModifier)) {
        switch (key->key()) {
        case Qt::Key_Up:
        case Qt::Key_Down:
        case Qt::Key_PageUp:
        case Qt::Key_PageDown:
        case Qt::Key_Home:
        case Qt::Key_End:
        case Qt::Key_Return:
        case Qt::Key_Enter:
            return true;
        default:
            break;
        }
    }
    return HostDialog::eventFilter(watched, event);
}

void Xattach::rememberFolder(const std::string& folder)
{
    profiles().write(keys::xattach::projectpath, folder);
}

void Xattach::markField(XrefField field)
{
    QLineEdit* const fields[] = {Text2, Text3, Text4, Text5, Text6, Text7, Text9, Text11};
    QLineEdit* const marked = fields[std::size_t(field)];
    marked->setFocus();
    marked->selectAll();
}

XrefOrder Xattach::order() const
{
    const auto text = [](const QLineEdit* edit) { return toBytes(edit->text()); };
    XrefOrder order;
    order.drawing = text(Text1);
    order.overlay = !Option1->isChecked();
    order.askPoint = Check1->isChecked();
    order.askScale = Check2->isChecked();
    order.askRotation = Check3->isChecked();
    order.autoScale = Check4->isChecked();
    order.point = {text(Text2), text(Text3), text(Text4)};
    order.scale = {text(Text5), text(Text6), text(Text7)};
    order.rotation = text(Text10);
    order.hostScale = text(Text9);
    order.xrefScale = text(Text11);
    // A box that the office has not opened to its users would keep them from attaching at all.
    order.copy = Check5->isChecked() && profiles().number(keys::xattach::projectfolder) != 0;
    order.folder = text(Text8);
    return order;
}

void Xattach::insert()
{
    attachXref(order(), *this, program().actionServices(), settings());
}

} // namespace zv
