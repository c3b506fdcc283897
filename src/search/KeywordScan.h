#pragma once

#include "platform/Messages.h"
#include "platform/Result.h"
#include "platform/Workers.h"
#include "search/KeywordMatch.h"

#include <cstdint>
#include <functional>
#include <string>

namespace zv {

/// How far a run is. Lines are those of the library under scan; of a long
/// list their count is what its length lets expect, until it has been read whole.
struct ScanProgress {
    int library = 0, libraries = 0; ///< The one under scan, from 1, of how many.
    std::size_t line = 0, lines = 0;
};

/// The window around a scan, and what of the program the scan asks through it.
class ScanWindow {
public:
    virtual ~ScanWindow() = default;

    // What is asked for. The keywords are in capitals; they are asked for again with each drawing.
    virtual bool allLibrariesChecked() const = 0;
    virtual std::string library() const = 0;
    virtual Keywords keywords() const = 0;
    virtual std::string masterFolder() const = 0;
    virtual std::string masterProfile() const = 0;

    // What is shown.
    virtual void showRunBegins() = 0;
    virtual void showDrawing(const std::string& path, const std::string& library,
                             const ScanProgress& progress) = 0;
    virtual void showHit(const std::string& path, int hits) = 0;
    virtual void showRunEnded(int hits) = 0;
    virtual Messages& messages() = 0;

    /// When the event loop has a turn.
    enum class Turn { BetweenSteps, WhileReading };
    /// Gives it one. False when the window has been unloaded by then.
    virtual bool turn(Turn when) = 0;
    /// Closes every open file of the program.
    virtual void closeAllFiles() = 0;
    /// How often that has been done, by whomever.
    virtual unsigned filesClosed() const = 0;
    virtual void unload() = 0;
};

/// Reads the keywords that are stored in a drawing. It is called on other threads, on several at once.
using KeywordReader = std::function<Result<std::string>(const std::string& path)>;

/// The search through libraries: each drawing of a list is tested on its file name, then on its label, and
/// only then on the keywords inside its file. While the lines are walked in order, workers read the
/// files ahead that will be needed.
class KeywordScan {
public:
    /// `mostReads` bounds the files that are read at once.
    explicit KeywordScan(KeywordReader reader, unsigned mostReads = kMostWorkers);

    /// Runs a search to its end. A call from inside a run, through a turn of the event loop, ends that run
    /// without a word once it has its turn back, and the search then begins anew.
    void run(ScanWindow& window);
    bool isRunning() const { return m_running; }

    /// The stop button: the run ends and the window stays. Nothing is shown for it here.
    void stopAndKeepWindow();
    /// The window is on its way out: the run ends with it.
    void stop() { m_stopRequested = true; }

    std::int16_t scanAllLibraries = 0; ///< 1: every library of the catalogue.

private:
    friend class ScanRun;

    KeywordReader m_reader;
    unsigned m_mostReads;
    int m_hits = 0; ///< Over all libraries of a run.
    bool m_stopRequested = false;
    bool m_stopKeepsWindow = false;
    bool m_running = false;
    bool m_again = false; ///< A new run is to follow the one that is going.
};

} // namespace zv
