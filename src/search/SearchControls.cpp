#include "controls/BoldWidth.h"
#include "controls/Clip.h"
#include "controls/DwgThumbnail.h"
#include "controls/DwgViewX.h"
#include "controls/ElidedLabel.h"
#include "controls/LockedCombo.h"
#include "controls/NamedControls.h"
#include "controls/PathList.h"
#include "controls/PictureButton.h"
#include "help/ProgramHelp.h"
#include "search/Search.h"

#include <QBoxLayout>
#include <QCheckBox>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QRadioButton>

namespace zv {
namespace {

constexpr int kGap = 8;
constexpr int kOptionGap = 2; ///< Between options, which keep room for their bold captions.
constexpr int kLeastPreview = 60;
constexpr int kFrameGap = 6; ///< Between a frame's edge and what stands in it.
constexpr QSize kFirstSize(713, 606);

template <class Control> Control* captioned(const char* name, const QString& caption, QWidget* parent)
{
    auto* made = named<Control>(name, parent);
    made->setText(caption);
    return made;
}

PictureButton* button(const char* name, const QString& caption, int picture, QWidget* parent)
{
    auto* made = named<PictureButton>(name, parent, PictureButton::Caption::Beside, false);
    made->setText(caption);
    if (picture)
        made->setPicture(ImageList::c(), picture);
    return made;
}

/// A field that only shows.
QLineEdit* shown(const char* name, const QString& accessibleName, QWidget* parent)
{
    auto* field = named<QLineEdit>(name, parent);
    field->setReadOnly(true);
    field->setAccessibleName(accessibleName);
    return field;
}

template <class Layout> Layout* inside(QWidget* block)
{
    auto* layout = new Layout(block);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(kGap);
    return layout;
}

template <class Layout> Layout* insideFrame(CaptionFrame* box)
{
    auto* layout = inside<Layout>(box);
    layout->setContentsMargins(kFrameGap, kFrameGap, kFrameGap, kFrameGap);
    layout->setSpacing(kFrameGap);
    return layout;
}

QHBoxLayout* rowOf(std::initializer_list<QWidget*> controls)
{
    auto* row = new QHBoxLayout;
    row->setSpacing(kGap);
    for (QWidget* control : controls)
        row->addWidget(control);
    return row;
}

} // namespace

Search::Search(Program& program)
    : Window(program, QStringLiteral("Search"), QStringLiteral("Search Detail/Symbol")),
      fields(program.fields()), m_scan([](const std::string& path) -> Result<std::string> {
          DwgPropsX props;
          if (const auto loaded = props.load(path); !loaded)
              return loaded.error();
          return props.keywords();
      })
{
    makeRequest();
    makeRun();
    makePreview();
    makeActions();
    layOut();
    setTabOrders();
    connectHandlers();
    resize(kFirstSize);
    Text1->setFocus();
}

Search::~Search() = default;

std::array<QLineEdit*, kKeywords> Search::keywordBoxes() const
{
    return {Text1, Text7, Text8, Text9, Text10, Text11};
}

void Search::makeRequest()
{
    Frame1 = namedFrame("Frame1", QStringLiteral("Select Libraries to Search:"), this);
    Combo1 = named<LockedCombo>("Combo1", Frame1);
    Combo1->setAccessibleName(tr("Library to search"));
    Check1 = captioned<QCheckBox>("Check1", QStringLiteral("Search All Libraries"), Frame1);
    Label1 = captioned<QLabel>("Label1", QStringLiteral("Enter Keywords to Search for:"), this);
    Text1 = named<QLineEdit>("Text1", this);
    Text7 = named<QLineEdit>("Text7", this);
    Text8 = named<QLineEdit>("Text8", this);
    Text9 = named<QLineEdit>("Text9", this);
    Text10 = named<QLineEdit>("Text10", this);
    Text11 = named<QLineEdit>("Text11", this);
    int number = 0;
    for (QLineEdit* box : keywordBoxes()) {
        box->setAccessibleName(tr("Keyword %1").arg(++number));
        box->setMinimumWidth(60);
    }
    Label1->setBuddy(Text1);
    Command11 = button("Command11", QStringLiteral("&Search"), 13, this);
    Command4 = button("Command4", QStringLiteral("&Clear"), 8, this);
}

void Search::makeRun()
{
    Animation1 = named<ClipPlayer>("Animation1", this);
    Label5 = captioned<QLabel>("Label5", QStringLiteral("Scanning:"), this);
    Label6 = captioned<QLabel>("Label6", QStringLiteral("Library:"), this);
    LabelProgress = named<ElidedLabel>("LabelProgress", this);
    LabelProgress->setAccessibleName(tr("Progress of the search"));
    Text12 = shown("Text12", tr("Drawing under test"), this);
    Text13 = shown("Text13", tr("Library under test"), this);
    Label2 = captioned<QLabel>("Label2", QStringLiteral("Results:  "), this);
    Label3 = captioned<QLabel>("Label3", QStringLiteral("DWGS Found:"), this);
    Text4 = shown("Text4", tr("Count of drawings found"), this);
    Text4->setAlignment(Qt::AlignRight);
    List1 = named<PathList>("List1", this);
    List1->setAccessibleName(tr("Drawings found"));
    Label2->setBuddy(List1);
    Label3->setBuddy(Text4);
    Label5->setBuddy(Text12);
    Label6->setBuddy(Text13);
}

void Search::makePreview()
{
    Frame3 = namedFrame("Frame3", QStringLiteral("Drawing Preview  Thumbnail Mode"), this);
    DwgThumbnail1 = named<DwgThumbnail>("DwgThumbnail1", Frame3);
    DwgThumbnail1->setFocusPolicy(Qt::NoFocus);
    DwgViewX1 = named<DwgViewX>("DwgViewX1", Frame3);
    DwgViewX1->setAccessibleName(tr("Enlarged drawing"));
    DwgViewX1->hide();
    Command5 = button("Command5", QStringLiteral("&Enlarge"), 1, this);
    Command6 = button("Command6", QStringLiteral("&Preview"), 3, this);
    Command6->setToolTip(QStringLiteral("Thumbnail View"));
    Frame5 = namedFrame("Frame5", QStringLiteral("Drawing Description"), this);
    Text2 = named<QPlainTextEdit>("Text2", Frame5);
    Text2->setReadOnly(true);
    Text2->setTabChangesFocus(true);
    Text2->setAccessibleName(tr("Drawing description"));
    Label8 = captioned<QLabel>("Label8", QStringLiteral("Key Words:"), this);
    Label7 = captioned<QLabel>("Label7", QStringLiteral("File Size:"), this);
    Text5 = shown("Text5", tr("Keywords of the drawing"), this);
    Text6 = shown("Text6", tr("Size of the file"), this);
    Label8->setBuddy(Text5);
    Label7->setBuddy(Text6);
}

void Search::makeActions()
{
    Option1 = captioned<QRadioButton>("Option1", QStringLiteral("Xref Insert"), this);
    Option2 = captioned<QRadioButton>("Option2", QStringLiteral("Block Insert"), this);
    Option3 = captioned<QRadioButton>("Option3", QStringLiteral("Open/Copy"), this);
    Option3->setToolTip(QStringLiteral("Open the Selected dwg with copy option"));
    Option4 = captioned<QRadioButton>("Option4", QStringLiteral("&Create Queue"), this);
    Check2 = captioned<QCheckBox>("Check2", QStringLiteral("AutoScale"), this);
    Check3 = captioned<QCheckBox>("Check3", QStringLiteral("Explode"), this);
    Label4 = captioned<QLabel>("Label4", QStringLiteral("XYZ Scale:"), this);
    Text3 = named<QLineEdit>("Text3", this);
    Text3->setText(QStringLiteral("1.00"));
    Text3->setAccessibleName(tr("Scale factor in X, Y and Z"));
    Label4->setBuddy(Text3);
    Command3 = button("Command3", QStringLiteral("&Insert"), 9, this);
    Command2 = button("Command2", QStringLiteral("C&lose"), 0, this);
    Command1 = button("Command1", QStringLiteral("&Help"), 5, this);
    Picture2 = named<PictureBox>("Picture2", this, PictureBox::Acts::OnDoubleClick);
    Picture2->setToolTip(QStringLiteral("Double Click for About Zelvora"));
    Picture2->setAccessibleName(tr("Zelvora"));
    Picture2->setPicture(QStringLiteral("logo"));
    // It does nothing here, so the keys pass it by.
    Picture2->setFocusPolicy(Qt::NoFocus);
}

void Search::layOut()
{
    auto* libraries = insideFrame<QHBoxLayout>(Frame1);
    libraries->addWidget(Combo1, 1);
    libraries->addWidget(Check1);
    auto* top = rowOf({Frame1, Picture2});
    top->setStretch(0, 1);

    auto* request = new QGridLayout;
    request->setSpacing(kGap);
    request->addWidget(Label1, 0, 0, 1, 3);
    int place = 0;
    for (QLineEdit* box : keywordBoxes()) {
        request->addWidget(box, 1 + place / 3, place % 3);
        ++place;
    }
    request->addWidget(Command11, 1, 3);
    request->addWidget(Command4, 2, 3);
    request->addWidget(Animation1, 0, 4, 3, 1, Qt::AlignCenter);

    auto* run = rowOf({Label5, Text12, Label6, Text13});
    run->setStretch(1, 3);
    run->setStretch(3, 1);

    auto* found = new QVBoxLayout;
    found->setSpacing(kGap);
    auto* count = rowOf({Label2, LabelProgress, Label3, Text4});
    count->setStretch(1, 1);
    LabelProgress->setAlignment(Qt::AlignCenter);
    Text4->setFixedWidth(fontMetrics().horizontalAdvance(QStringLiteral("00000000")));
    found->addWidget(List1, 1);

    auto* picture = insideFrame<QGridLayout>(Frame3);
    picture->addWidget(DwgThumbnail1, 0, 0);
    picture->addWidget(DwgViewX1, 0, 0);
    auto* description = insideFrame<QVBoxLayout>(Frame5);
    description->addWidget(Text2);
    auto* views = rowOf({Command5, Command6});
    views->addStretch(1);
    auto* properties = rowOf({Label8, Text5, Label7, Text6});
    properties->setStretch(1, 2);
    properties->setStretch(3, 1);
    auto* seen = new QVBoxLayout;
    seen->setSpacing(kGap);
    seen->addWidget(Frame3, 2);
    seen->addLayout(views);
    seen->addWidget(Frame5, 1);
    seen->addLayout(properties);

    auto* middle = new QHBoxLayout;
    middle->setSpacing(kGap);
    middle->addLayout(found, 1);
    middle->addLayout(seen, 1);

    auto* rows = new QVBoxLayout(this);
    rows->setContentsMargins(kGap, kGap, kGap, kGap);
    rows->setSpacing(kGap);
    rows->addLayout(top);
    rows->addLayout(request);
    rows->addLayout(run);
    rows->addLayout(count);
    rows->addLayout(middle, 1);
    rows->addWidget(actionRows());
    // What shrinks first are the list, the preview and the description; everything else stays readable.
    for (QWidget* flexible : std::initializer_list<QWidget*>{List1, Text2, DwgThumbnail1, DwgViewX1})
        flexible->setMinimumSize(40, 30);
    DwgThumbnail1->setMinimumHeight(kLeastPreview);
    for (QLineEdit* field : {Text12, Text13, Text5})
        field->setMinimumWidth(40);
    Text6->setMinimumWidth(fontMetrics().horizontalAdvance(QStringLiteral("000000 KB")));
    boundSize();
}

/// As small as everything can be read; where the action row gets too long for that, its buttons go below.
void Search::boundSize()
{
    setMinimumSize(layout()->totalMinimumSize());
    m_doing->setDirection(QBoxLayout::LeftToRight);
    m_wideFrom = m_doing->minimumSize().width() + 2 * kGap;
}

void Search::resizeEvent(QResizeEvent* event)
{
    m_doing->setDirection(width() < m_wideFrom ? QBoxLayout::TopToBottom : QBoxLayout::LeftToRight);
    Window::resizeEvent(event);
}

QWidget* Search::actionRows()
{
    auto* block = new QWidget(this);
    auto* rows = inside<QVBoxLayout>(block);
    auto* modes = rowOf({Option1, Option2, Option3, Option4});
    // The caption of the option that is set is bold; the others must not move for it.
    for (QRadioButton* option : {Option1, Option2, Option3, Option4})
        option->setMinimumWidth(boldWidth(option));
    modes->setSpacing(kOptionGap);
    modes->addStretch(1);
    auto* placing = rowOf({Check2, Check3, Label4, Text3});
    placing->addStretch(1);
    auto* commands = new QHBoxLayout;
    commands->setSpacing(kGap);
    commands->addStretch(1);
    for (QWidget* command : {Command3, Command1, Command2})
        commands->addWidget(command);
    m_doing = new QBoxLayout(QBoxLayout::TopToBottom);
    m_doing->setSpacing(kGap);
    m_doing->addLayout(placing);
    m_doing->addLayout(commands);
    Text3->setMinimumWidth(fontMetrics().horizontalAdvance(QStringLiteral("000.000")));
    Text3->setMaximumWidth(fontMetrics().horizontalAdvance(QStringLiteral("0000000000")));
    rows->addLayout(modes);
    rows->addLayout(m_doing);
    return block;
}

void Search::setTabOrders()
{
    const QList<QWidget*> order{Combo1,    Check1,   Text1,  Text7,    Text8,    Text9,   Text10,    Text11,
                                Command11, Command4, Text12, Text13,   Text4,    List1,   DwgViewX1, Command5,
                                Command6,  Text2,    Text5,  Text6,    Option1,  Option2, Option3,   Option4,
                                Check2,    Check3,   Text3,  Command3, Command1, Command2};
    for (qsizetype i = 1; i < order.size(); ++i)
        setTabOrder(order[i - 1], order[i]);
}

void Search::connectHandlers()
{
    connect(Check1, &QCheckBox::toggled, this, [this](bool all) {
        Combo1->setEnabled(!all);
        m_scan.scanAllLibraries = all ? 1 : 0;
    });
    connect(Command11, &QPushButton::clicked, this, &Search::search);
    for (QLineEdit* box : keywordBoxes())
        connect(box, &QLineEdit::returnPressed, this, &Search::search);
    connect(Command4, &QPushButton::clicked, this, &Search::clearOrStop);
    connect(List1, &PathList::rowSelected, this, [this] { selectResult(); });
    connect(List1, &PathList::rowClickedAgain, this, [this] { selectResult(); });
    connect(List1, &PathList::doubleClickedInList, this, &Search::actOnDoubleClick);
    List1->installEventFilter(this);
    connect(Command5, &QPushButton::clicked, this, &Search::enlarge);
    connect(Command6, &QPushButton::clicked, this, &Search::preview);

    const std::pair<QRadioButton*, Action> options[] = {{Option1, Action::Xref},
                                                        {Option2, Action::Block},
                                                        {Option3, Action::OpenCopy},
                                                        {Option4, Action::Queue}};
    for (const auto& [option, action] : options) {
        connect(option, &QRadioButton::toggled, this, [this, chosenAction = action](bool on) {
            if (on)
                setAction(chosenAction);
        });
    }
    connect(Check2, &QCheckBox::toggled, this, &Search::setAutoScale);
    connect(Check3, &QCheckBox::toggled, this, [this](bool on) {
        // A tick changes nothing; only taking it away reaches the main window.
        if (!on)
            fields.ExplodeFlag = 0;
    });
    Text3->installEventFilter(this);
    connect(Command3, &QPushButton::clicked, this, &Search::actOnChosen);
    connect(Command2, &QPushButton::clicked, this, &Search::closeByButton);
    connect(Command1, &QPushButton::clicked, this, [this] { showHelpContents(program()); });
}

} // namespace zv
