#include "controls/Clip.h"
#include "controls/DwgThumbnail.h"
#include "controls/DwgViewX.h"
#include "controls/ElidedLabel.h"
#include "controls/LockedCombo.h"
#include "controls/PathList.h"
#include "controls/PictureButton.h"
#include "platform/Text.h"
#include "search/Search.h"
#include "window/TextBytes.h"

#include <QCheckBox>
#include <QCoreApplication>
#include <QEvent>
#include <QLabel>
#include <QLineEdit>
#include <QLocale>
#include <QPlainTextEdit>

#include <algorithm>

namespace zv {
namespace {

constexpr qint64 kFrameMs = 16;
constexpr qint64 kLongestFrameMs = 500;
constexpr qint64 kShareOfShowing = 4; ///< Showing takes one part of so many of the time.
constexpr int kIdlePicture = 8;
constexpr int kRunningPicture = 17;

/// The ground of a field that shows a count which holds, or of one that does not.
void setGround(QLineEdit* field, QPalette::ColorRole ground)
{
    QPalette colors = field->parentWidget()->palette();
    colors.setColor(QPalette::Base, colors.color(ground));
    field->setPalette(colors);
}

void showText(QLineEdit* field, const QString& text)
{
    field->setText(text);
    field->setCursorPosition(0);
}

} // namespace

/// The window as its scan sees it. What it shows while the scan runs goes to the controls once a frame.
class Search::RunWindow final : public ScanWindow {
public:
    explicit RunWindow(Search& window) : m_window(window) {}

    bool allLibrariesChecked() const override { return m_window.Check1->isChecked(); }
    std::string library() const override { return toBytes(m_window.Combo1->currentText()); }
    Keywords keywords() const override
    {
        Keywords keywords;
        const auto boxes = m_window.keywordBoxes();
        for (std::size_t i = 0; i < kKeywords; ++i)
            keywords[i] = upper(toBytes(boxes[i]->text()));
        return keywords;
    }
    std::string masterFolder() const override { return m_window.values().MasterPath; }
    std::string masterProfile() const override { return m_window.profiles().path(ProfileFile::Master); }

    void showRunBegins() override { m_window.beginRun(); }
    void showDrawing(const std::string& path, const std::string& library,
                     const ScanProgress& progress) override
    {
        m_window.m_drawing = path;
        m_window.m_library = library;
        m_window.m_progress = progress;
        if (m_window.m_sinceShown.elapsed() >= m_window.frameMs())
            m_window.showRun();
    }
    void showHit(const std::string& path, int hits) override
    {
        m_window.m_newHits << toText(path);
        m_window.m_hits = hits;
    }
    void showRunEnded(int hits) override { m_window.endRun(hits); }
    Messages& messages() override
    {
        m_window.showRun();
        return m_window.messages();
    }

    bool turn(Turn when) override
    {
        // A read that takes its time leaves nothing else to do, so what there is is shown.
        if (when == Turn::WhileReading)
            m_window.showRun();
        const qint64 before = m_window.m_sinceShown.elapsed();
        QCoreApplication::processEvents();
        m_window.m_slowestTurn = std::max(m_window.m_slowestTurn, m_window.m_sinceShown.elapsed() - before);
        return m_window.program().loaded(m_window.objectName()) == &m_window;
    }
    void closeAllFiles() override { ++m_window.fields.filesClosed; }
    unsigned filesClosed() const override { return m_window.fields.filesClosed; }
    void unload() override { m_window.program().unload(m_window.objectName()); }

private:
    Search& m_window;
};

void Search::search()
{
    RunWindow window(*this);
    const bool outermost = !m_scan.isRunning();
    m_scan.run(window);
    if (outermost && m_deletionDue)
        QCoreApplication::postEvent(this, new QEvent(QEvent::DeferredDelete));
}

// A window that is closed in the middle of a run is still beneath that run's turn of the event loop.
bool Search::event(QEvent* event)
{
    if (event->type() == QEvent::DeferredDelete && m_scan.isRunning()) {
        m_deletionDue = true;
        return true;
    }
    return Window::event(event);
}

void Search::beginRun()
{
    Command4->setPicture(ImageList::c(), kRunningPicture);
    Command4->setText(QStringLiteral("&Stop!"));
    setGround(Text4, QPalette::Button);
    Animation1->setAutoPlay(true);
    Animation1->play();
    List1->clear();
    emptyPanes();
    m_newHits.clear();
    m_drawing.clear();
    m_library.clear();
    m_hits = 0;
    m_sinceShown.start();
}

/// The files' fields, the count of hits, and the preview, large or small.
void Search::emptyPanes()
{
    DwgViewX1->setDrawing({});
    static_cast<void>(DwgThumbnail1->setDrawing({}));
    Text2->clear();
    for (QLineEdit* field : {Text4, Text5, Text6})
        field->clear();
}

/// How long what has been shown stands. A very long list takes its time to be laid out anew.
qint64 Search::frameMs() const
{
    return std::clamp(kShareOfShowing * m_slowestTurn, kFrameMs, kLongestFrameMs);
}

/// Brings the controls up to what the scan has come to.
void Search::showRun()
{
    m_sinceShown.start();
    m_slowestTurn = 0;
    showText(Text12, toText(m_drawing));
    showText(Text13, toText(m_library));
    if (m_hits > 0)
        Text4->setText(QString::number(m_hits));
    const QLocale here;
    LabelProgress->setText(tr("Library %1 of %2, drawing %3 of %4")
                               .arg(here.toString(m_progress.library), here.toString(m_progress.libraries),
                                    here.toString(qulonglong(m_progress.line)),
                                    here.toString(qulonglong(m_progress.lines))));
    if (m_newHits.isEmpty())
        return;
    List1->addItemsWithExtent(m_newHits);
    m_newHits.clear();
}

void Search::endRun(int hits)
{
    showRun();
    Animation1->setAutoPlay(false);
    Animation1->stop();
    Text4->setText(QString::number(hits));
    setGround(Text4, QPalette::Base);
    Text12->clear();
    Text13->clear();
    LabelProgress->clear();
    Command4->setPicture(ImageList::c(), kIdlePicture);
    Command4->setText(QStringLiteral("&Clear"));
}

void Search::clearOrStop()
{
    if (Command4->text() == QLatin1String("&Clear"))
        List1->clear();
    else
        showRun();
    m_scan.stopAndKeepWindow();
    Command4->setPicture(ImageList::c(), kIdlePicture);
    Command4->setText(QStringLiteral("&Clear"));
    Text12->clear();
    Text13->clear();
    LabelProgress->clear();
    ++fields.filesClosed;
    setGround(Text4, QPalette::Button);
    emptyPanes();
    Animation1->setAutoPlay(false);
    Animation1->stop();
    ++fields.filesClosed;
}

} // namespace zv
