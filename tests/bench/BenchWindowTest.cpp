#include "BenchProgram.h"

#include "support/RealDrawings.h"

#include <QAction>
#include <QDialog>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTabBar>
#include <QTimer>

#include <cmath>
#include <filesystem>

namespace zv::bench {

namespace {

TEST_F(BenchProgram, AnswersTheOperationsOfTheProgram)
{
    ASSERT_TRUE(listens);
    drive([&](AutomationObject& application) {
        EXPECT_EQ(*asText(application.get("Version")), "20.0");
        EXPECT_EQ(*asText(application.get("CAPTION")), "Zelvora Bench - [Drawing1.dwg]");
        EXPECT_TRUE(application.set("Visible", true));
        EXPECT_FALSE(application.set("Caption", std::string("x")));
        EXPECT_EQ(application.get("Nonsense").error().code, ErrorCode::NotFound);
        const auto drawing = asObject(application.get("ActiveDocument"));
        ASSERT_TRUE(drawing);
        EXPECT_EQ(std::get<std::int64_t>(*(*drawing)->call("GetVariable", {std::string("filedia")})), 1);
        EXPECT_TRUE((*drawing)->call("SetVariable", {std::string("Filedia"), std::int64_t{0}}));
        EXPECT_FALSE((*drawing)->call("SetVariable", {std::string("Filedia"), 0.0}));
        EXPECT_FALSE((*drawing)->call("GetVariable", {std::string("nonsense")}));
        EXPECT_TRUE(*asBool((*drawing)->get("ObjectSnapMode")));
        EXPECT_TRUE((*drawing)->set("ObjectSnapMode", false));
        EXPECT_FALSE(*asBool((*drawing)->get("ObjectSnapMode")));
        EXPECT_TRUE((*drawing)->get("ActiveSpace"));
        const auto blocks = (*asObject((*drawing)->get("Blocks")))->items();
        ASSERT_EQ(blocks->size(), 2U);
        const auto space = asObject((*blocks)[0]);
        EXPECT_EQ(*asText((*space)->get("Name")), "*Model_Space");
        EXPECT_TRUE(*asBool((*space)->get("IsLayout")));
        EXPECT_FALSE(*asBool((*space)->get("IsXRef")));
        const auto documents = asObject((*asObject((*drawing)->get("Application")))->get("Documents"));
        EXPECT_TRUE((*documents)->call("Add", {}));
        EXPECT_EQ(*asNumber((*documents)->get("Count")), 2);
        EXPECT_TRUE((*drawing)->call("Close", {false, std::string("x.dwg")}));
        EXPECT_EQ(*asNumber((*documents)->get("Count")), 1);
        EXPECT_FALSE((*drawing)->get("Blocks"));
    });
}

TEST_F(BenchProgram, PointIsPickedOnTheCanvas)
{
    AutomationPoint picked;
    drive(
        [&](AutomationObject& application) {
            const auto drawing = asObject(application.get("ActiveDocument"));
            const auto utility = asObject((*drawing)->get("Utility"));
            const auto point =
                asPoint((*utility)->call("GetPoint", {MissingArgument{}, std::string("\r\nWhere: ")}));
            ASSERT_TRUE(point);
            picked = *asPoint((*utility)->call("TranslateCoordinates",
                                               {*point, std::monostate{}, std::monostate{}, false}));
        },
        [&] {
            EXPECT_TRUE(waitForPrompt(QStringLiteral("Where: ")));
            pickAt(4, 3);
        });
    EXPECT_NEAR(picked.x, 4, 0.05);
    EXPECT_NEAR(picked.y, 3, 0.05);
}

TEST_F(BenchProgram, EscapeAtAPromptOfAnotherProgramIsCancelled)
{
    for (const char* call : {"GetPoint", "GetString"}) {
        ErrorCode code = ErrorCode::Failed;
        drive(
            [&](AutomationObject& application) {
                const auto drawing = asObject(application.get("ActiveDocument"));
                code = (*asObject((*drawing)->get("Utility")))
                           ->call(call, {MissingArgument{}, std::string("Say: ")})
                           .error()
                           .code;
            },
            [&] {
                EXPECT_TRUE(waitForPrompt(QStringLiteral("Say: ")));
                QTest::keyClick(line, Qt::Key_Escape);
            });
        EXPECT_EQ(code, ErrorCode::Cancelled) << call;
    }
}

TEST_F(BenchProgram, TextIsTypedAtTheCommandLine)
{
    for (const char* typed : {"name", ""}) {
        std::string text = "none";
        drive(
            [&](AutomationObject& application) {
                const auto drawing = asObject(application.get("ActiveDocument"));
                text = asText((*asObject((*drawing)->get("Utility")))
                                  ->call("GetString", {false, std::string("Name: ")}))
                           .valueOr("failed");
            },
            [&] {
                EXPECT_TRUE(waitForPrompt(QStringLiteral("Name: ")));
                QTest::keyClicks(line, QLatin1String(typed));
                QTest::keyClick(line, Qt::Key_Return);
            });
        EXPECT_EQ(text, typed);
    }
}

TEST_F(BenchProgram, OthersAreBusyWhileACallWaits)
{
    std::atomic<bool> refused = false;
    drive(
        [&](AutomationObject& application) {
            const auto pump = test::testPump();
            const auto carrier = test::testCarrier(*pump, {1'000, 100});
            std::thread waiting([&] {
                const auto drawing = asObject(application.get("ActiveDocument"));
                static_cast<void>((*asObject((*drawing)->get("Utility")))->call("GetPoint", {}));
            });
            const auto second = carrier->attach(kName);
            ASSERT_TRUE(second);
            // The first call needs its time to arrive.
            while ((*second)->get("Version")) {
            }
            refused = true;
            waiting.join();
        },
        [&] {
            EXPECT_TRUE(waitForPrompt(QStringLiteral("Specify a point:")));
            EXPECT_TRUE(QTest::qWaitFor([&] { return refused.load(); }, 10'000));
            QTest::keyClick(line, Qt::Key_Escape);
        });
    EXPECT_EQ(prompt(), QStringLiteral("Command:"));
}

TEST_F(BenchProgram, ALongPromptDoesNotWidenTheWindow)
{
    const int narrowest = window->minimumSizeHint().width();
    window->findChild<QLabel*>(QStringLiteral("Prompt"))->setText(QString(400, QLatin1Char('x')));
    EXPECT_LE(window->minimumSizeHint().width(), narrowest + 40);
}

TEST_F(BenchProgram, SendCommandReturnsAsSoonAsAPromptWaits)
{
    const std::string path = makeRing(1);
    drive([&](AutomationObject& application) {
        const auto drawing = asObject(application.get("ActiveDocument"));
        EXPECT_TRUE((*drawing)->call(
            "SendCommand", {"(command \"_.-insert\" \"" + path + "\"\"X\"\"2\"\"Y\"\"2\"\"Z\"\"2\")\r"}));
        EXPECT_EQ(*asNumber((*drawing)->call("GetVariable", {std::string("CMDACTIVE")})), 1);
    });
    pickAt(5, 4);
    QTest::keyClick(line, Qt::Key_Return);
    EXPECT_EQ(prompt(), QStringLiteral("Command:"));
    const auto& entities = window->workshop().active()->modelSpace().entities;
    ASSERT_EQ(entities.size(), 1U);
    EXPECT_NEAR(std::get<dwg::Insert>(entities[0].geometry).position.x, 5, 0.05);
    EXPECT_TRUE(window->findChild<QPlainTextEdit*>(QStringLiteral("History"))
                    ->toPlainText()
                    .contains(QStringLiteral("_.-insert")));
}

TEST_F(BenchProgram, NewDrawingShowsItsLimits)
{
    const dwg::Box seen = canvas->viewBox();
    EXPECT_LE(seen.min.x, 0);
    EXPECT_LE(seen.min.y, 0);
    EXPECT_GE(seen.max.x, 12);
    EXPECT_GE(seen.max.y, 9);
    EXPECT_TRUE(seen.width() < 24 || seen.height() < 18);
}

TEST_F(BenchProgram, BlockIsSeenAtThePointerBeforeThePick)
{
    typeInsertion(makeRing(1));
    QTest::mouseMove(canvas, canvas->toPixels({5, 4, 0}).toPoint());
    const double side = std::sqrt(2.0);
    EXPECT_TRUE(isDrawnAt(5 + side, 4 + side));
    QTest::mouseMove(canvas, canvas->toPixels({7, 5, 0}).toPoint());
    EXPECT_FALSE(isDrawnAt(5 + side, 4 + side));
    EXPECT_TRUE(isDrawnAt(7 + side, 5 + side));
    QTest::keyClick(line, Qt::Key_Escape);
    EXPECT_FALSE(isDrawnAt(7 + side, 5 + side));
}

TEST_F(BenchProgram, BigBlockIsSeenWholeInAnEmptyDrawingBeforeAndAfterThePick)
{
    typeInsertion(makeRing(500));
    EXPECT_GE(canvas->viewBox().width(), 2000);
    const dwg::Box seen = canvas->viewBox();
    pickAt(seen.max.x, seen.max.y);
    QTest::keyClick(line, Qt::Key_Return);
    EXPECT_EQ(prompt(), QStringLiteral("Command:"));
    const auto& entities = window->workshop().active()->modelSpace().entities;
    ASSERT_EQ(entities.size(), 1U);
    const dwg::Point3 at = std::get<dwg::Insert>(entities[0].geometry).position;
    EXPECT_GE(canvas->viewBox().max.x, at.x + 1000);
    EXPECT_GE(canvas->viewBox().max.y, at.y + 1000);
}

TEST_F(BenchProgram, BlockFarFromItsBaseIsSeenBeforeThePick)
{
    typeInsertion(makeRing(1, {300, 0, 0}));
    const dwg::Point2 middle = canvas->viewBox().center();
    QTest::mouseMove(canvas, canvas->toPixels({middle.x, middle.y, 0}).toPoint());
    EXPECT_LE(canvas->viewBox().min.x, middle.x - 602 + 1);
    EXPECT_TRUE(isDrawnAt(middle.x - 600, middle.y + 2));
}

TEST_F(BenchProgram, ViewOfADrawingWithContentIsTheUsersOwn)
{
    window->commandLine().type("LINE 0,0 1,1 \r");
    const dwg::Box before = canvas->viewBox();
    typeInsertion(makeRing(500));
    pickAt(5, 4);
    QTest::keyClick(line, Qt::Key_Return);
    EXPECT_EQ(canvas->viewBox().width(), before.width());
}

TEST_F(BenchProgram, CallWaitsForThePropertiesDialog)
{
    bool sent = false;
    QTimer user;
    drive(
        [&](AutomationObject& application) {
            const auto drawing = asObject(application.get("ActiveDocument"));
            sent = (*drawing)->call("SendCommand", {std::string(".DWGPROPS\r")}).ok();
        },
        [&] {
            // The dialog runs a loop of its own, in which only a timer has its turn.
            QObject::connect(&user, &QTimer::timeout, [&] {
                auto* const dialog = window->findChild<QDialog*>(QStringLiteral("DwgProps"));
                if (dialog == nullptr || !dialog->isVisible())
                    return;
                user.stop();
                dialog->findChild<QLineEdit*>(QStringLiteral("Keywords"))->setText(QStringLiteral("bolt m8"));
                dialog->accept();
            });
            user.start(5);
        });
    EXPECT_TRUE(sent);
    EXPECT_EQ(window->workshop().active()->properties().keywords, u"bolt m8");
}

/// Presses a button of the question about unsaved drawings as soon as it stands; gives its text.
class KeepAnswer {
public:
    KeepAnswer(QWidget* window, const QString& caption)
    {
        QObject::connect(&m_user, &QTimer::timeout, [this, window, caption] {
            auto* const box = window->findChild<QMessageBox*>(QStringLiteral("KeepDrawings"));
            if (box == nullptr || !box->isVisible())
                return;
            m_user.stop();
            text = box->text();
            ready = box->defaultButton()->text();
            for (QAbstractButton* const button : box->buttons()) {
                if (button->text().remove(QLatin1Char('&')) == caption)
                    return button->click();
            }
            box->reject();
        });
        m_user.start(5);
    }
    QString text, ready;

private:
    QTimer m_user;
};

TEST_F(BenchProgram, CloseBoxNamesWhatIsNotSavedAndItsReadyAnswerKeepsTheWork)
{
    window->commandLine().type("CIRCLE 0,0 1 ");
    window->workshop().add();
    window->commandLine().type("CIRCLE 0,0 1 ");
    KeepAnswer user(window.get(), QStringLiteral("Cancel"));
    window->close();
    EXPECT_TRUE(window->isVisible());
    EXPECT_EQ(user.text, QStringLiteral("These drawings are not saved:\n\nDrawing1.dwg\nDrawing2.dwg"));
    EXPECT_EQ(user.ready, QStringLiteral("&Save all"));
}

TEST_F(BenchProgram, CloseBoxSavesAll)
{
    const std::string path = folder.file("Plan.dwg");
    ASSERT_TRUE(window->workshop().active()->save(path));
    window->commandLine().type("CIRCLE 0,0 1 ");
    KeepAnswer user(window.get(), QStringLiteral("Save"));
    window->close();
    EXPECT_FALSE(window->isVisible());
    EXPECT_EQ((*BenchDrawing::load(path))->modelSpace().entities.size(), 1U);
}

TEST_F(BenchProgram, CloseButtonOfATabAsks)
{
    window->commandLine().type("CIRCLE 0,0 1 ");
    auto* const tabs = window->findChild<QTabBar*>(QStringLiteral("Drawings"));
    ASSERT_TRUE(tabs->tabsClosable());
    {
        KeepAnswer user(window.get(), QStringLiteral("Cancel"));
        Q_EMIT tabs->tabCloseRequested(0);
        EXPECT_EQ(user.text, QStringLiteral("Save the changes to Drawing1.dwg?"));
    }
    EXPECT_EQ(tabs->count(), 1);
    KeepAnswer user(window.get(), QStringLiteral("Don't save"));
    Q_EMIT tabs->tabCloseRequested(0);
    EXPECT_EQ(tabs->count(), 0);
}

TEST_F(BenchProgram, UpAndDownRecallTypedLines)
{
    QTest::keyClicks(line, QStringLiteral("REGEN\rZOOM E\r"));
    QTest::keyClick(line, Qt::Key_Up);
    EXPECT_EQ(line->text(), QStringLiteral("ZOOM E"));
    QTest::keyClick(line, Qt::Key_Up);
    EXPECT_EQ(line->text(), QStringLiteral("REGEN"));
    QTest::keyClick(line, Qt::Key_Down);
    QTest::keyClick(line, Qt::Key_Down);
    EXPECT_EQ(line->text(), QString());
}

TEST_F(BenchProgram, UndoKeysMeanTheDrawingWhileNothingIsTyped)
{
    QApplication::setActiveWindow(window.get());
    const auto& entities = window->workshop().active()->modelSpace().entities;
    window->commandLine().type("CIRCLE 0,0 1 ");
    QTest::keyClick(line, Qt::Key_Z, Qt::ControlModifier);
    EXPECT_TRUE(entities.empty());
    QTest::keyClick(line, Qt::Key_Y, Qt::ControlModifier);
    EXPECT_EQ(entities.size(), 1U);
    QTest::keyClicks(line, QStringLiteral("ZOO"));
    QTest::keyClick(line, Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(entities.size(), 1U) << "what is typed is taken back first";
    line->clear();
    window->commandLine().type("LINE 0,0 1,0 2,0 ");
    QTest::keyClick(line, Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(entities.size(), 2U) << "one line of two";
    EXPECT_EQ(prompt(), QStringLiteral("Specify next point or [Undo]:"));
}

TEST_F(BenchProgram, ALongTextOfAnotherProgramIsShownInPart)
{
    drive([&](AutomationObject& application) {
        const auto drawing = asObject(application.get("ActiveDocument"));
        const auto utility = asObject((*drawing)->get("Utility"));
        EXPECT_TRUE((*utility)->call("Prompt", {std::string(1'000'000, 'x')}));
    });
    EXPECT_LT(window->findChild<QPlainTextEdit*>(QStringLiteral("History"))->toPlainText().size(), 3000);
}

TEST_F(BenchProgram, RightClickIsEnter)
{
    window->commandLine().type("CIRCLE 0,0 1 ");
    QTest::mouseClick(canvas, Qt::RightButton);
    EXPECT_EQ(prompt(), QStringLiteral("Specify center point for circle:"));
}

TEST_F(BenchProgram, MenusRunTheCommands)
{
    window->commandLine().type("CIRCLE 0,0 1 ");
    const auto& entities = window->workshop().active()->modelSpace().entities;
    window->findChild<QAction*>(QStringLiteral("U"))->trigger();
    EXPECT_TRUE(entities.empty());
    window->findChild<QAction*>(QStringLiteral("REDO"))->trigger();
    EXPECT_EQ(entities.size(), 1U);
    for (const char* name : {"NEW", "OPEN", "CLOSE", "QSAVE", "SAVEAS", "DWGPROPS", "QUIT", "ERASE", "HELP"})
        EXPECT_NE(window->findChild<QAction*>(QLatin1String(name)), nullptr) << name;
}

TEST_F(BenchProgram, PlaceIsRemembered)
{
    EXPECT_FALSE(window->windowIcon().isNull());
    window->setGeometry(30, 40, 500, 400);
    ASSERT_TRUE(window->close());
    const BenchWindow next;
    EXPECT_EQ(next.size(), QSize(500, 400));
}

TEST_F(BenchProgram, TabTellsThatAFileCannotBeWritten)
{
    const RealDrawings real;
    if (real.missing())
        GTEST_SKIP() << "the real drawings are not there";
    ASSERT_TRUE(window->workshop().open(folder.write("Later.dwg", real.bytesOf("2018/sample_2018.dwg"))));
    const auto* const tabs = window->findChild<QTabBar*>(QStringLiteral("Drawings"));
    EXPECT_EQ(tabs->tabText(1), QStringLiteral("Later.dwg (cannot be written)"));
    EXPECT_TRUE(tabs->tabToolTip(1).contains(QStringLiteral("AutoCAD 2018")));
    EXPECT_TRUE(window->findChild<QPlainTextEdit*>(QStringLiteral("History"))
                    ->toPlainText()
                    .contains(QStringLiteral("itself cannot be written")));
}

TEST_F(BenchProgram, NothingUnsavedIsThrownAwayByAnotherProgram)
{
    window->commandLine().type("SDI 1 CIRCLE 0,0 1 ");
    const std::string other = makeRing(1);
    drive([&](AutomationObject& application) {
        const auto documents = asObject(application.get("Documents"));
        EXPECT_FALSE((*documents)->call("Add", {}));
        EXPECT_FALSE((*documents)->call("Open", {other}));
    });
    EXPECT_EQ(window->workshop().active()->modelSpace().entities.size(), 1U);
}

TEST_F(BenchProgram, PropertiesAreEditedSavedAndClosedBesideTheUsersDrawing)
{
    const std::string path = makeRing(1);
    QTimer user;
    drive(
        [&](AutomationObject& application) {
            const auto documents = asObject(application.get("Documents"));
            ASSERT_TRUE((*documents)->call("Open", {path}));
            const auto opened = asObject(application.get("ActiveDocument"));
            EXPECT_TRUE((*opened)->call("SendCommand", {std::string(".DWGPROPS\r")}));
            EXPECT_TRUE((*opened)->call("SendCommand", {std::string(".qsave\r")}));
            EXPECT_EQ(*asNumber((*opened)->call("GetVariable", {std::string("SDI")})), 0);
            EXPECT_TRUE((*opened)->call("Close", {false, path}));
        },
        [&] {
            QObject::connect(&user, &QTimer::timeout, [&] {
                auto* const dialog = window->findChild<QDialog*>(QStringLiteral("DwgProps"));
                if (dialog == nullptr || !dialog->isVisible())
                    return;
                user.stop();
                dialog->findChild<QLineEdit*>(QStringLiteral("Keywords"))->setText(QStringLiteral("ring"));
                dialog->accept();
            });
            user.start(5);
        });
    EXPECT_EQ((*BenchDrawing::load(path))->properties().keywords, u"ring");
    EXPECT_EQ(window->workshop().active()->title(), "Drawing1.dwg");
}

TEST_F(BenchProgram, ACommandEndsBeforeAnotherDrawingIsSeen)
{
    const auto first = window->workshop().active();
    window->workshop().add();
    window->commandLine().type("LINE 0,0 1,0 ");
    window->findChild<QTabBar*>(QStringLiteral("Drawings"))->setCurrentIndex(0);
    EXPECT_EQ(prompt(), QStringLiteral("Command:"));
    window->commandLine().type("LINE 0,0 1,0 ");
    const std::string other = makeRing(1);
    drive([&](AutomationObject& application) {
        EXPECT_TRUE((*asObject(application.get("Documents")))->call("Open", {other}));
    });
    EXPECT_EQ(prompt(), QStringLiteral("Command:"));
    window->commandLine().type("LINE 5,5 ");
    drive([&](AutomationObject& application) {
        const auto documents = asObject(application.get("Documents"));
        const auto drawing = asObject((*documents)->call("Item", {std::int64_t{0}}));
        EXPECT_TRUE((*drawing)->call("SendCommand", {std::string("CIRCLE 0,0 1 ")}));
    });
    EXPECT_EQ(first->modelSpace().entities.size(), 2U);
}

TEST_F(BenchProgram, TellsThatAFileIsReadOnly)
{
    const std::string path = makeRing(1);
    std::filesystem::permissions(path, std::filesystem::perms::owner_read);
    drive([&](AutomationObject& application) {
        EXPECT_FALSE(*asBool((*asObject(application.get("ActiveDocument")))->get("ReadOnly")));
        const auto opened = asObject((*asObject(application.get("Documents")))->call("Open", {path}));
        ASSERT_TRUE(opened);
        EXPECT_TRUE(*asBool((*opened)->get("ReadOnly")));
    });
}

TEST_F(BenchProgram, NamesAreNoMarkup)
{
    ASSERT_TRUE(window->workshop().active()->save(folder.file("R&D <b>x.dwg")));
    window->refresh();
    const auto* const tabs = window->findChild<QTabBar*>(QStringLiteral("Drawings"));
    EXPECT_EQ(tabs->tabText(0), QStringLiteral("R&&D <b>x.dwg"));
    EXPECT_TRUE(tabs->tabToolTip(0).contains(QStringLiteral("&lt;b&gt;")));
}

TEST_F(BenchProgram, TabsFollowTheDrawings)
{
    auto* const tabs = window->findChild<QTabBar*>(QStringLiteral("Drawings"));
    window->workshop().add();
    EXPECT_EQ(tabs->count(), 2);
    EXPECT_EQ(tabs->currentIndex(), 1);
    tabs->setCurrentIndex(0);
    EXPECT_EQ(window->workshop().active()->title(), "Drawing1.dwg");
    EXPECT_EQ(window->windowTitle(), QStringLiteral("Zelvora Bench - [Drawing1.dwg]"));
}

} // namespace

} // namespace zv::bench
