#include "BenchProgram.h"

#include "platform/Files.h"

#include <QFileDialog>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QPushButton>

#include <filesystem>

namespace zv::bench {

namespace {

/// The dialogs in which drawings are chosen, as a user answers them.
class FileDialogs : public BenchProgram {
protected:
    FileDialogs() { QCoreApplication::setAttribute(Qt::AA_DontUseNativeDialogs); }
    ~FileDialogs() override { QCoreApplication::setAttribute(Qt::AA_DontUseNativeDialogs, false); }

    std::string subfolder(const char* name)
    {
        std::filesystem::create_directory(folder.file(name));
        return folder.file(name);
    }
    /// Types a command that shows a file dialog, and a name there; an empty one leaves the dialog.
    void choose(const char* command, const std::string& name)
    {
        const WhenThere user([this] { return window->findChild<QFileDialog*>(); },
                             [this, name](QFileDialog& dialog) {
                                 shownFolder = QDir::toNativeSeparators(dialog.directory().absolutePath());
                                 shownName = nameField(dialog).text();
                                 if (name.empty())
                                     return dialog.reject();
                                 dialog.selectFile(QString::fromStdString(name));
                                 QMetaObject::invokeMethod(&dialog, "accept");
                             });
        window->commandLine().type(command);
    }
    static QLineEdit& nameField(QFileDialog& dialog)
    {
        return *dialog.findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
    }
    std::string path() const { return window->workshop().active()->path(); }

    QString shownFolder, shownName;
};

TEST_F(FileDialogs, StartInTheFolderThatWasUsedLastAlsoAfterARestart)
{
    const std::string used = subfolder("used");
    choose("CIRCLE 0,0 1 SAVEAS\r", joinPath(used, "Plan.dwg"));
    EXPECT_EQ(path(), joinPath(used, "Plan.dwg"));
    choose("SAVEAS\r", {});
    EXPECT_EQ(shownFolder.toStdString(), used);
    choose("OPEN\r", {});
    EXPECT_EQ(shownFolder.toStdString(), used);
    server.reset();
    window = std::make_unique<BenchWindow>();
    choose("OPEN\r", {});
    EXPECT_EQ(shownFolder.toStdString(), used);
}

TEST_F(FileDialogs, StartWithTheDrawingsName)
{
    choose("SAVEAS\r", {});
    EXPECT_EQ(shownName, QStringLiteral("Drawing1.dwg"));
    choose("SAVEAS\r", folder.file("Plan.dwg"));
    choose("SAVEAS\r", {});
    EXPECT_EQ(shownName, QStringLiteral("Plan.dwg"));
}

TEST_F(FileDialogs, StartSomewhereElseWhereTheLastFolderIsGone)
{
    const std::string used = subfolder("used");
    choose("SAVEAS\r", joinPath(used, "Plan.dwg"));
    std::filesystem::remove_all(used);
    choose("SAVEAS\r", {});
    EXPECT_NE(shownFolder, QString());
    EXPECT_NE(shownFolder.toStdString(), used);
}

TEST_F(FileDialogs, AskAboutTheFileThatIsMeantWhereItsEndingIsNotTyped)
{
    folder.write("Taken.dwg", "old");
    QString question;
    const WhenThere user([] { return qobject_cast<QMessageBox*>(QApplication::activeModalWidget()); },
                         [&](QMessageBox& box) {
                             question = box.text();
                             box.button(QMessageBox::No)->click();
                             // The dialog stands again.
                             if (auto* const dialog = window->findChild<QFileDialog*>())
                                 dialog->reject();
                         });
    choose("CIRCLE 0,0 1 SAVEAS\r", folder.file("Taken"));
    EXPECT_TRUE(question.contains(QStringLiteral("Taken.dwg"))) << question.toStdString();
    EXPECT_EQ(folder.read("Taken.dwg"), "old");
    EXPECT_EQ(path(), "");
}

TEST_F(FileDialogs, PropertiesThatNobodyTouchedStayAsTheyWere)
{
    dwg::Properties properties;
    properties.comments = u"two\r\nlines";
    properties.custom = {{u"Note", u"one\ntwo"}, {u"a=b", u"c"}};
    window->workshop().active()->setProperties(properties);
    const WhenThere user(
        [this] { return window->findChild<QDialog*>(QStringLiteral("DwgProps")); },
        [](QDialog& dialog) {
            dialog.findChild<QLineEdit*>(QStringLiteral("Title"))->setText(QStringLiteral("Plan"));
            dialog.accept();
        });
    window->commandLine().type("DWGPROPS\r");
    properties.title = u"Plan";
    EXPECT_EQ(window->workshop().active()->properties(), properties);
}

TEST_F(FileDialogs, ADrawingThatCannotBeSavedAtTheCloseBoxCanGetAnotherName)
{
    const std::string read = folder.file("Read.dwg"), other = folder.file("Other.dwg");
    ASSERT_TRUE(window->workshop().active()->save(read));
    std::filesystem::permissions(read, std::filesystem::perms::owner_read);
    window->commandLine().type("CIRCLE 0,0 1 ");
    const auto press = [](QMessageBox& box) {
        for (QAbstractButton* const button : box.buttons()) {
            if (box.buttonRole(button) == QMessageBox::AcceptRole)
                return button->click();
        }
    };
    const WhenThere keep([this] { return window->findChild<QMessageBox*>(QStringLiteral("KeepDrawings")); },
                         press);
    QString told;
    const WhenThere agree([this] { return window->findChild<QMessageBox*>(QStringLiteral("Agree")); },
                          [&](QMessageBox& box) {
                              told = box.text();
                              press(box);
                          });
    const WhenThere name([this] { return window->findChild<QFileDialog*>(); },
                         [&](QFileDialog& dialog) {
                             dialog.selectFile(QString::fromStdString(other));
                             QMetaObject::invokeMethod(&dialog, "accept");
                         });
    EXPECT_TRUE(window->close());
    EXPECT_TRUE(told.contains(QStringLiteral("is read-only"))) << told.toStdString();
    EXPECT_EQ((*BenchDrawing::load(other))->modelSpace().entities.size(), 1U);
    EXPECT_TRUE((*BenchDrawing::load(read))->modelSpace().entities.empty());
}

} // namespace

} // namespace zv::bench
