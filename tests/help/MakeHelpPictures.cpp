// Takes the pictures of the help pages from the real windows: make-help-pictures OFFICE FOLDER.
// OFFICE is a folder with Zelvora.ini and libraries; a library of more than twenty drawings must stand in it.

#include "app/RunningProgram.h"
#include "browser/BrowserWindows.h"
#include "browser/Zelvora.h"
#include "config/OfficeWindows.h"
#include "controls/CaptionFrame.h"
#include "controls/DwgThumbnail.h"
#include "controls/DwgViewX.h"
#include "controls/FileList.h"
#include "controls/FolderList.h"
#include "controls/PathList.h"
#include "controls/PictureButton.h"
#include "controls/ProgramStyle.h"
#include "controls/SortedCombo.h"
#include "host/HostDialogs.h"
#include "host/ProgramHost.h"
#include "host/Xattach.h"
#include "library/LibraryCombo.h"
#include "library/LibraryWindows.h"
#include "library/ListFile.h"
#include "library/MyLib.h"
#include "library/Newlib.h"
#include "platform/Files.h"
#include "print/PrintLib.h"
#include "print/PrintWindows.h"
#include "queue/QueueFile.h"
#include "queue/QueueWindows.h"
#include "search/Search.h"
#include "search/SearchWindows.h"
#include "window/TextBytes.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QDir>
#include <QFileInfo>
#include <QLineEdit>
#include <QRadioButton>
#include <QTemporaryDir>
#include <QTest>
#include <QTextStream>

#include <clocale>

namespace {

const QSize kPictureSize(713, 606); ///< The design size.
constexpr int kSmallest = 0;        ///< Quality of a PNG file that is packed as well as can be.

/// Answers nothing and notes nothing: a picture shows the window, not the question.
class SilentMessages : public zv::Messages {
public:
    void show(const zv::Message&) override {}
    bool ask(const zv::Message&) override { return false; }
    std::optional<bool> askOrClose(const zv::Message&) override { return false; }
    bool confirm(const zv::Message&) override { return false; }
};

class PictureTaker {
public:
    PictureTaker(const QString& office, QString out)
        : m_out(std::move(out)), m_program({zv::toBytes(office), zv::toBytes(m_user.path())}, m_messages)
    {
        zv::addBrowserWindows(m_program);
        zv::addLibraryWindows(m_program);
        zv::addOfficeWindows(m_program);
        zv::addPrintWindows(m_program);
        zv::addSearchWindows(m_program);
        zv::addHostWindows(m_program);
        zv::addQueueWindows(m_program);
        m_program.setActionServices(m_host.services());
    }

    bool takeAll()
    {
        start();
        take("first");
        if (!chooseLargeLibrary())
            return false;
        take("main");
        main()->Command3->click();
        take("next-panel");
        main()->List1->setCurrentRow(main()->List1->count() - 1);
        take("jump");
        main()->Command2->click();
        Q_EMIT main()->DwgThumbnails[8]->clicked();
        take("selected");
        main()->Option4->click();
        take("queue-mode");
        main()->Option1->click();
        main()->Command12->click();
        take("enlarge");
        main()->Command12->click();
        main()->Picture9->click();
        take("settings");
        main()->Picture5->click();
        takeSearch();
        takeQueue();
        takeHostDialogs();
        takeEditor();
        takeMyLib();
        takeMissingLibrary();
        takeOther("LoadAcad", "load-acad");
        takeOther("frmSplash", "about");
        takeOther("Options", "options");
        takeOther("Fontpath", "font-path");
        takeOther("ZVYpath", "master-folder");
        takePrintRun();
        return m_taken;
    }

private:
    zv::Zelvora* main() { return static_cast<zv::Zelvora*>(m_program.loaded(QStringLiteral("Zelvora"))); }

    void start()
    {
        m_program.load(QStringLiteral("Zelvora"));
        m_taken = QTest::qWaitFor([this] { return main()->isVisible(); });
        main()->resize(kPictureSize);
    }

    bool chooseLargeLibrary()
    {
        for (int row = 0; row < main()->Combo1->count(); ++row) {
            choose(row);
            if (main()->List1->count() > 40)
                return true;
        }
        QTextStream(stderr) << "no library of more than forty drawings\n";
        return false;
    }

    void choose(int row)
    {
        main()->Combo1->setCurrentIndex(row);
        Q_EMIT main()->Combo1->activated(row);
    }

    const std::string& path(int cell) { return main()->fields.CellPath[std::size_t(cell)]; }

    void takeQueue()
    {
        const std::string queue = zv::queuePath(m_program.folders().user, m_program.values().LoginName);
        for (const int cell : {3, 8, 12})
            static_cast<void>(zv::addToQueue(queue, path(cell)));
        main()->fields.cartFromButton = 1;
        m_program.show(QStringLiteral("Cart"));
        m_program.loaded(QStringLiteral("Cart"))->findChild<zv::PathList*>()->setCurrentRow(1);
        takeOther("Cart", "cart");
        takeCopyPlace("CartCopy", "cartcopy");
        m_program.unload(QStringLiteral("Cart"));
    }

    void takeHostDialogs()
    {
        main()->fields.selectedDrawing = path(8);
        zv::openXattach(m_program, zv::OpenedFrom::MainWindow, path(8), "48");
        // As beside a running AutoCAD.
        static_cast<zv::Xattach*>(m_program.loaded(QStringLiteral("Xattach")))
            ->Text9->setText(QStringLiteral("96"));
        takeOther("Xattach", "xattach");
        takeCopyPlace("xrefcopy", "xrefcopy");
        m_program.unload(QStringLiteral("Xattach"));
        zv::openCmode(m_program, zv::OpenedFrom::MainWindow, path(8));
        takeOther("cmode", "cmode");
        takeCopyPlace("dwgcopy", "dwgcopy");
        m_program.unload(QStringLiteral("cmode"));
    }

    /// The folder that is shown is one that every user may have.
    void takeCopyPlace(const char* window, const char* name)
    {
        QDir jobs(zv::toText(m_program.folders().installation) + QStringLiteral("/Jobs"));
        for (const char* job : {"2041 School", "2042 Library", "2043 Bridge"})
            jobs.mkpath(QLatin1String(job));
        const QString before = QDir::currentPath();
        QDir::setCurrent(jobs.path());
        takeOther(window, name);
        m_program.unload(QLatin1String(window));
        QDir::setCurrent(before);
        jobs.removeRecursively();
    }

    /// A library is open, and the folder of its drawings beside it.
    void takeEditor()
    {
        m_program.show(QStringLiteral("Newlib"));
        auto* editor = static_cast<zv::Newlib*>(m_program.loaded(QStringLiteral("Newlib")));
        editor->resize(kPictureSize);
        chooseIn(*editor->Combo2);
        const QFileInfo drawing(editor->List1->item(3)->text());
        m_taken = editor->Dir1->setPath(zv::toBytes(drawing.path())).ok() && m_taken;
        editor->List1->setCurrentRow(3);
        takeOther("Newlib", "editor");
    }

    void takeMyLib()
    {
        m_program.show(QStringLiteral("MyLib"));
        auto* mine = static_cast<zv::MyLib*>(m_program.loaded(QStringLiteral("MyLib")));
        mine->resize(kPictureSize);
        chooseIn(*mine->Combo1);
        for (const int row : {1, 4, 8})
            mine->List2->item(row)->setSelected(true);
        mine->Command1->click();
        mine->List1->setCurrentRow(1);
        takeOther("MyLib", "mylib");
    }

    /// The library that the main window has chosen.
    void chooseIn(QComboBox& libraries)
    {
        libraries.setCurrentIndex(libraries.findText(main()->Combo1->currentText()));
        Q_EMIT libraries.activated(libraries.currentIndex());
    }

    /// A library of the catalogue whose list is gone, for as long as the picture needs.
    void takeMissingLibrary()
    {
        const int last = main()->Combo1->count() - 1;
        const std::string list =
            zv::listFilePath(m_program.values().MasterPath, zv::toBytes(main()->Combo1->itemText(last)));
        m_taken = zv::renameFile(list, list + ".aside").ok() && m_taken;
        choose(last);
        take("missing-library");
        m_taken = zv::renameFile(list + ".aside", list).ok() && m_taken;
    }

    void takeSearch()
    {
        m_program.show(QStringLiteral("Search"));
        auto* search = static_cast<zv::Search*>(m_program.loaded(QStringLiteral("Search")));
        search->resize(kPictureSize);
        search->Check1->setChecked(true);
        search->Option2->setChecked(true);
        search->Text1->setText(QStringLiteral("door"));
        search->Command11->click();
        search->List1->setCurrentRow(4);
        QTest::qWait(500);
        save(search, "search");
        search->Command5->click();
        QTest::qWait(500);
        save(search, "search-enlarged");
        search->close();
    }

    void takeOther(const char* window, const char* name)
    {
        m_program.show(QLatin1String(window));
        QWidget* shown = m_program.loaded(QLatin1String(window));
        QTest::qWait(500);
        save(shown, name);
        shown->hide();
    }

    /// In the middle of a run: the picture is taken while the print dialog would stand.
    void takePrintRun()
    {
        const QString name = QStringLiteral("PrintLib");
        m_program.show(name);
        auto* window = static_cast<zv::PrintLib*>(m_program.loaded(name));
        window->resize(kPictureSize);
        window->List1->item(std::min(3, window->List1->count() - 1))->setSelected(true);
        window->DwgViewX1->setPrinterChooser([this, window](QPrinter&, QWidget*) {
            save(window, "print-libraries");
            return false;
        });
        window->Command7->click();
        window->hide();
    }

    void take(const char* name)
    {
        // Previews that are drawn from the geometry come a little later.
        QTest::qWait(500);
        save(main(), name);
    }

    void save(QWidget* window, const char* name)
    {
        const QString path = m_out + QLatin1Char('/') + QLatin1String(name) + QStringLiteral(".png");
        const QImage picture = window->grab().toImage().convertToFormat(QImage::Format_RGB888);
        m_taken = picture.save(path, "PNG", kSmallest) && m_taken;
    }

    QTemporaryDir m_user;
    QString m_out;
    SilentMessages m_messages;
    zv::RunningProgram m_program;
    zv::ProgramHost m_host{m_program};
    bool m_taken = true;
};

} // namespace

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    std::setlocale(LC_ALL, "");
    QApplication::setApplicationName(QStringLiteral("Zelvora"));
    QApplication::setApplicationVersion(QStringLiteral("1.0.0"));
    QApplication::setStyle(new zv::ProgramStyle);
    QApplication::setQuitOnLastWindowClosed(false);
    if (argc != 3) {
        QTextStream(stderr) << "usage: make-help-pictures OFFICE FOLDER\n";
        return 2;
    }
    PictureTaker taker(QDir(QFile::decodeName(argv[1])).absolutePath(), QFile::decodeName(argv[2]));
    return taker.takeAll() ? 0 : 1;
}
