// What a search costs: through the window over warm files, and on a share where every operation on a file of
// a drawing takes 20 ms, one read after the other and side by side.
#include "support/OfficeFixture.h"
#include "support/SilentScan.h"

#include "MemoryInUse.h"
#include "SlowShare.h"
#include "controls/PanelPictures.h"
#include "controls/ThumbnailPicture.h"
#include "platform/Files.h"
#include "platform/Workers.h"
#include "window/DwgPropsX.h"

#include <QAbstractButton>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <benchmark/benchmark.h>

#include <thread>

namespace {

using namespace zv;

constexpr int kDrawings = 10'000;
constexpr int kFiles = 500; ///< So many different ones are listed again and again.
constexpr std::chrono::milliseconds kRoundTrip(20);

struct Office : OfficeFixture {
    using OfficeFixture::control;
    using OfficeFixture::drawings;
    using OfficeFixture::listPath;
    using OfficeFixture::master;
    void TestBody() override {}

    /// A library of this many lines, and the search window over it.
    void openOver(int lines)
    {
        const auto files = drawings(kFiles);
        std::string text;
        for (int i = 0; i < lines; ++i)
            text += files[std::size_t(i % kFiles)] + ";LABEL " + std::to_string(i) + "\r\n";
        if (!writeFile(listPath("Large"), text))
            std::abort();
        makeDoors(1);
        makeCatalogue({"Large"});
        start();
        program->show(QStringLiteral("Search"));
        control<QComboBox>(QStringLiteral("Combo1"), QStringLiteral("Search"))
            ->setEditText(QStringLiteral("Large"));
        QApplication::processEvents();
    }
    void search(const char* keyword)
    {
        control<QLineEdit>(QStringLiteral("Text1"), QStringLiteral("Search"))
            ->setText(QString::fromLatin1(keyword));
        control<QAbstractButton>(QStringLiteral("Command11"), QStringLiteral("Search"))->click();
    }
};

/// A keyword that is nowhere: every drawing is read.
void scanAllSources(benchmark::State& state)
{
    Office office;
    office.openOver(kDrawings);
    for ([[maybe_unused]] auto _ : state)
        office.search("nowhere");
    state.SetItemsProcessed(state.iterations() * kDrawings);
}
BENCHMARK(scanAllSources)->Unit(benchmark::kMillisecond)->UseRealTime();

/// A keyword that every label has: every line is a hit, and no drawing is read.
void scanWithEveryLineAHit(benchmark::State& state)
{
    Office office;
    office.openOver(int(state.range(0)));
    for ([[maybe_unused]] auto _ : state)
        office.search("label");
    state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(scanWithEveryLineAHit)
    ->Arg(kDrawings)
    ->Arg(20 * kDrawings)
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime();

/// Memory before and after runs over 100,000 lines that read every drawing.
void scanHundredThousandLines(benchmark::State& state)
{
    Office office;
    office.openOver(10 * kDrawings);
    office.search("nowhere");
    const double before = memoryInUse();
    for ([[maybe_unused]] auto _ : state)
        office.search("nowhere");
    state.counters["MiB_before"] = before;
    state.counters["MiB_after"] = memoryInUse();
    state.SetItemsProcessed(state.iterations() * 10 * kDrawings);
}
BENCHMARK(scanHundredThousandLines)->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(3);

// ---- a slow share

Result<std::string> keywordsOf(const std::string& path)
{
    DwgPropsX props;
    if (const auto loaded = props.load(path); !loaded)
        return loaded.error();
    return props.keywords();
}

/// The argument is how many files are read at once.
void scanOnSlowShare(benchmark::State& state)
{
    constexpr int kLines = 400;
    Office office;
    office.openOver(kLines);
    SilentScan window(office.master, "Large", "NOWHERE");
    KeywordScan scan(keywordsOf, unsigned(state.range(0)));
    setRoundTrip(kRoundTrip);
    for ([[maybe_unused]] auto _ : state)
        scan.run(window);
    if (!window.told.empty())
        state.SkipWithError(window.told.front().c_str());
    state.counters["trips_per_drawing"] = double(roundTrips()) / kLines;
    setRoundTrip({});
    state.SetItemsProcessed(state.iterations() * kLines);
}
BENCHMARK(scanOnSlowShare)
    ->Arg(1)
    ->Arg(int(kMostWorkers))
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime()
    ->Iterations(1);

/// From the press of the stop button to the end of the run, through the window, while all reads hang.
void stopWhileReadsHang(benchmark::State& state)
{
    using Clock = std::chrono::steady_clock;
    constexpr std::chrono::milliseconds kHangs(3000);
    Office office;
    office.openOver(kDrawings);
    auto* const stop = office.control<QAbstractButton>(QStringLiteral("Command4"), QStringLiteral("Search"));
    for ([[maybe_unused]] auto _ : state) {
        setRoundTrip(kHangs);
        Clock::time_point pressed;
        // The user presses whenever he likes, not when the program happens to look.
        std::thread user([&] {
            std::this_thread::sleep_for(std::chrono::milliseconds(203));
            pressed = Clock::now();
            QMetaObject::invokeMethod(stop, &QAbstractButton::click, Qt::QueuedConnection);
        });
        office.search("nowhere");
        const Clock::time_point ended = Clock::now();
        user.join();
        state.SetIterationTime(std::chrono::duration<double>(ended - pressed).count());
        setRoundTrip({});
        static_cast<void>(waitForWorkers(2 * kHangs));
    }
}
BENCHMARK(stopWhileReadsHang)->Unit(benchmark::kMillisecond)->UseManualTime()->Iterations(5);

constexpr QSize kRoom(85, 75); ///< Of a cell.

/// Twenty previews, one after the other.
void panelOneAfterTheOther(benchmark::State& state)
{
    Office office;
    const auto files = office.drawings(20);
    setRoundTrip(kRoundTrip);
    for ([[maybe_unused]] auto _ : state) {
        std::thread([&files] {
            for (const std::string& file : files)
                benchmark::DoNotOptimize(readThumbnail(file, kRoom));
        }).join();
    }
    state.counters["trips"] = roundTrips();
    setRoundTrip({});
}
BENCHMARK(panelOneAfterTheOther)->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(1);

/// The same by a panel, and by a turn to the panel that has been read ahead.
void panelOnSlowShare(benchmark::State& state)
{
    const bool readAhead = state.range(0) == 1;
    Office office;
    const auto files = office.drawings(20);
    PanelPictures pictures;
    setRoundTrip(kRoundTrip);
    if (readAhead) {
        pictures.readAhead(files, kRoom);
        std::this_thread::sleep_for(std::chrono::seconds(1));
    }
    for ([[maybe_unused]] auto _ : state) {
        pictures.read(files, kRoom);
        for (std::size_t i = 0; i < files.size(); ++i)
            benchmark::DoNotOptimize(pictures.take(i));
    }
    setRoundTrip({});
}
BENCHMARK(panelOnSlowShare)
    ->ArgName("ahead")
    ->Arg(0)
    ->Arg(1)
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime()
    ->Iterations(3);

} // namespace
