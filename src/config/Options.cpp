#include "config/Options.h"

#include "config/Keys.h"
#include "controls/DwgViewX.h"
#include "controls/ImageList.h"
#include "controls/NamedControls.h"
#include "help/ProgramHelp.h"
#include "window/MainWindow.h"
#include "window/TextBytes.h"

#include <QBoxLayout>
#include <QCheckBox>
#include <QDir>
#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>

namespace zv {

namespace {

namespace key = keys::options;

const QString kLogName = QStringLiteral("Zelvora_Log.csv");
constexpr int kPicture = 32; ///< Pixels.

template <class Control> Control* captioned(const char* name, const char* caption, QWidget* parent)
{
    auto* control = named<Control>(name, parent);
    control->setText(QLatin1String(caption));
    return control;
}

QLabel* picture(const char* name, const char* shown, QWidget* parent)
{
    auto* label = named<QLabel>(name, parent);
    label->setPixmap(namedPicture(QLatin1String(shown)).pixmap(kPicture, kPicture));
    label->setAlignment(Qt::AlignTop | Qt::AlignHCenter);
    label->setFixedWidth(kPicture);
    return label;
}

} // namespace

Options::Options(Program& program)
    : Window(program, QStringLiteral("Options"), QStringLiteral("Administrative Options"))
{
    makeRules();
    makePaths();
    makeButtons();
    layOut();
    connectHandlers();
    Check1->setFocus();
}

void Options::makeRules()
{
    Image1 = picture("Image1", "mylib", this);
    Image3 = picture("Image3", "xref", this);
    Image4 = picture("Image4", "insert", this);
    Picture1 = picture("Picture1", "queue", this);
    Check1 =
        captioned<QCheckBox>("Check1", "Allow \"MyLib\" to add External Drawings Outside of Libraries", this);
    Check2 = captioned<QCheckBox>(
        "Check2", "Allow Master Xrefs to be copied From Master folder to Project Folder", this);
    Option1 = captioned<QRadioButton>("Option1", "Make Xref Copy Optional", this);
    Option2 = captioned<QRadioButton>("Option2", "Make Xref Copy Mandatory", this);
    Check4 = captioned<QCheckBox>("Check4", "Always Maintain Filedia = 1", this);
    Check5 = captioned<QCheckBox>("Check5", "Write Activity Log File", this);
    Check5->setToolTip(QStringLiteral("Writes a log entry each time DWG is inserted"));
    Check6 = captioned<QCheckBox>("Check6", "Use Drawing Queue Only", this);
    Check6->setToolTip(QStringLiteral(
        "Check this if you want to disable all xref/insert options and only use the Shopping Cart"));
}

void Options::makePaths()
{
    Frame1 = named<CaptionFrame>("Frame1", this);
    Frame1->setTitle(QStringLiteral("Font Location"));
    Label1 = captioned<QLabel>("Label1", "Specify or Browse for Font Path", Frame1);
    Text1 = named<QLineEdit>("Text1", Frame1);
    Label1->setBuddy(Text1);
    Text1->setAccessibleName(tr("Font path"));
    Command1 = captioned<QPushButton>("Command1", "&Browse...", Frame1);
    Command1->setAccessibleName(tr("Browse for the font path"));
    Frame2 = named<CaptionFrame>("Frame2", this);
    Frame2->setTitle(QStringLiteral("Log File"));
    Label2 = captioned<QLabel>("Label2", "Log Path:", Frame2);
    Text2 = named<QLineEdit>("Text2", Frame2);
    Label2->setBuddy(Text2);
    Text2->setAccessibleName(tr("Log path"));
    Command2 = captioned<QPushButton>("Command2", "B&rowse...", Frame2);
    Command2->setAccessibleName(tr("Browse for the log file"));
}

void Options::makeButtons()
{
    Command11 = captioned<QPushButton>("Command11", "&Ok", this);
    Command11->setToolTip(QStringLiteral("Save Settings and Exit"));
    Command5 = captioned<QPushButton>("Command5", "&Cancel", this);
    Command5->setToolTip(QStringLiteral("Close without saving changes"));
    Command6 = captioned<QPushButton>("Command6", "&Help", this);
    Command6->setToolTip(QStringLiteral("Zelvora Help Menu"));
}

void Options::layOut()
{
    auto* all = new QVBoxLayout(this);
    all->setContentsMargins(16, 16, 16, 16);
    all->setSpacing(16);
    const auto rule = [all](QLabel* beside, std::initializer_list<QWidget*> controls) {
        auto* row = new QHBoxLayout;
        row->setSpacing(16);
        row->addWidget(beside);
        auto* column = new QVBoxLayout;
        column->setSpacing(8);
        for (QWidget* control : controls)
            column->addWidget(control);
        row->addLayout(column, 1);
        all->addLayout(row);
    };
    rule(Image1, {Check1});
    rule(Image3, {Check2, Option1, Option2});
    rule(Image4, {Check4});
    rule(Picture1, {Check6});
    const auto path = [](CaptionFrame* frame, QLabel* label, QLineEdit* text, QPushButton* browse) {
        auto* rows = new QVBoxLayout(frame);
        rows->addWidget(label);
        auto* row = new QHBoxLayout;
        row->addWidget(text, 1);
        row->addWidget(browse);
        rows->addLayout(row);
    };
    path(Frame1, Label1, Text1, Command1);
    path(Frame2, Label2, Text2, Command2);
    static_cast<QVBoxLayout*>(Frame2->layout())->insertWidget(0, Check5);
    all->addWidget(Frame1);
    all->addWidget(Frame2);
    all->addStretch(1);
    auto* buttons = new QHBoxLayout;
    buttons->addStretch(1);
    for (QPushButton* command : {Command11, Command5, Command6})
        buttons->addWidget(command);
    all->addLayout(buttons);

    const QList<QWidget*> order{Check1,   Check2, Option1, Option2,  Check4,    Check6,   Text1,
                                Command1, Check5, Text2,   Command2, Command11, Command5, Command6};
    for (qsizetype i = 1; i < order.size(); ++i)
        setTabOrder(order[i - 1], order[i]);
}

void Options::connectHandlers()
{
    // What is set from code runs its handler as a click does; so the load writes what differs from a box that
    // is clear, with the running values.
    connect(Check1, &QCheckBox::toggled, this, [this](bool on) { writeFlag(key::userlib, on); });
    connect(Check2, &QCheckBox::toggled, this, &Options::setXrefCopies);
    connect(Option1, &QRadioButton::toggled, this, [this](bool set) {
        if (set)
            setForceCopy(false);
    });
    connect(Option2, &QRadioButton::toggled, this, [this](bool set) {
        if (set)
            setForceCopy(true);
    });
    connect(Check4, &QCheckBox::toggled, this, [this](bool on) {
        writeFlag(key::FDS, on);
        if (!m_settingUnknown)
            values().Fds = on ? 1 : 0;
    });
    connect(Check5, &QCheckBox::toggled, this, &Options::setLogging);
    connect(Check6, &QCheckBox::toggled, this, &Options::setQueueOnly);
    connect(Command1, &QPushButton::clicked, this, &Options::chooseFontFolder);
    connect(Command2, &QPushButton::clicked, this, &Options::chooseLogFile);
    connect(Command11, &QPushButton::clicked, this, &Options::save);
    connect(Command5, &QPushButton::clicked, this, &Options::leave);
    connect(Command6, &QPushButton::clicked, this, [this] { showHelpContents(program()); });
}

void Options::load()
{
    setTopmost(values().AlwaysOnTop == 1);
    m_loading = true;
    m_settingUnknown = false;
    Check4->setChecked(readSetting(key::FDS) == 1);
    const bool copies = readSetting(key::projectfolder) == 1;
    Check2->setChecked(copies);
    Option1->setEnabled(copies);
    Option2->setEnabled(copies);
    const int forced = readSetting(key::forcecopy);
    if (forced == 1)
        Option2->setChecked(true);
    else if (forced == 0)
        Option1->setChecked(true);
    Check6->setChecked(readSetting(key::CartOnly) == 1);
    Check1->setChecked(readSetting(key::userlib) == 1);
    const Result<std::string> storedFonts = profiles().stored(key::fontpath);
    const std::string fonts = storedFonts.valueOr({});
    Text1->setText(toText(fonts.empty() ? values().FontPath : fonts));
    if (!storedFonts)
        m_unreadFonts = Text1->text();
    const Result<std::string> storedLog = profiles().stored(key::LogPath);
    m_settingUnknown = m_settingUnknown || !storedLog;
    const std::string log = storedLog.valueOr(values().LogPath);
    Text2->setText(toText(log));
    const bool logging = readSetting(key::WriteLog) == 1;
    enableLogPath(logging);
    Check5->setChecked(logging);
    if (logging && !log.empty())
        values().LogPath = log;
    m_settingUnknown = false;
    m_loading = false;
}

/// From the first setting on that cannot be read the load writes none.
int Options::readSetting(const NumberKey& key)
{
    const Result<int> stored = profiles().storedNumber(key);
    m_settingUnknown = m_settingUnknown || !stored;
    return stored.valueOr(key.fallback);
}

void Options::unloading()
{
    if (ClosedByButton == 1)
        showMainWindow(program());
}

// ---- what a click writes, whatever button the window is left by

void Options::writeFlag(const ProfileKey& key, bool set)
{
    if (!m_settingUnknown)
        profiles().writeFlag(key, set);
}

void Options::writeText(const ProfileKey& key, const QLineEdit* field)
{
    if (!m_settingUnknown)
        profiles().write(key, toBytes(field->text()));
}

/// The chosen option stays chosen while it is disabled.
void Options::setXrefCopies(bool allowed)
{
    writeFlag(key::projectfolder, allowed);
    Option1->setEnabled(allowed);
    Option2->setEnabled(allowed);
}

void Options::setForceCopy(bool forced)
{
    if (!Check2->isChecked() || m_settingUnknown)
        return;
    writeFlag(key::forcecopy, forced);
    values().ForceCopy = forced ? 1 : 0;
}

/// A rule is off until its new state is written. The load, which only writes what it has read, leaves it on:
/// were its second write to fail, the office's rule would be gone without a click.
void Options::switchOffFirst(const ProfileKey& key)
{
    if (!m_loading)
        writeFlag(key, false);
}

/// The log's own flag waits for the Ok button.
void Options::setLogging(bool on)
{
    switchOffFirst(key::WriteLog);
    enableLogPath(on);
    if (!on) {
        values().LogPath = std::string(" ");
        return;
    }
    values().LogPath = toBytes(Text2->text());
    writeFlag(key::WriteLog, true);
    writeText(key::LogPath, Text2);
}

/// What the main window lets one choose is changed by the Ok button alone.
void Options::setQueueOnly(bool only)
{
    switchOffFirst(key::CartOnly);
    values().CartOnly = only ? 1 : 0;
    writeFlag(key::CartOnly, only);
}

void Options::enableLogPath(bool enabled)
{
    Text2->setEnabled(enabled);
    Command2->setEnabled(enabled);
}

// ---- paths

/// Leaving the dialog without a choice leaves the name that it began with.
void Options::chooseLogFile()
{
    QFileDialog dialog(this, QStringLiteral("Zelvora Log File:"), QString(),
                       QStringLiteral("CSV Files (*.csv) (%1)").arg(kLogName));
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setOption(QFileDialog::HideNameFilterDetails);
    dialog.selectFile(kLogName);
    const bool chosen = dialog.exec() == QDialog::Accepted && !dialog.selectedFiles().isEmpty();
    const QString name = chosen ? QDir::toNativeSeparators(dialog.selectedFiles().first()) : kLogName;
    values().LogPath = toBytes(name);
    Text2->setText(name);
}

void Options::chooseFontFolder()
{
    program().hide(objectName());
    Window* fonts = program().load(QStringLiteral("Fontpath"));
    fonts->findChild<QLineEdit*>(QStringLiteral("Text1"))->setText(Text1->text());
    program().show(fonts->objectName());
}

// ---- leaving

void Options::applyQueueOnly()
{
    MainWindow* main = mainWindow(program());
    if (!main)
        return;
    const bool only = Check6->isChecked();
    for (QRadioButton* option : {main->Option1, main->Option2, main->Option3})
        option->setEnabled(!only);
    if (only)
        main->Option4->setChecked(true);
}

void Options::applyPaths()
{
    // A folder that could not be read is not replaced by the one that was shown for want of it.
    if (m_unreadFonts != Text1->text())
        writeText(key::fontpath, Text1);
    values().FontPath = toBytes(Text1->text());
    if (MainWindow* main = mainWindow(program()))
        main->DwgViewX1->setFontFolder(values().FontPath);
    values().LogEnabled = Check5->isChecked();
    if (!values().LogEnabled)
        return;
    values().LogPath = toBytes(Text2->text());
    writeFlag(key::WriteLog, true);
    writeText(key::LogPath, Text2);
}

void Options::save()
{
    applyQueueOnly();
    applyPaths();
    leave();
}

void Options::leave()
{
    ClosedByButton = 2;
    showMainWindow(program());
    program().unload(objectName());
}

} // namespace zv
