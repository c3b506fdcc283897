// What a drafter waits for in the main window: a panel, a library, a selection. Previews are those of the
// sample office where it has been made, else small ones of this program's own.
#include "support/OfficeFixture.h"
#include "support/PngDrawing.h"

#include "controls/SortedCombo.h"
#include "library/ListFile.h"
#include "platform/Workers.h"

#include <QAbstractButton>
#include <QApplication>
#include <QDirIterator>
#include <QElapsedTimer>
#include <QListWidget>
#include <QTest>
#include <benchmark/benchmark.h>

#include <fstream>

namespace {

using namespace zv;

/// What the process has had in memory at most, in MiB.
double mostMemory()
{
    std::ifstream status("/proc/self/status");
    for (std::string line; std::getline(status, line);) {
        if (line.starts_with("VmHWM:"))
            return std::stod(line.substr(6)) / 1024;
    }
    return 0;
}

struct Office : OfficeFixture {
    using OfficeFixture::choose;
    using OfficeFixture::click;
    using OfficeFixture::main;
    void TestBody() override {}

    /// Starts on a library of this many lines; its drawings come again and again.
    void startOn(const std::string& name, std::size_t lines)
    {
        std::vector<std::string> held;
        QDirIterator files(QStringLiteral(ZELVORA_OFFICE), {QStringLiteral("*.dwg")}, QDir::Files,
                           QDirIterator::Subdirectories);
        while (files.hasNext())
            held.push_back(files.next().toLocal8Bit().toStdString());
        if (held.empty())
            held = drawings(40);
        std::vector<std::string> paths;
        for (std::size_t i = 0; i < lines; ++i)
            paths.push_back(held[i % held.size()]);
        makeLibrary(name, paths);
        makeLibrary("Small", drawings(1));
        makeCatalogue({name, "Small"});
        setKey(ProfileFile::User, "LibLoad", "del", "0");
        setKey(ProfileFile::User, "LibLoad", "LastLoad", name);
        start();
        main().resize(713, 606);
        QApplication::processEvents();
    }
    /// Twenty drawings, each with a picture of one bit a pixel and this edge.
    void makeLargePictures(int edge)
    {
        const std::string file = fileWithPng(largeBar({edge, edge}));
        std::vector<std::string> paths;
        for (int i = 1; i <= 20; ++i)
            paths.push_back(folder.write("drawings/P" + std::to_string(i) + ".dwg", file));
        makeLibrary("Pictures", paths);
    }
    void press(const char* button)
    {
        control<QAbstractButton>(QString::fromLatin1(button))->click();
        QApplication::processEvents();
    }
};

/// Turns a panel forward and back: twenty previews read, decoded, scaled and painted.
void turnPanel(benchmark::State& state)
{
    Office office;
    office.startOn("Forty", 40);
    bool forward = true;
    for ([[maybe_unused]] auto _ : state) {
        office.press(forward ? "Command3" : "Command2");
        forward = !forward;
    }
}
BENCHMARK(turnPanel)->Unit(benchmark::kMillisecond);

/// Picks the largest library there can be, up to its first panel on the screen.
void chooseLargestLibrary(benchmark::State& state)
{
    Office office;
    office.startOn("Largest", kMostListLines);
    for ([[maybe_unused]] auto _ : state) {
        state.PauseTiming();
        office.choose("Combo1", "Small");
        state.ResumeTiming();
        office.choose("Combo1", "Largest");
        QApplication::processEvents();
    }
}
BENCHMARK(chooseLargestLibrary)->Unit(benchmark::kMillisecond);

/// Clicks a cell, with the selection of its row and the reload of the panel that follow.
void selectCell(benchmark::State& state)
{
    Office office;
    office.startOn("TenThousand", 10000);
    bool second = true;
    for ([[maybe_unused]] auto _ : state) {
        office.click(second ? "DwgThumbnail2" : "DwgThumbnail3");
        QApplication::processEvents();
        second = !second;
    }
}
BENCHMARK(selectCell)->Unit(benchmark::kMillisecond);

/// Picks a library whose twenty previews are large pictures; the time is that in which the window is deaf.
/// Those beyond 4096 pixels are refused by their headers, the others are unpacked beside the window. The
/// refused ones come first, since the memory told is the most that there has been.
void chooseLargePictures(benchmark::State& state)
{
    Office office;
    office.startOn("Small too", 1);
    office.makeLargePictures(int(state.range(0)));
    const double before = mostMemory();
    office.main().Combo1->add({QStringLiteral("Pictures")});
    double shownMs = 0;
    for ([[maybe_unused]] auto _ : state) {
        office.choose("Combo1", "Pictures");
        QApplication::processEvents();
        state.PauseTiming();
        QElapsedTimer timer;
        timer.start();
        while (!waitForWorkers(std::chrono::milliseconds(0)))
            QApplication::processEvents(QEventLoop::AllEvents, 5);
        QApplication::processEvents();
        shownMs = double(timer.elapsed());
        office.choose("Combo1", "Small");
        state.ResumeTiming();
    }
    state.counters["until shown, ms"] = shownMs;
    state.counters["memory more, MiB"] = mostMemory() - before;
}
// What is timed is short beside what is waited for, so the library would go on for minutes.
BENCHMARK(chooseLargePictures)->Arg(5700)->Arg(4096)->Iterations(3)->Unit(benchmark::kMillisecond);

} // namespace
