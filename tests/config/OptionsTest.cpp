#include "config/Options.h"

#include "controls/DwgViewX.h"
#include "platform/Files.h"
#include "platform/Profile.h"
#include "support/OfficeFixture.h"
#include "support/OneStepFails.h"
#include "window/TextBytes.h"

#include <QApplication>
#include <QCheckBox>
#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTest>
#include <QTimer>

#include <map>
#include <tuple>

namespace zv {
namespace {

using enum ProfileFile;

const QString kWindow = QStringLiteral("Options");

using Keys = std::map<std::string, std::string>;

class OptionsTest : public OfficeFixture {
protected:
    OptionsTest()
    {
        setKey(User, "Settings", "AOT", "0");
        setKey(User, "Settings", "RibSet", "2");
    }
    Options& window() { return *static_cast<Options*>(program->loaded(kWindow)); }
    void open()
    {
        start();
        ASSERT_TRUE(click("Command9"));
        ASSERT_TRUE(appears(kWindow));
    }
    bool press(const char* control) { return click(QLatin1String(control), kWindow); }
    void storeEveryRule()
    {
        for (const auto& [section, name] : {std::pair{"Mylib", "userlib"},
                                            {"masterxref", "projectfolder"},
                                            {"masterxref", "forcecopy"},
                                            {"FileLog", "WriteLog"},
                                            {"ShopCart", "CartOnly"}})
            setKey(Installation, section, name, "1");
        setKey(Installation, "libload", "FDS", "0");
        setKey(Installation, "FileLog", "LogPath", "/logs/office.csv");
    }
    /// What the installation profile holds of the office's rules, without the keys that are absent.
    Keys stored()
    {
        Keys keys;
        for (const auto& [section, name] : {std::pair{"Mylib", "userlib"},
                                            {"masterxref", "projectfolder"},
                                            {"masterxref", "forcecopy"},
                                            {"libload", "fds"},
                                            {"FileLog", "WriteLog"},
                                            {"FileLog", "LogPath"},
                                            {"ShopCart", "CartOnly"},
                                            {"printing", "fontpath"}}) {
            const std::string value = key(Installation, section, name);
            if (value != "(none)")
                keys[name] = value;
        }
        return keys;
    }
    QAbstractButton* button(const char* name)
    {
        return control<QAbstractButton>(QLatin1String(name), kWindow);
    }

    /// A master folder elsewhere.
    void moveMaster()
    {
        master = folder.file("master");
        std::filesystem::create_directory(master);
        setKey(Installation, "Path", "ZVRpath", master);
    }
};

TEST_F(OptionsTest, AFreshOfficeShowsItsDefaultsAndTheLoadWritesWhatTheyTick)
{
    open();
    EXPECT_EQ(window().windowTitle(), "Administrative Options");
    EXPECT_FALSE(main().isVisible());
    EXPECT_TRUE(button("Check4")->isChecked());
    for (const char* clear : {"Check1", "Check2", "Check5", "Check6"})
        EXPECT_FALSE(button(clear)->isChecked()) << clear;
    EXPECT_TRUE(button("Option1")->isChecked());
    for (const char* disabled : {"Option1", "Option2", "Text2", "Command2"})
        EXPECT_FALSE(enabled(QLatin1String(disabled), kWindow)) << disabled;
    EXPECT_EQ(text("Text1", kWindow), toText(joinPath(installation, "fonts"))) << "the running font folder";
    EXPECT_EQ(stored(), (Keys{{"fds", "1"}}));
    EXPECT_EQ(program->values().Fds, 1);
}

TEST_F(OptionsTest, ARuleThatCannotBeReadIsNotWrittenOverByItsDefault)
{
    storeEveryRule();
    open();
    const Keys before = stored();
    const auto running = [this] {
        const PublicValues& now = program->values();
        return std::tuple(now.Fds, now.ForceCopy, now.CartOnly, now.LogPath);
    };
    const auto ran = running();
    for (const FileStep step : {FileStep::Open, FileStep::Status, FileStep::Read, FileStep::Lock,
                                FileStep::Write, FileStep::Flush, FileStep::Rename}) {
        bool reached = true;
        for (int number = 0; reached; ++number) {
            {
                const OneStepFails files(step, number);
                program->loadAnew(kWindow);
                reached = files.wasReached();
            }
            const std::string where = std::to_string(int(step)) + ", number " + std::to_string(number);
            ASSERT_EQ(stored(), before) << "step " << where;
            ASSERT_EQ(running(), ran) << "step " << where;
            ASSERT_EQ(text("Text2", kWindow), "/logs/office.csv") << "step " << where;
        }
    }
}

TEST_F(OptionsTest, OkLeavesAFontFolderThatCouldNotBeReadAsItIsStored)
{
    setKey(Installation, "Printing", "Fontpath", "/fonts/office");
    open();
    program->values().FontPath = "/fonts/running";
    program->unload(kWindow);
    bool unread = false;
    for (int number = 0; !unread; ++number) {
        const OneStepFails files(FileStep::Open, number);
        program->loadAnew(kWindow);
        ASSERT_TRUE(files.wasReached());
        unread = text("Text1", kWindow) == "/fonts/running";
    }
    program->show(kWindow);
    ASSERT_TRUE(appears(kWindow));
    ASSERT_TRUE(press("Command11"));
    EXPECT_EQ(stored().at("fontpath"), "/fonts/office");
}

TEST_F(OptionsTest, TheLoadShowsAndWritesBackWhatIsStored)
{
    storeEveryRule();
    setKey(Installation, "Printing", "Fontpath", "/fonts/office");
    open();
    const Keys before = stored();
    for (const char* ticked : {"Check1", "Check2", "Check5", "Check6", "Option2"})
        EXPECT_TRUE(button(ticked)->isChecked()) << ticked;
    EXPECT_FALSE(button("Check4")->isChecked());
    EXPECT_TRUE(enabled("Option1", kWindow) && enabled("Text2", kWindow) && enabled("Command2", kWindow));
    EXPECT_EQ(text("Text1", kWindow), "/fonts/office");
    EXPECT_EQ(text("Text2", kWindow), "/logs/office.csv");
    EXPECT_EQ(before, (Keys{{"userlib", "1"},
                            {"projectfolder", "1"},
                            {"forcecopy", "1"},
                            {"fds", "0"},
                            {"WriteLog", "1"},
                            {"LogPath", "/logs/office.csv"},
                            {"CartOnly", "1"},
                            {"fontpath", "/fonts/office"}}));
    EXPECT_EQ(program->values().ForceCopy, 1);
    EXPECT_EQ(program->values().CartOnly, 1);
    EXPECT_EQ(program->values().LogPath, "/logs/office.csv");
}

TEST_F(OptionsTest, OtherNumbersLeaveTheirBoxesClear)
{
    setKey(Installation, "libload", "FDS", "2");
    setKey(Installation, "ShopCart", "CartOnly", "-1");
    setKey(Installation, "masterxref", "projectfolder", "7");
    open();
    for (const char* clear : {"Check2", "Check4", "Check6"})
        EXPECT_FALSE(button(clear)->isChecked()) << clear;
}

TEST_F(OptionsTest, EachBoxWritesItsKeyOnTheClick)
{
    open();
    Keys expected{{"fds", "1"}};
    const auto clickWrites = [&](const char* box, const char* name, const char* value) {
        EXPECT_TRUE(press(box)) << box;
        expected[name] = value;
        EXPECT_EQ(stored(), expected) << box;
    };
    clickWrites("Check1", "userlib", "1");
    clickWrites("Check1", "userlib", "0");
    clickWrites("Check4", "fds", "0");
    EXPECT_EQ(program->values().Fds, 0);
    clickWrites("Check4", "fds", "1");
    EXPECT_EQ(program->values().Fds, 1);
    clickWrites("Check2", "projectfolder", "1");
    clickWrites("Option2", "forcecopy", "1");
    EXPECT_EQ(program->values().ForceCopy, 1);
    clickWrites("Option1", "forcecopy", "0");
    EXPECT_EQ(program->values().ForceCopy, 0);
    clickWrites("Check6", "CartOnly", "1");
    EXPECT_EQ(program->values().CartOnly, 1);
    clickWrites("Check6", "CartOnly", "0");
    EXPECT_EQ(program->values().CartOnly, 0);
}

TEST_F(OptionsTest, TheChosenXrefRuleStaysChosenWhileItIsDisabled)
{
    setKey(Installation, "masterxref", "projectfolder", "1");
    open();
    ASSERT_TRUE(press("Option2"));
    ASSERT_TRUE(press("Check2"));
    EXPECT_FALSE(press("Option1"));
    EXPECT_TRUE(button("Option2")->isChecked());
    EXPECT_EQ(stored().at("forcecopy"), "1");
    EXPECT_EQ(stored().at("projectfolder"), "0");
}

TEST_F(OptionsTest, TickingTheLogWritesItsPathAndClearingItLeavesAPathOfOneBlank)
{
    open();
    ASSERT_TRUE(press("Check5"));
    EXPECT_EQ(stored().at("WriteLog"), "1");
    EXPECT_EQ(stored().at("LogPath"), "");
    EXPECT_EQ(program->values().LogPath, "");
    EXPECT_TRUE(enabled("Text2", kWindow) && enabled("Command2", kWindow));
    type("Text2", "/logs/a.csv", kWindow);
    ASSERT_TRUE(press("Check5"));
    EXPECT_EQ(stored().at("WriteLog"), "0");
    EXPECT_EQ(stored().at("LogPath"), "");
    EXPECT_EQ(program->values().LogPath, " ");
    EXPECT_FALSE(enabled("Text2", kWindow) || enabled("Command2", kWindow));
    ASSERT_TRUE(press("Check5"));
    EXPECT_EQ(stored().at("LogPath"), "/logs/a.csv");
    EXPECT_EQ(program->values().LogPath, "/logs/a.csv");
    EXPECT_FALSE(program->values().LogEnabled) << "that waits for Ok";
}

TEST_F(OptionsTest, CancelDropsThePathsAndKeepsTheClicks)
{
    open();
    const std::string fonts = program->values().FontPath;
    ASSERT_TRUE(press("Check6"));
    type("Text1", "/other", kWindow);
    ASSERT_TRUE(press("Command5"));
    EXPECT_EQ(program->loaded(kWindow), nullptr);
    ASSERT_TRUE(appears("Zelvora"));
    EXPECT_EQ(stored(), (Keys{{"fds", "1"}, {"CartOnly", "1"}}));
    EXPECT_EQ(program->values().CartOnly, 1);
    EXPECT_EQ(program->values().FontPath, fonts);
    EXPECT_TRUE(enabled("Option1")) << "until the next start";
    program->loadAnew("Zelvora");
    EXPECT_FALSE(enabled("Option1"));
}

TEST_F(OptionsTest, TheCloseBoxDoesAsCancel)
{
    open();
    ASSERT_TRUE(press("Check1"));
    window().close();
    EXPECT_EQ(program->loaded(kWindow), nullptr);
    EXPECT_TRUE(appears("Zelvora"));
    EXPECT_EQ(stored().at("userlib"), "1");
}

TEST_F(OptionsTest, OkAppliesTheQueueRuleToTheMainWindow)
{
    setKey(User, "Settings", "insertmode", "0");
    open();
    ASSERT_TRUE(press("Check6"));
    EXPECT_TRUE(main().Option1->isEnabled());
    ASSERT_TRUE(press("Command11"));
    ASSERT_TRUE(appears("Zelvora"));
    for (const QRadioButton* option : {main().Option1, main().Option2, main().Option3})
        EXPECT_FALSE(option->isEnabled());
    EXPECT_TRUE(main().Option4->isChecked());
    EXPECT_EQ(key(User, "Settings", "insertmode"), "3") << "as by a click there";
    ASSERT_TRUE(click("Command9"));
    ASSERT_TRUE(appears(kWindow));
    ASSERT_TRUE(press("Check6"));
    ASSERT_TRUE(press("Command11"));
    for (const QRadioButton* option : {main().Option1, main().Option2, main().Option3})
        EXPECT_TRUE(option->isEnabled());
    EXPECT_TRUE(main().Option4->isChecked());
}

TEST_F(OptionsTest, OkWritesThePathsAndSetsTheRunningValues)
{
    open();
    window().Text1->setText("/fonts/new");
    ASSERT_TRUE(press("Check5"));
    window().Text2->setText("/logs/new.csv");
    ASSERT_TRUE(press("Command11"));
    EXPECT_EQ(program->loaded(kWindow), nullptr);
    EXPECT_EQ(
        stored(),
        (Keys{{"fds", "1"}, {"fontpath", "/fonts/new"}, {"WriteLog", "1"}, {"LogPath", "/logs/new.csv"}}));
    EXPECT_EQ(program->values().FontPath, "/fonts/new");
    EXPECT_EQ(main().DwgViewX1->fontPath(), "/fonts/new");
    EXPECT_EQ(program->values().LogPath, "/logs/new.csv");
    EXPECT_TRUE(program->values().LogEnabled);
}

TEST_F(OptionsTest, OkWithoutALogSwitchesItOff)
{
    setKey(Installation, "FileLog", "WriteLog", "1");
    setKey(Installation, "FileLog", "LogPath", "/logs/a.csv");
    open();
    EXPECT_TRUE(program->values().LogEnabled);
    ASSERT_TRUE(press("Check5"));
    ASSERT_TRUE(press("Command11"));
    EXPECT_FALSE(program->values().LogEnabled);
    EXPECT_EQ(stored().at("WriteLog"), "0");
    EXPECT_EQ(stored().at("LogPath"), "/logs/a.csv");
}

TEST_F(OptionsTest, TheRulesStayInTheInstallationFolderWhereverTheMasterFolderIs)
{
    moveMaster();
    setKey(Master, "ShopCart", "CartOnly", "0");
    open();
    ASSERT_TRUE(press("Check6"));
    ASSERT_TRUE(press("Command11"));
    EXPECT_EQ(key(Installation, "ShopCart", "CartOnly"), "1");
    EXPECT_EQ(key(Master, "ShopCart", "CartOnly"), "0");
    EXPECT_EQ(program->values().CartOnly, 1) << "for this run";
    program->loadAnew("Zelvora");
    EXPECT_EQ(program->values().CartOnly, 0) << "the older value again after a start";
}

TEST_F(OptionsTest, TheWindowStandsOnTopIfTheUserWantsItAndBringsTheMainWindowBackThere)
{
    setKey(User, "Settings", "AOT", "1");
    open();
    EXPECT_TRUE(window().isTopmost());
    ASSERT_TRUE(press("Command5"));
    EXPECT_TRUE(main().isTopmost());
}

/// Does something with the save dialog once it stands.
void onFileDialog(std::function<void(QFileDialog&)> deed)
{
    auto* timer = new QTimer(qApp);
    QObject::connect(timer, &QTimer::timeout, timer, [timer, deed] {
        if (auto* dialog = qobject_cast<QFileDialog*>(QApplication::activeModalWidget())) {
            timer->stop();
            timer->deleteLater();
            deed(*dialog);
        }
    });
    timer->start(10);
}

TEST_F(OptionsTest, TheLogsFileIsChosenInASaveDialogAndWrittenByOk)
{
    QCoreApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
    open();
    ASSERT_TRUE(press("Check5"));
    const QString chosen = toText(folder.file("user/mine.csv"));
    onFileDialog([&](QFileDialog& dialog) {
        EXPECT_EQ(dialog.windowTitle(), "Zelvora Log File:");
        EXPECT_EQ(dialog.acceptMode(), QFileDialog::AcceptSave);
        EXPECT_EQ(dialog.nameFilters(), QStringList{"CSV Files (*.csv) (Zelvora_Log.csv)"});
        auto* name = dialog.findChild<QLineEdit*>("fileNameEdit");
        EXPECT_EQ(name->text(), "Zelvora_Log.csv");
        name->setText(chosen);
        static_cast<QDialog&>(dialog).accept();
    });
    ASSERT_TRUE(press("Command2"));
    EXPECT_EQ(text("Text2", kWindow), chosen);
    EXPECT_EQ(program->values().LogPath, toBytes(chosen));
    EXPECT_EQ(stored().at("LogPath"), "");
    ASSERT_TRUE(press("Command11"));
    EXPECT_EQ(stored().at("LogPath"), toBytes(chosen));
}

TEST_F(OptionsTest, CancellingTheSaveDialogLeavesItsBareName)
{
    open();
    ASSERT_TRUE(press("Check5"));
    onFileDialog([](QFileDialog& dialog) { dialog.reject(); });
    ASSERT_TRUE(press("Command2"));
    EXPECT_EQ(text("Text2", kWindow), "Zelvora_Log.csv");
    EXPECT_EQ(program->values().LogPath, "Zelvora_Log.csv");
}

TEST_F(OptionsTest, TheKeyboardAloneReachesEveryControl)
{
    setKey(Installation, "masterxref", "projectfolder", "1");
    setKey(Installation, "FileLog", "WriteLog", "1");
    open();
    QStringList met;
    for (int i = 0; i < 14; ++i) {
        ASSERT_NE(QApplication::focusWidget(), nullptr);
        met << QApplication::focusWidget()->objectName();
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    }
    EXPECT_EQ(met,
              (QStringList{"Check1", "Check2", "Option1", "Check4", "Check6", "Text1", "Command1", "Check5",
                           "Text2", "Command2", "Command11", "Command5", "Command6", "Check1"}));
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_O, Qt::AltModifier);
    EXPECT_TRUE(waitUntil([this] { return program->loaded(kWindow) == nullptr; }));
}

} // namespace
} // namespace zv
