#include "search/KeywordScan.h"

#include "library/Catalogue.h"
#include "library/ListFile.h"
#include "platform/Text.h"
#include "search/ListFeed.h"

#include <algorithm>
#include <deque>
#include <memory>
#include <optional>

namespace zv {

namespace {

/// A read that takes longer than this gives the event loop a turn.
constexpr std::chrono::milliseconds kPatience(10);
constexpr std::size_t kMostLinesAhead = 256;

/// master folder + separator unless it ends in one + name + ".lst".
std::string listPathIn(std::string folder, const std::string& name)
{
    if (!folder.empty() && (folder.back() == '\\' || folder.back() == '/'))
        folder.pop_back();
    return listFilePath(folder, name);
}

} // namespace

/// One run, with its local state.
class ScanRun {
public:
    ScanRun(KeywordScan& scan, ScanWindow& window)
        : m_scan(scan), m_window(window), m_workers(scan.m_mostReads)
    {
    }

    /// `interrupts`: another run was going until now.
    void run(bool interrupts);

private:
    enum class Outcome { Done, Failed, Ended };

    /// A line that has been read, and perhaps the keywords of its drawing on their way.
    struct Line {
        std::optional<ListEntry> entry;
        std::optional<std::string> stem;
        std::optional<std::future<Result<std::string>>> keywords;

        bool isWhole() const { return entry && stem; }
    };

    bool isRefused();
    Outcome scanOneLibrary();
    Outcome scanAllLibraries();
    Outcome scanLibrary(const std::string& name);
    Outcome scanLines(const std::shared_ptr<ListFeed>& feed, const std::string& name);
    Outcome readLines(const std::shared_ptr<ListFeed>& feed);
    Outcome testLine(Line& line, const std::string& name);
    void tellFailure(const char* andThen);
    Outcome closeList();

    void lookAhead(ListFeed& feed);
    void addLine(std::string_view text);
    void readAhead(Line& line);
    void addHit(const std::string& path);
    bool turn(ScanWindow::Turn when = ScanWindow::Turn::BetweenSteps);
    template <class Value> std::optional<Value> wait(std::future<Value>& future);

    KeywordScan& m_scan;
    ScanWindow& m_window;
    Workers m_workers;
    std::string m_listPath;   ///< Of the library under scan.
    std::deque<Line> m_ahead; ///< Lines that have been read and not been walked yet.
    unsigned m_readsAhead = 0;
    unsigned m_filesClosed = 0; ///< At the opening of the list.
    ScanProgress m_progress;
    bool m_allLibraries = false; ///< As it was at the start.
};

void ScanRun::run(bool interrupts)
{
    m_window.closeAllFiles();
    m_scan.m_stopRequested = false;
    if (isRefused()) {
        // The run that was going has lost its files, and nobody else ends what is shown of it.
        if (interrupts)
            m_window.showRunEnded(m_scan.m_hits);
        return;
    }
    m_scan.m_hits = 0;
    m_window.showRunBegins();
    m_allLibraries = m_scan.scanAllLibraries == 1;
    if ((m_allLibraries ? scanAllLibraries() : scanOneLibrary()) == Outcome::Ended)
        return;
    m_window.closeAllFiles();
    m_window.showRunEnded(m_scan.m_hits);
}

bool ScanRun::isRefused()
{
    if (m_window.allLibrariesChecked() || !m_window.library().empty())
        return false;
    m_window.messages().show({"Please Select a Library", "No Library Selected", MessageIcon::Information});
    return true;
}

ScanRun::Outcome ScanRun::scanOneLibrary()
{
    m_progress.library = m_progress.libraries = 1;
    const Outcome outcome = scanLibrary(m_window.library());
    if (outcome == Outcome::Ended)
        return outcome;
    if (outcome == Outcome::Failed)
        tellFailure("");
    return closeList();
}

ScanRun::Outcome ScanRun::scanAllLibraries()
{
    const int most = static_cast<int>(kMostListLines);
    m_progress.libraries = std::clamp(libraryCount(m_window.masterProfile()).valueOr(0), 0, most);
    while (m_progress.library != m_progress.libraries) {
        if (!turn())
            return Outcome::Ended;
        ++m_progress.library;
        const Outcome outcome = scanLibrary(libraryName(m_window.masterProfile(), m_progress.library));
        if (outcome == Outcome::Failed)
            tellFailure("\r\nSkipping to Next Library in List");
        else if (outcome == Outcome::Ended || closeList() == Outcome::Ended)
            return Outcome::Ended;
    }
    return Outcome::Done;
}

/// What follows the end of a list.
ScanRun::Outcome ScanRun::closeList()
{
    m_window.closeAllFiles();
    return turn() ? Outcome::Done : Outcome::Ended;
}

void ScanRun::tellFailure(const char* andThen)
{
    m_window.messages().show({"Library " + m_listPath + " Not Found!" + andThen, "Library List not Found!",
                              MessageIcon::Critical});
    m_window.closeAllFiles();
}

// Whatever fails here, the rest of the library is given up: its list that is missing, a line that is none, a
// drawing that cannot be read.
ScanRun::Outcome ScanRun::scanLibrary(const std::string& name)
{
    m_listPath = listPathIn(m_window.masterFolder(), name);
    m_progress.line = m_progress.lines = 0;
    m_filesClosed = m_window.filesClosed();
    auto opening = m_workers.start([path = m_listPath] { return openByteSource(path); });
    auto opened = wait(opening);
    if (!opened)
        return Outcome::Ended;
    if (!*opened)
        return Outcome::Failed;
    const Outcome outcome = scanLines(std::make_shared<ListFeed>(std::move(**opened)), name);
    m_ahead.clear();
    m_readsAhead = 0;
    return outcome;
}

// The feed is shared with the worker that reads on in it, which may hang there for longer than the run lasts.
ScanRun::Outcome ScanRun::scanLines(const std::shared_ptr<ListFeed>& feed, const std::string& name)
{
    for (;;) {
        if (const Outcome outcome = readLines(feed); outcome != Outcome::Done)
            return outcome;
        if (m_ahead.empty())
            return Outcome::Done;
        Line line = std::move(m_ahead.front());
        m_ahead.pop_front();
        m_readsAhead -= line.keywords ? 1 : 0;
        ++m_progress.line;
        m_progress.lines = std::max(feed->expectedLines(), m_progress.line);
        if (!line.isWhole())
            return Outcome::Failed;
        if (const Outcome outcome = testLine(line, name); outcome != Outcome::Done)
            return outcome;
        if (!turn())
            return Outcome::Ended;
        if (m_window.filesClosed() != m_filesClosed)
            return Outcome::Failed;
    }
}

/// Sees to it that a line is at hand, unless the list is at its end.
ScanRun::Outcome ScanRun::readLines(const std::shared_ptr<ListFeed>& feed)
{
    lookAhead(*feed);
    while (m_ahead.empty()) {
        auto reading = m_workers.start([feed] { return feed->readOn(); });
        const auto read = wait(reading);
        if (!read)
            return Outcome::Ended;
        if (!*read)
            return Outcome::Failed;
        lookAhead(*feed);
        if (**read)
            continue;
        if (const std::optional<std::string> rest = feed->takeRest())
            addLine(*rest);
        break;
    }
    return Outcome::Done;
}

/// Reads lines ahead, until enough drawings are being read. A line that ends the library ends this too.
void ScanRun::lookAhead(ListFeed& feed)
{
    while (m_readsAhead < m_scan.m_mostReads && m_ahead.size() < kMostLinesAhead && feed.hasLine() &&
           (m_ahead.empty() || m_ahead.back().isWhole()))
        addLine(feed.takeLine());
}

void ScanRun::addLine(std::string_view text)
{
    Line line;
    line.entry = splitListLine(text);
    if (line.entry)
        line.stem = fileStem(line.entry->path);
    if (line.isWhole()) {
        const Keywords keywords = m_window.keywords();
        KeywordMatch match(keywords);
        if (!match.findIn(*line.stem) && !match.findIn(line.entry->label))
            readAhead(line);
    }
    m_ahead.push_back(std::move(line));
}

void ScanRun::readAhead(Line& line)
{
    line.keywords =
        m_workers.start([reader = m_scan.m_reader, path = line.entry->path] { return reader(path); });
    ++m_readsAhead;
}

ScanRun::Outcome ScanRun::testLine(Line& line, const std::string& name)
{
    const std::string& path = line.entry->path;
    m_window.showDrawing(path, upper(m_allLibraries ? name : m_window.library()), m_progress);
    const Keywords keywords = m_window.keywords();
    KeywordMatch match(keywords);
    if (match.findIn(*line.stem) || match.findIn(line.entry->label)) {
        addHit(path);
        return Outcome::Done;
    }
    if (!line.keywords) {
        readAhead(line);
        --m_readsAhead;
    }
    const auto stored = wait(*line.keywords);
    if (!stored)
        return Outcome::Ended;
    if (!*stored)
        return Outcome::Failed;
    if (match.findIn(**stored))
        addHit(path);
    return Outcome::Done;
}

void ScanRun::addHit(const std::string& path)
{
    m_window.showHit(path, ++m_scan.m_hits);
}

/// A turn of the event loop, and the stop test behind it. False when the run ends here.
bool ScanRun::turn(ScanWindow::Turn when)
{
    if (!m_window.turn(when)) {
        m_scan.m_again = false;
        return false;
    }
    if (m_scan.m_again)
        return false;
    if (!m_scan.m_stopRequested)
        return true;
    m_window.closeAllFiles();
    if (m_scan.m_stopKeepsWindow) {
        m_scan.m_stopRequested = false;
        m_scan.m_stopKeepsWindow = false;
    } else {
        m_window.unload();
    }
    return false;
}

/// What a worker reads. While that takes its time the window lives on; none when the run ends meanwhile.
template <class Value> std::optional<Value> ScanRun::wait(std::future<Value>& future)
{
    while (future.wait_for(kPatience) != std::future_status::ready) {
        if (!turn(ScanWindow::Turn::WhileReading))
            return {};
    }
    return future.get();
}

KeywordScan::KeywordScan(KeywordReader reader, unsigned mostReads)
    : m_reader(std::move(reader)), m_mostReads(std::max(mostReads, 1U))
{
}

void KeywordScan::run(ScanWindow& window)
{
    m_again = m_running;
    if (m_running)
        return;
    m_running = true;
    bool interrupts = false;
    do {
        m_again = false;
        ScanRun(*this, window).run(interrupts);
        interrupts = true;
    } while (m_again);
    m_running = false;
}

void KeywordScan::stopAndKeepWindow()
{
    m_stopKeepsWindow = true;
    m_stopRequested = true;
    m_again = false;
}

} // namespace zv
