#include "EditorFixture.h"

#include "controls/CaptionFrame.h"
#include "controls/FileList.h"
#include "controls/FolderList.h"
#include "controls/PathList.h"
#include "library/LibraryWindows.h"
#include "platform/Files.h"
#include "platform/Text.h"
#include "window/TextBytes.h"

#include <QApplication>
#include <QLabel>
#include <QTest>

namespace zv {

using enum ProfileFile;

QStringList texts(const std::vector<std::string>& paths)
{
    QStringList list;
    for (const std::string& path : paths)
        list << toText(path);
    return list;
}

EditorFixture::EditorFixture()
{
    addLibraryWindows(*program);
    setKey(User, "Settings", "AOT", "0");
    setKey(User, "Settings", "RibSet", "2");
}

Newlib& EditorFixture::open(const std::vector<std::string>& libraries)
{
    makeCatalogue(libraries);
    for (const std::string& library : libraries) {
        if (!fileExists(listPath(library)))
            makeLibrary(library, {});
    }
    start();
    EXPECT_TRUE(click("Command1"));
    EXPECT_TRUE(appears("Newlib"));
    return editor();
}

Newlib& EditorFixture::editor()
{
    return *static_cast<Newlib*>(program->loaded("Newlib"));
}

bool EditorFixture::pick(const std::vector<std::string>& files)
{
    if (!editor().Dir1->setPath(folder.file("drawings")))
        return false;
    FileList& list = *editor().File1;
    list.refresh();
    Qt::KeyboardModifiers held;
    for (const std::string& file : files) {
        const auto found = list.findItems(toText(file), Qt::MatchExactly);
        if (found.size() != 1)
            return false;
        list.scrollToItem(found.first());
        const QPoint place = list.visualItemRect(found.first()).center();
        QTest::mouseClick(list.viewport(), Qt::LeftButton, held, {3, place.y()});
        held = Qt::ControlModifier;
    }
    return true;
}

bool EditorFixture::add(const std::vector<std::string>& files)
{
    return pick(files) && press("Command1");
}

std::string EditorFixture::linesOf(const std::vector<std::string>& drawings) const
{
    std::string bytes;
    for (const std::string& drawing : drawings)
        bytes += drawing + ";" + drawingName(drawing) + "\r\n";
    return bytes;
}

std::string EditorFixture::listBytes(const std::string& library) const
{
    return readFile(listPath(library)).valueOr("(no list)");
}

std::string EditorFixture::profileWith(int count, const std::vector<std::string>& names) const
{
    std::string bytes =
        "[Path]\r\nZVRpath=" + installation + "\r\n[Library]\r\nlibnum=" + std::to_string(count) + "\r\n";
    for (std::size_t i = 0; i < names.size(); ++i)
        bytes += "lib" + std::to_string(i + 1) + "=" + names[i] + "\r\n";
    return bytes + "[LibLoad]\r\nLastLoad= \r\ndel=1\r\n";
}

std::string EditorFixture::profileBytes() const
{
    return readFile(joinPath(master, "Zelvora.ini")).valueOr({});
}

bool EditorFixture::exists(const std::string& name) const
{
    return fileExists(joinPath(master, name));
}

bool EditorFixture::inPlay(const char* name)
{
    const bool windowColor = groundOf(name) == QApplication::palette().color(QPalette::Base);
    EXPECT_EQ(usable(name), windowColor) << name;
    return usable(name);
}

QColor EditorFixture::groundOf(const char* name)
{
    return control(QLatin1String(name), "Newlib")->palette().color(QPalette::Active, QPalette::Base);
}

void EditorFixture::labelsAreReadWhole(QWidget& window)
{
    for (const QSize size : {QSize(433, 433), QSize(713, 606), QSize(1400, 1000)}) {
        window.resize(size);
        EXPECT_TRUE(waitUntil([&] { return window.size() == size; }));
        for (const QLabel* label : window.findChildren<QLabel*>()) {
            const int needed = label->wordWrap() ? label->heightForWidth(label->width()) : 0;
            const int words = label->wordWrap() ? 0 : label->fontMetrics().horizontalAdvance(label->text());
            EXPECT_GE(label->height(), needed) << label->objectName().toStdString() << " at " << size.width();
            EXPECT_GE(label->width(), words) << label->objectName().toStdString() << " at " << size.width();
        }
        for (const CaptionFrame* frame : window.findChildren<CaptionFrame*>()) {
            // A caption is drawn smaller, down to this, before it is cut.
            QFont letters = frame->font();
            letters.setPixelSize(QFontInfo(letters).pixelSize() * 4 / 5);
            EXPECT_GE(frame->width() - 24, QFontMetrics(letters).horizontalAdvance(frame->title()))
                << frame->objectName().toStdString() << " at " << size.width();
        }
    }
}

int EditorFixture::selectedRow()
{
    return editor().List1->currentRow();
}

std::string EditorFixture::lastBox() const
{
    if (messages.shown.empty())
        return {};
    const Message& box = messages.shown.back();
    return box.title + " [" + std::to_string(int(box.icon)) + "] " + box.text;
}

} // namespace zv
