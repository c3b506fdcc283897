#include "support/OfficeFixture.h"

#include "browser/BrowserWindows.h"
#include "config/OfficeWindows.h"
#include "controls/DwgThumbnail.h"
#include "controls/PathList.h"
#include "controls/SortedCombo.h"
#include "drawing/Writer.h"
#include "host/HostDialogs.h"
#include "library/ListFile.h"
#include "platform/Files.h"
#include "platform/Profile.h"
#include "platform/System.h"
#include "platform/Text.h"
#include "print/PrintWindows.h"
#include "queue/QueueWindows.h"
#include "search/SearchWindows.h"

#include <QAbstractButton>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QSignalSpy>
#include <QTest>

#include <filesystem>

namespace zv {
namespace {

/// No CAD program runs here, and none can be started.
class NoAutomation final : public Automation {
public:
    Result<AutomationObjectPtr> attach(const std::string&) override { return none(); }
    Result<AutomationObjectPtr> create(const std::string&) override { return none(); }

private:
    static Error none() { return {ErrorCode::NotFound, "no such program"}; }
};

class NoSplash final : public LoadSplash {
public:
    void show() override {}
    void unload() override {}
};

/// A white ground with a black bar, 40 by 30.
dwg::Pixels smallPreview()
{
    dwg::Pixels pixels{40, 30, std::vector<std::uint8_t>(40 * 30 * 4, 255)};
    for (std::size_t i = 0; i < 20; ++i)
        for (std::size_t part = 0; part < 3; ++part)
            pixels.bgra[(15 * 40 + 10 + i) * 4 + part] = 0;
    return pixels;
}

} // namespace

TestServices::TestServices(Program& program)
    : automation(std::make_unique<NoAutomation>()), splash(std::make_unique<NoSplash>())
{
    services = std::make_unique<ActionServices>(ActionServices{
        {*automation, *splash, [](const std::string&) { return true; }},
        [&program](const std::string& drawing, const std::function<void()>& whileOpen) -> Result<void> {
            const auto added = appendLines(
                joinPath(program.folders().user, program.values().LoginName + ".crt"), drawing + "\r\n");
            if (added)
                whileOpen();
            return added;
        },
        [this](const std::string&, std::string_view method) { logged.emplace_back(method); }});
}

TestServices::~TestServices() = default;

OfficeFixture::OfficeFixture()
    : installation(folder.file("office")), master(installation), user(folder.file("user"))
{
    for (const char* name : {"office", "user", "drawings", "config"})
        std::filesystem::create_directory(folder.file(name));
    qputenv("XDG_CONFIG_HOME", QByteArray::fromStdString(folder.file("config")));
    std::filesystem::copy_file(makeDrawing("Placeholder"), joinPath(installation, "failed.dwg"));
    setKey(ProfileFile::Installation, "Path", "ZVRpath", installation);
    program = std::make_unique<RunningProgram>(Folders{installation, user}, messages);
    outside = std::make_unique<TestServices>(*program);
    program->setActionServices(*outside->services);
    QObject::connect(program.get(), &RunningProgram::ended, [this](int status) { endedWith = status; });
    addBrowserWindows(*program);
    addOfficeWindows(*program);
    addPrintWindows(*program);
    addHostWindows(*program);
    addQueueWindows(*program);
    addSearchWindows(*program);
}

OfficeFixture::~OfficeFixture()
{
    program.reset();
    // Windows that were unloaded wait for this.
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

std::string OfficeFixture::makeDrawing(const std::string& name)
{
    dwg::Properties properties;
    properties.comments = wide("About " + name);
    properties.custom = {{u"scale", u"48"}};
    const auto bytes = dwg::writeDocument({}, {properties, smallPreview()});
    EXPECT_TRUE(bytes);
    return folder.write("drawings/" + name + ".dwg", bytes.valueOr({}));
}

std::vector<std::string> OfficeFixture::drawings(int count)
{
    std::vector<std::string> paths;
    for (int i = 1; i <= count; ++i) {
        const std::string name = "D" + std::to_string(i);
        const std::string path = folder.file("drawings/" + name + ".dwg");
        paths.push_back(fileExists(path) ? path : makeDrawing(name));
    }
    return paths;
}

void OfficeFixture::makeLibrary(const std::string& name, const std::vector<std::string>& paths)
{
    std::string lines;
    for (const std::string& path : paths)
        lines += path + ";" + drawingName(path) + "\r\n";
    EXPECT_TRUE(writeFile(listPath(name), lines));
}

void OfficeFixture::makeCatalogue(const std::vector<std::string>& names)
{
    setKey(ProfileFile::Master, "Library", "libnum", std::to_string(names.size()));
    for (std::size_t i = 0; i < names.size(); ++i)
        setKey(ProfileFile::Master, "Library", ("lib" + std::to_string(i + 1)).c_str(), names[i]);
}

std::string OfficeFixture::listPath(const std::string& name) const
{
    return listFilePath(master, name);
}

std::string OfficeFixture::userFile(const char* ending) const
{
    const std::string login = systemLoginName();
    return joinPath(user, (login.empty() ? "User" : login) + ending);
}

Profiles OfficeFixture::profiles() const
{
    return Profiles(installation, master, userFile(".ini"));
}

void OfficeFixture::setKey(ProfileFile file, const char* section, const char* key, const std::string& value)
{
    profiles().write({file, section, key}, value);
}

std::string OfficeFixture::key(ProfileFile file, const char* section, const char* key) const
{
    return profiles().text(TextKey{{file, section, key}, "(none)"});
}

void OfficeFixture::makeDoors(int count)
{
    makeLibrary("Doors", drawings(count));
    makeCatalogue({"Doors"});
    setKey(ProfileFile::User, "LibLoad", "LastLoad", "Doors");
    setKey(ProfileFile::User, "LibLoad", "del", "0");
    setKey(ProfileFile::User, "Settings", "AOT", "0");
}

Zelvora& OfficeFixture::start()
{
    program->load(QStringLiteral("Zelvora"));
    EXPECT_TRUE(appears(QStringLiteral("Zelvora")));
    return main();
}

Zelvora& OfficeFixture::main()
{
    return *static_cast<Zelvora*>(program->loaded(QStringLiteral("Zelvora")));
}

bool OfficeFixture::appears(const QString& window)
{
    return waitUntil([&] {
        Window* loaded = program->loaded(window);
        // A window becomes the active one a moment before it has the keyboard.
        return loaded && loaded->isVisible() && loaded->isActiveWindow() &&
               QGuiApplication::focusWindow() == loaded->windowHandle();
    });
}

bool OfficeFixture::click(const QString& name, const QString& window)
{
    auto* found = control(name, window);
    if (!found || !found->isVisible() || !found->isEnabled())
        return false;
    QTest::mouseClick(found, Qt::LeftButton, {}, {std::min(10, found->width() / 2), found->height() / 2});
    return true;
}

bool OfficeFixture::doubleClick(const QString& name, const QString& window)
{
    if (!click(name, window))
        return false;
    QTest::mouseDClick(control(name, window), Qt::LeftButton);
    return true;
}

bool OfficeFixture::clickRow(const QString& list, int row, const QString& window)
{
    auto* found = control<QListWidget>(list, window);
    if (!found || row >= found->count())
        return false;
    found->scrollToItem(found->item(row));
    const QRect place = found->visualItemRect(found->item(row));
    QTest::mouseClick(found->viewport(), Qt::LeftButton, {}, {place.left() + 2, place.center().y()});
    return true;
}

void OfficeFixture::type(const QString& name, const QString& text, const QString& window)
{
    auto* found = control(name, window);
    found->setFocus();
    QTest::keyClicks(found, text);
}

bool OfficeFixture::choose(const QString& combo, const QString& text, const QString& window)
{
    auto* found = control<QComboBox>(combo, window);
    const int row = found ? found->findText(text, Qt::MatchExactly | Qt::MatchCaseSensitive) : -1;
    if (row < 0)
        return false;
    found->setCurrentIndex(row);
    Q_EMIT found->activated(row);
    return true;
}

QStringList OfficeFixture::rows(const QString& name, const QString& window)
{
    QStringList texts;
    if (auto* list = control<QListWidget>(name, window)) {
        for (int row = 0; row < list->count(); ++row)
            texts << list->item(row)->text();
    } else if (auto* combo = control<QComboBox>(name, window)) {
        for (int row = 0; row < combo->count(); ++row)
            texts << combo->itemText(row);
    }
    return texts;
}

QString OfficeFixture::text(const QString& name, const QString& window)
{
    QWidget* found = control(name, window);
    if (const auto* edit = qobject_cast<QPlainTextEdit*>(found))
        return edit->toPlainText();
    if (const auto* combo = qobject_cast<QComboBox*>(found))
        return combo->currentText();
    if (!found)
        return {};
    const QVariant caption = found->property("title");
    return caption.isValid() ? caption.toString() : found->property("text").toString();
}

bool OfficeFixture::enabled(const QString& name, const QString& window)
{
    const QWidget* found = control(name, window);
    return found && found->isEnabled();
}

bool OfficeFixture::visible(const QString& name, const QString& window)
{
    const QWidget* found = control(name, window);
    return found && found->isVisible();
}

int OfficeFixture::visibleCells()
{
    int count = 0;
    for (int cell = 1; cell <= kPanelCells; ++cell)
        count += visible(QStringLiteral("DwgThumbnail%1").arg(cell)) ? 1 : 0;
    return count;
}

std::string OfficeFixture::lastMessage() const
{
    return messages.shown.empty() ? std::string() : messages.shown.back().text;
}

bool waitUntil(const std::function<bool()>& condition)
{
    return QTest::qWaitFor(condition, 5000);
}

} // namespace zv
