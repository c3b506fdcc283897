#include "browser/Zelvora.h"

#include "browser/RibbonHover.h"
#include "controls/BoldWidth.h"
#include "controls/DwgThumbnail.h"
#include "controls/DwgViewX.h"
#include "controls/FlowLayout.h"
#include "controls/NamedControls.h"
#include "controls/PathList.h"
#include "controls/PictureButton.h"
#include "controls/Resizer.h"
#include "controls/SortedCombo.h"
#include "host/ActionProcedure.h"
#include "window/OuterGeometry.h"

#include <QBoxLayout>
#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QRadioButton>
#include <QStatusBar>
#include <QTimer>

namespace zv {
namespace {

PictureButton* button(const char* name, PictureButton::Caption place, const QString& caption,
                      const QString& tip, QWidget* parent)
{
    auto* made = named<PictureButton>(name, parent, place, place == PictureButton::Caption::Below);
    made->setText(caption);
    made->setToolTip(tip);
    return made;
}

/// A tool is a picture with a word below it; its tool tip tells in full what it does.
PictureButton* tool(const char* name, const QString& caption, const QString& tip, QWidget* parent)
{
    auto* made = button(name, PictureButton::Caption::Below, caption, tip, parent);
    made->setAccessibleName(tip);
    return made;
}

template <class Option> Option* option(const char* name, const QString& caption, QWidget* parent)
{
    auto* made = named<Option>(name, parent);
    made->setText(caption);
    return made;
}

/// A row or a block of controls that share what room they get; the hidden ones leave theirs to the others.
template <class Layout> Layout* layoutOf(QWidget* block)
{
    auto* layout = new Layout(block);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(8);
    // The block is as large as the window's proportions have it, however little that is.
    layout->setSizeConstraint(QLayout::SetNoConstraint);
    return layout;
}

void fillRow(QHBoxLayout* row, std::initializer_list<QWidget*> controls)
{
    for (QWidget* control : controls)
        row->addWidget(control);
}

} // namespace

Zelvora::Zelvora(Program& program)
    : MainWindow(program, QStringLiteral("Zelvora")), m_geometry(std::make_unique<OuterGeometry>(this))
{
    setMinimumSize(240, 200);
    makeTopControls();
    makeRibbon();
    makeLibraryChoice();
    makePanels();
    makeInformation();
    makeAction();
    makeTimers();
    setTabOrders();
    m_hover = new RibbonHover(*this);
    placeControls();
    connectHandlers();
    Combo1->setFocus();
}

Zelvora::~Zelvora() = default;

void Zelvora::makeTopControls()
{
    Picture5 = named<PictureBox>("Picture5", this, PictureBox::Acts::OnClick);
    Picture5->setAccessibleName(tr("Tools tab"));
    Picture5->setText(tr("Tools"));
    Picture9 = named<PictureBox>("Picture9", this, PictureBox::Acts::OnClick);
    Picture9->setAccessibleName(tr("Settings tab"));
    Picture9->setText(tr("Settings"));
    Picture13 = named<QWidget>("Picture13", this);
    Check2 = named<QCheckBox>("Check2", Picture13);
    Check2->setText(tr("On top"));
    Check2->setToolTip(QStringLiteral("Set Zelvora dialog to be always on top"));
    Check2->setAccessibleName(tr("Always on top"));
    Picture12 = named<PictureBox>("Picture12", this, PictureBox::Acts::OnClick);
    Picture12->setToolTip(QStringLiteral("Open Help File"));
    Picture12->setAccessibleName(tr("Help"));
}

void Zelvora::makeRibbon()
{
    Picture3 = named<QWidget>("Picture3", this);
    Picture14 = named<QWidget>("Picture14", this);
    // The pages have the ground of the chosen tab.
    for (QWidget* page : {Picture3, Picture14}) {
        page->setBackgroundRole(QPalette::Base);
        page->setAutoFillBackground(true);
    }
    makeTools();
    makeSettings();
    Picture14->hide();
}

void Zelvora::makeTools()
{
    Command12 = tool("Command12", tr("Enlarge"), QStringLiteral("View Enlarge Mode"), Picture3);
    Command21 = tool("Command21", tr("Extents"), QStringLiteral("Zoom Extents"), Picture3);
    Command16 = tool("Command16", tr("In"), QStringLiteral("Zoom In"), Picture3);
    Command22 = tool("Command22", tr("Out"), QStringLiteral("Zoom Out"), Picture3);
    Command15 = tool("Command15", tr("Window"), QStringLiteral("Zoom Window"), Picture3);
    Command13 = tool("Command13", tr("Pan"), QStringLiteral("Pan"), Picture3);
    Command14 = tool("Command14", tr("Layers"), QStringLiteral("Layers"), Picture3);
    Command10 = tool("Command10", tr("Print"), QStringLiteral("Print"), Picture3);
    Command18 = tool("Command18", tr("Batch"), QStringLiteral("Print Library"), Picture3);
    Picture2 = named<PictureBox>("Picture2", Picture3, PictureBox::Acts::OnDoubleClick);
    Picture2->setToolTip(QStringLiteral("Double-click for \"About\" info..."));
    Picture2->setAccessibleName(tr("About Zelvora"));
    Picture2->setPicture(QStringLiteral("logo"));
}

void Zelvora::makeSettings()
{
    const auto setting = [this](const char* name, const char* caption, const char* tip) {
        return button(name, PictureButton::Caption::Below, QLatin1String(caption), QLatin1String(tip),
                      Picture14);
    };
    Command1 = setting("Command1", "&Library", "Create or Edit Libraries");
    Command8 = setting("Command8", "&My Lib", "Edit My Library Favorites");
    Command9 = setting("Command9", "&Options", "Set Options");
    Command7 = setting("Command7", "&Print Lib", "Print Library");
    Command5 = setting("Command5", "&Print Library", "Batch Print Libraries");
    Picture11 = named<PictureBox>("Picture11", Picture14, PictureBox::Acts::OnDoubleClick);
    Picture11->setToolTip(QStringLiteral("Double-click for \"About\" info..."));
    Picture11->setAccessibleName(tr("About Zelvora"));
    Picture11->setPicture(QStringLiteral("logo"));
}

void Zelvora::makeLibraryChoice()
{
    LibraryRow = named<QWidget>("LibraryRow", this);
    LabelLibrary = named<QLabel>("LabelLibrary", LibraryRow);
    LabelLibrary->setText(tr("Library"));
    Combo1 = named<SortedCombo>("Combo1", LibraryRow);
    LabelLibrary->setBuddy(Combo1);
    Combo1->setToolTip(QStringLiteral("Library List"));
    Combo1->setAccessibleName(tr("Library"));
    Command4 = button("Command4", PictureButton::Caption::Beside, QStringLiteral("&Search"),
                      QStringLiteral("Perform Search"), LibraryRow);
    auto* row = layoutOf<QHBoxLayout>(LibraryRow);
    fillRow(row, {LabelLibrary, Combo1, Command4});
    row->setStretchFactor(Combo1, 1);
}

void Zelvora::makePanels()
{
    Frame4 = namedFrame("Frame4", QStringLiteral("Details/Symbols"), this);
    DwgThumbnails[0] = nullptr;
    for (int cell = 1; cell <= kPanelCells; ++cell)
        DwgThumbnails[cell] =
            named<DwgThumbnail>(qPrintable(QStringLiteral("DwgThumbnail%1").arg(cell)), Frame4);
    Labelx = named<QLabel>("Labelx", Frame4);
    Labelx->setText(QStringLiteral(
        "Select a Library to Load or Create a New Library using the Settings Tab-Library button"));
    Labelx->setWordWrap(true);
    Labelx->setAlignment(Qt::AlignCenter);
    Frame8 = namedFrame("Frame8", QStringLiteral("Enlarge Mode"), this);
    DwgViewX1 = named<DwgViewX>("DwgViewX1", Frame8);
    // It lies over the panel, whose frame must not show through.
    Frame8->setAutoFillBackground(true);
    Frame8->hide();
    TurnRow = named<QWidget>("TurnRow", this);
    Command2 = button("Command2", PictureButton::Caption::Beside, QStringLiteral("&Previous"),
                      QStringLiteral("Previous Panel"), TurnRow);
    Command3 = button("Command3", PictureButton::Caption::Beside, QStringLiteral("&Next"),
                      QStringLiteral("Next Panel"), TurnRow);
    auto* row = layoutOf<QHBoxLayout>(TurnRow);
    fillRow(row, {Command2, Command3});
    row->addStretch(1);
    Frame1 = namedFrame("Frame1", QStringLiteral("Drawing Label"), this);
    List1 = named<PathList>("List1", Frame1);
    List1->setAccessibleName(tr("Drawing labels"));
}

void Zelvora::makeInformation()
{
    Frame2 = namedFrame("Frame2", QStringLiteral("Drawing Information"), this);
    Text1 = named<QPlainTextEdit>("Text1", Frame2);
    Text1->setReadOnly(true);
    Text1->setTabChangesFocus(true);
    Text1->setToolTip(QStringLiteral("Drawing comments"));
    Text1->setAccessibleName(tr("Drawing comments"));
    StatusBar1 = named<QStatusBar>("StatusBar1", this);
    StatusBar1->setSizeGripEnabled(false);
    StatusBar1Panels[0] = nullptr;
    for (int panel = 1; panel <= 4; ++panel) {
        StatusBar1Panels[panel] =
            named<QLabel>(qPrintable(QStringLiteral("StatusBar1Panel%1").arg(panel)), StatusBar1);
        // A long login name is cut at the window's edge instead of widening the window.
        StatusBar1Panels[panel]->setMinimumWidth(1);
        StatusBar1->addWidget(StatusBar1Panels[panel], panel < 3 ? 0 : 1);
    }
}

void Zelvora::makeAction()
{
    Picture4 = named<QWidget>("Picture4", this);
    Option1 = option<QRadioButton>("Option1", QStringLiteral("As Block"), Picture4);
    Option2 = option<QRadioButton>("Option2", QStringLiteral("As Xref"), Picture4);
    Option3 = option<QRadioButton>("Option3", QStringLiteral("Open/Copy"), Picture4);
    Option4 = option<QRadioButton>("Option4", QStringLiteral("Add Queue"), Picture4);
    Check1 = option<QCheckBox>("Check1", QStringLiteral("AutoScale"), Picture4);
    Check4 = option<QCheckBox>("Check4", QStringLiteral("&Explode"), Picture4);
    Label1 = named<QLabel>("Label1", Picture4);
    Label1->setText(QStringLiteral("XYZ:"));
    x = named<QLineEdit>("x", Picture4);
    x->setText(QStringLiteral("1.00"));
    x->setAccessibleName(tr("Scale factor in X, Y and Z"));
    Label1->setBuddy(x);
    Command24 = button("Command24", PictureButton::Caption::Beside, QStringLiteral("&View"),
                       QStringLiteral("View Shopping Cart Queue"), Picture4);
    Command24->hide();
    Command11 = button("Command11", PictureButton::Caption::Beside, QStringLiteral("&Insert"),
                       QStringLiteral("Insert/Attach Selected"), Picture4);
    layOutAction();
}

void Zelvora::layOutAction()
{
    using enum FlowLayout::Place;
    ActionRows = new FlowLayout(Picture4, 8);
    for (QRadioButton* option : {Option1, Option2, Option3, Option4}) {
        // The caption of the option that is set is bold; the others must not move for it.
        option->setMinimumWidth(boldWidth(option));
        ActionRows->addControl(option, Next, 16);
    }
    ActionRows->addControl(Check1, NewLine);
    ActionRows->addControl(Check4, Next);
    ActionRows->addControl(Label1, Next);
    ActionRows->addControl(x, Beside);
    ActionRows->addControl(Command24, Right);
    ActionRows->addControl(Command11, Right);
    x->setMaximumWidth(fontMetrics().horizontalAdvance(QStringLiteral("0000000000")));
}

void Zelvora::makeTimers()
{
    Timer1 = new QTimer(this);
    Timer1->setObjectName(QStringLiteral("Timer1"));
    Timer1->setInterval(10);
    Timer2 = new QTimer(this);
    Timer2->setObjectName(QStringLiteral("Timer2"));
    Timer2->setInterval(5);
}

void Zelvora::setTabOrders()
{
    QList<QWidget*> order{Combo1, Command4};
    for (int cell = 1; cell <= kPanelCells; ++cell)
        order << DwgThumbnails[cell];
    order << DwgViewX1 << Command2 << Command3 << List1 << Text1 << Option1 << Option2 << Option3 << Option4
          << Check1 << Check4 << x << Command24 << Command11 << Picture5 << Picture9 << Command12 << Command21
          << Command16 << Command22 << Command15 << Command13 << Command14 << Command10 << Command18
          << Picture2 << Command1 << Command8 << Command9 << Command7 << Command5 << Picture11 << Check2
          << Picture12;
    for (qsizetype i = 1; i < order.size(); ++i)
        setTabOrder(order[i - 1], order[i]);
}

void Zelvora::connectHandlers()
{
    const auto on = [this](PictureButton* command, auto handler) {
        connect(command, &QPushButton::clicked, this, handler);
    };
    connect(Combo1, &QComboBox::activated, this, [this] { selectLibrary(); });
    on(Command2, &Zelvora::previousPanel);
    on(Command3, &Zelvora::nextPanel);
    connect(List1, &PathList::rowSelected, this, [this](int row) { selectRow(row, true); });
    connect(List1, &PathList::rowClickedAgain, this, [this](int row) { selectRow(row, false); });
    connect(List1, &PathList::doubleClickedInList, this, &Zelvora::actOnListFocus);
    connect(List1, &PathList::lostFocus, this, [this] {
        for (int cell = 1; cell <= kPanelCells; ++cell)
            DwgThumbnails[cell]->setStretchBltMode(int(StretchMode::WhiteOnBlack));
    });
    for (int cell = 1; cell <= kPanelCells; ++cell) {
        DwgThumbnail* thumbnail = DwgThumbnails[cell];
        connect(thumbnail, &DwgThumbnail::clicked, this,
                [this, cell] { selectCell(cell, fields.panels.lineOfCell(cell)); });
        connect(thumbnail, &DwgThumbnail::doubleClicked, this, [this, cell] { actOnCell(cell); });
        connect(thumbnail, &DwgThumbnail::gotFocus, thumbnail,
                [thumbnail] { thumbnail->setStretchBltMode(int(StretchMode::BlackOnWhite)); });
    }
    connectOptions();

    on(Command12, &Zelvora::toggleEnlargeMode);
    on(Command21, [this] { DwgViewX1->zoomExtents(); });
    on(Command16, [this] { DwgViewX1->zoomIn(); });
    on(Command22, [this] { DwgViewX1->zoomOut(); });
    on(Command15, [this] { DwgViewX1->zoomWindow(); });
    on(Command13, [this] { DwgViewX1->pan(); });
    on(Command14, [this] { DwgViewX1->layersDialog(); });
    on(Command10, &Zelvora::printFromViewer);

    on(Command1, &Zelvora::openNewlib);
    on(Command8, [this] { openHiding(QStringLiteral("MyLib")); });
    on(Command9, [this] { openHiding(QStringLiteral("Options")); });
    on(Command7, [this] { openHiding(QStringLiteral("PrintLib")); });
    on(Command18, [this] { openHiding(QStringLiteral("PrintLib")); });
    on(Command5, [this] {
        Combo1->setFocus();
        openHiding(QStringLiteral("PrintLib"));
    });
    on(Command4, &Zelvora::openSearch);
    on(Command24, &Zelvora::openCart);
    on(Command11, [this] { runAction(ActionCaller::Command11, fields.selectedDrawing); });
    for (PictureBox* logo : {Picture2, Picture11})
        connect(logo, &PictureBox::activated, this, [this] { openHiding(QStringLiteral("frmSplash")); });
    connect(Picture12, &PictureBox::activated, this, &Zelvora::openHelp);
    connect(Picture5, &PictureBox::activated, this, [this] { selectTab(0); });
    connect(Picture9, &PictureBox::activated, this, [this] { selectTab(2); });

    connect(Timer1, &QTimer::timeout, this, &Zelvora::appearAfterLoad);
    connect(Timer2, &QTimer::timeout, this, &Zelvora::runTimer2);
    connect(Resizer1, &Resizer::aboutToLayOut, this, &Zelvora::fitToRoom);
    connect(Resizer1, &Resizer::resized, this, &Zelvora::layOutCells);
}

void Zelvora::connectOptions()
{
    const auto choosing = [this](QRadioButton* choice, Mode chosen) {
        connect(choice, &QRadioButton::toggled, this, [this, chosen](bool set) {
            if (set)
                setOption(chosen);
        });
    };
    choosing(Option1, Mode::Block);
    // The lock waits for any click, also one that finds the option set.
    connect(Option1, &QRadioButton::clicked, this, &Zelvora::lockScaleOnce);
    choosing(Option2, Mode::Xref);
    choosing(Option3, Mode::OpenCopy);
    choosing(Option4, Mode::Queue);
    connect(Check1, &QCheckBox::toggled, this, &Zelvora::setAutoScale);
    connect(Check2, &QCheckBox::toggled, this, &Zelvora::setAlwaysOnTop);
    connect(Check4, &QCheckBox::toggled, this, &Zelvora::setExplode);
    x->installEventFilter(this);
    Picture13->installEventFilter(this);
}

} // namespace zv
