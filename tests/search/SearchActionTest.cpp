#include "controls/PathList.h"
#include "platform/Files.h"
#include "platform/Text.h"
#include "search/SearchFixture.h"
#include "support/HostProcess.h"
#include "support/TestCarrier.h"
#include "support/TypedPath.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QEvent>
#include <QRadioButton>

#include <filesystem>
#include <utility>

namespace zv {
namespace {

using enum ProfileFile;
using Events = std::vector<std::string>;

class NoSplash final : public LoadSplash {
public:
    void show() override {}
    void unload() override {}
};

/// The search window beside a host in a process of its own, and what happens between them.
class SearchActionTest : public SearchFixture {
protected:
    SearchActionTest() { setKey(User, "Settings", "AutoScale", "0"); }
    ~SearchActionTest() override { qApp->removeEventFilter(&m_watch); }

    /// Opens the window with the first drawing chosen, and the action set.
    void choose(const char* option)
    {
        open();
        program->setActionServices(services);
        find("D1");
        ASSERT_TRUE(clickRow("List1", 0, "Search"));
        ASSERT_TRUE(press(option));
        qApp->installEventFilter(&m_watch);
    }
    std::string drawing() { return drawings(1)[0]; }
    /// Whether a text went to the host; its carriage returns are written <CR>.
    bool typed(const QString& text) const
    {
        QString all = QString::fromStdString(place.transcript());
        all.replace(QLatin1String("\\u000d"), QLatin1String("<CR>"));
        all.replace(QLatin1String("\\\""), QLatin1String("\""));
        return all.contains(text);
    }
    bool typed(const std::string& text) const { return typed(QString::fromStdString(text)); }

    test::HostPlace place;
    Events events;

private:
    /// Notes each window that comes and goes.
    class Watch final : public QObject {
    public:
        explicit Watch(Events& events) : m_events(events) {}
        bool eventFilter(QObject* watched, QEvent* event) override
        {
            auto* window = qobject_cast<Window*>(watched);
            if (window && event->type() == QEvent::Show)
                m_events.push_back("show " + window->objectName().toStdString());
            if (window && event->type() == QEvent::Hide)
                m_events.push_back("hide " + window->objectName().toStdString());
            return false;
        }

    private:
        Events& m_events;
    };

    Watch m_watch{events};
    NoSplash m_splash;
    std::unique_ptr<EventPump> m_pump = test::testPump();
    std::unique_ptr<Automation> m_carrier = test::testCarrier(*m_pump);

protected:
    ActionServices services{{*m_carrier, m_splash, [](const std::string&) { return true; }},
                            [](const std::string&, const std::function<void()>&) { return Result<void>(); },
                            [this](const std::string& path, std::string_view method) {
                                events.push_back("log " + path + ", " + std::string(method));
                            }};
};

TEST_F(SearchActionTest, ABlockIsTypedAtTheHostWhileTheWindowIsAway)
{
    place.run("");
    choose("Option2");
    ASSERT_TRUE(press("Command3"));
    EXPECT_EQ(events,
              (Events{"hide Search", "show Search", "log " + drawing() + ", Search and Insert as Block"}));
    EXPECT_TRUE(typed("(command \"_.-insert\" \"" + typedPath(drawing()) +
                      "\"\"X\"\"1.00\"\"Y\"\"1.00\"\"Z\"\"1.00\")"))
        << place.transcript();
    EXPECT_EQ(program->fields().selectedDrawing, drawing());
    EXPECT_TRUE(main().isVisible()) << "the main window stays beside";
}

TEST_F(SearchActionTest, ADoubleClickDoesTheSame)
{
    place.run("");
    choose("Option2");
    ASSERT_TRUE(clickRow("List1", 0, "Search"));
    Q_EMIT search().List1->doubleClickedInList();
    EXPECT_EQ(events,
              (Events{"hide Search", "show Search", "log " + drawing() + ", Search and Insert as Block"}));
    EXPECT_EQ(program->fields().cmodeState, 0);
}

TEST_F(SearchActionTest, AutoScaleDividesTheHostsScaleByTheDrawings)
{
    place.run("variable dimscale 96.0");
    choose("Option2");
    ASSERT_TRUE(press("Check2"));
    ASSERT_TRUE(press("Command3"));
    EXPECT_EQ(shown("Text3"), "2");
    EXPECT_TRUE(typed(std::string("\"\"X\"\"2\"\"Y\"\"2\"\"Z\"\"2\")"))) << place.transcript();
}

TEST_F(SearchActionTest, AnExplodedBlockIsTypedAtThePointThatIsPicked)
{
    place.run("point 3 4 0");
    choose("Option2");
    ASSERT_TRUE(press("Check3"));
    ASSERT_TRUE(press("Command3"));
    EXPECT_TRUE(typed("_.-insert<CR>*" + typedPath(drawing()) + "<CR>3,4,0<CR>1.00<CR>"))
        << place.transcript();
}

TEST_F(SearchActionTest, AnXrefIsAttachedByItsDialogWhichBringsTheWindowBack)
{
    place.run("variable dimscale 96.0");
    choose("Option1");
    ASSERT_TRUE(press("Command3"));
    EXPECT_EQ(program->fields().xrefState, 7);
    EXPECT_EQ(text("Text1", "Xattach").toStdString(), drawing());
    EXPECT_EQ(text("Text9", "Xattach"), "96");
    EXPECT_EQ(text("Text11", "Xattach"), "48") << "as it is stored in the drawing";
    EXPECT_EQ(control<QComboBox>("Combo1", "Xattach")->currentText(), "1/4\"=1'");
    EXPECT_TRUE(control<QCheckBox>("Check4", "Xattach")->isChecked());
    EXPECT_EQ(events,
              (Events{"hide Search", "show Xattach", "log " + drawing() + ", Search and Insert as Xref"}));
    events.clear();
    ASSERT_TRUE(click("Command3", "Xattach"));
    EXPECT_TRUE(typed("(command \"._xref\" \"Attach\"\"" + typedPath(drawing()) +
                      "\"\"X\"\"2\"\"Y\"\"2\"\"Z\"\"2\"\"R\"\"0.00\")<CR>"))
        << place.transcript();
    EXPECT_EQ(events, (Events{"hide Xattach", "hide Zelvora", "show Search"}));
    EXPECT_EQ(program->loaded("Xattach"), nullptr);
    EXPECT_TRUE(search().isTopmost());
    EXPECT_EQ(results().size(), 1);
    ASSERT_TRUE(press("Command2"));
    EXPECT_TRUE(main().isVisible());
}

TEST_F(SearchActionTest, AnXrefOfABlocksNameIsRefused)
{
    setKey(Master, "LibLoad", "xbcheck", "1");
    place.run("block D1");
    choose("Option1");
    ASSERT_TRUE(press("Command3"));
    EXPECT_EQ(lastMessage(), "D1 Already Exists as a Block in this Drawing!");
    EXPECT_EQ(program->loaded("Xattach"), nullptr);
    EXPECT_TRUE(search().isVisible());
    EXPECT_EQ(events.back(), "log " + drawing() + ", Search and Insert as Xref");
}

TEST_F(SearchActionTest, OpeningGoesOnInItsDialogWhichBringsTheWindowBack)
{
    place.run("");
    setKey(User, "Settings", "ProjectPath", folder.file("project"));
    std::filesystem::create_directory(folder.file("project"));
    choose("Option3");
    ASSERT_TRUE(press("Command3"));
    EXPECT_EQ(program->fields().cmodeState, 7);
    EXPECT_EQ(text("Label1", "cmode").toStdString(), "Open: " + drawing());
    const std::string copy = joinPath(folder.file("project"), fileNamePart(drawing()));
    EXPECT_EQ(text("Text1", "cmode").toStdString(), copy);
    EXPECT_EQ(events, (Events{"show cmode", "hide Search", "log " + drawing() + ", Search and Open/Copy"}));
    events.clear();
    ASSERT_TRUE(click("Command3", "cmode"));
    EXPECT_TRUE(typed(std::string("Open"))) << place.transcript();
    const QString marked = QString::fromStdString(copy).replace(QLatin1String("\\"), QLatin1String("\\\\"));
    EXPECT_TRUE(typed(marked)) << place.transcript() << "where each backslash has a mark before it";
    EXPECT_TRUE(fileExists(copy));
    EXPECT_EQ(events, (Events{"hide cmode", "hide Zelvora", "show Search"}));
    EXPECT_EQ(results().size(), 1);
}

TEST_F(SearchActionTest, ACancelledDialogBringsTheWindowBackWithItsResults)
{
    place.run("");
    choose("Option1");
    for (const auto& [option, dialog] : {std::pair("Option1", "Xattach"), std::pair("Option3", "cmode")}) {
        ASSERT_TRUE(press(option));
        ASSERT_TRUE(press("Command3"));
        ASSERT_TRUE(click("Command2", dialog));
        EXPECT_TRUE(search().isVisible()) << dialog;
        EXPECT_EQ(results().size(), 1) << dialog;
    }
    EXPECT_FALSE(typed(std::string("SendCommand"))) << place.transcript();
}

TEST_F(SearchActionTest, ANoToTheHostBringsTheWindowBackAndIsLogged)
{
    choose("Option2");
    messages.yes = false;
    ASSERT_TRUE(press("Command3"));
    EXPECT_TRUE(search().isVisible());
    EXPECT_EQ(events.back(), "log " + drawing() + ", Search and Insert as Block");
}

TEST_F(SearchActionTest, AHostThatCannotBeLaunchedLeavesTheWindowHiddenWithItsResults)
{
    choose("Option2");
    messages.yes = true;
    ASSERT_TRUE(press("Command3"));
    EXPECT_FALSE(search().isVisible());
    EXPECT_EQ(events, Events{"hide Search"});
    ASSERT_TRUE(click("Command4"));
    EXPECT_TRUE(search().isVisible());
    EXPECT_EQ(results().size(), 1);
}

} // namespace
} // namespace zv
