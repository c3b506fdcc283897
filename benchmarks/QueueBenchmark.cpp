// What a drafter waits for with a queue of 1,000 drawings: adding to it, its window, a removal, saving it,
// copying it out. The drawings are this program's own, each with a preview.
#include "support/OfficeFixture.h"

#include "platform/Files.h"
#include "queue/CopyOut.h"
#include "queue/QueueFile.h"

#include <QAbstractButton>
#include <QApplication>
#include <QLineEdit>
#include <QListWidget>
#include <benchmark/benchmark.h>

#include <filesystem>

namespace {

using namespace zv;

constexpr int kDrawings = 1000;

struct Office : OfficeFixture {
    void TestBody() override {}

    Office() : paths(drawings(kDrawings))
    {
        // No file manager comes up for each folder that was copied to.
        qputenv("PATH", "");
        makeDoors(1);
        static_cast<void>(saveQueue(queue(), paths));
    }
    std::string queue() const { return userFile(".crt"); }
    Window* openCart()
    {
        program->fields().cartFromButton = 1;
        program->show("Cart");
        QApplication::processEvents();
        return program->loaded("Cart");
    }
    QListWidget* list() { return control<QListWidget>("List1", "Cart"); }
    void press(const char* button)
    {
        control<QAbstractButton>(QString::fromLatin1(button), "Cart")->click();
        QApplication::processEvents();
    }
    using OfficeFixture::control;
    using OfficeFixture::folder;
    using OfficeFixture::program;
    using OfficeFixture::start;

    const std::vector<std::string> paths;
};

/// Adds all of them, one after the other, as double-clicks do.
void addAll(benchmark::State& state)
{
    Office office;
    for ([[maybe_unused]] auto _ : state) {
        std::filesystem::remove(office.queue());
        for (const std::string& path : office.paths)
            static_cast<void>(addToQueue(office.queue(), path));
    }
}

/// Opens the window on the queue and closes it.
void showQueue(benchmark::State& state)
{
    Office office;
    office.start();
    for ([[maybe_unused]] auto _ : state) {
        office.openCart();
        office.press("Command3");
    }
}

/// Selects the middle row, which shows its drawing, and removes it; each time from a whole queue.
void removeOne(benchmark::State& state)
{
    Office office;
    office.start();
    for ([[maybe_unused]] auto _ : state) {
        state.PauseTiming();
        office.openCart();
        state.ResumeTiming();
        office.list()->setCurrentRow(kDrawings / 2);
        office.press("Command5");
        state.PauseTiming();
        office.press("Command3");
        state.ResumeTiming();
    }
}

/// Empties the queue from the front, row by row, and saves it.
void removeAllAndSave(benchmark::State& state)
{
    Office office;
    office.start();
    for ([[maybe_unused]] auto _ : state) {
        state.PauseTiming();
        static_cast<void>(saveQueue(office.queue(), office.paths));
        office.openCart();
        state.ResumeTiming();
        while (office.list()->count() > 0) {
            office.list()->setCurrentRow(0);
            office.press("Command5");
        }
        office.press("Command2");
    }
}

/// Copies them all to an empty folder.
void copyAll(benchmark::State& state)
{
    Office office;
    const std::string target = office.folder.file("to");
    for ([[maybe_unused]] auto _ : state) {
        state.PauseTiming();
        std::filesystem::remove_all(target);
        std::filesystem::create_directory(target);
        state.ResumeTiming();
        const auto end = copyOut(office.paths, target,
                                 {[](const std::string&) { return true; }, [](std::size_t) { return true; }});
        if (!end)
            state.SkipWithError(end.error().text.c_str());
    }
}

/// The same through the windows, which tell of each drawing.
void copyByWindow(benchmark::State& state)
{
    Office office;
    office.start();
    const std::string target = office.folder.file("to");
    for ([[maybe_unused]] auto _ : state) {
        state.PauseTiming();
        std::filesystem::remove_all(target);
        std::filesystem::create_directory(target);
        office.openCart();
        state.ResumeTiming();
        office.press("Command11");
        office.control<QLineEdit>("Text1", "CartCopy")->setText(QString::fromStdString(target));
        office.control<QAbstractButton>("Command11", "CartCopy")->click();
        state.PauseTiming();
        office.press("Command3");
        state.ResumeTiming();
    }
}

BENCHMARK(addAll)->Unit(benchmark::kMillisecond);
BENCHMARK(showQueue)->Unit(benchmark::kMillisecond);
BENCHMARK(removeOne)->Unit(benchmark::kMillisecond);
BENCHMARK(removeAllAndSave)->Unit(benchmark::kMillisecond);
BENCHMARK(copyAll)->Unit(benchmark::kMillisecond);
BENCHMARK(copyByWindow)->Unit(benchmark::kMillisecond);

} // namespace
