// What an administrator waits for in the library editor: a library chosen, a label changed.
#include "support/OfficeFixture.h"

#include "controls/PathList.h"
#include "library/LibraryWindows.h"
#include "library/ListFile.h"
#include "library/Newlib.h"

#include <QApplication>
#include <QLineEdit>
#include <QTest>
#include <benchmark/benchmark.h>

namespace {

using namespace zv;

struct Office : OfficeFixture {
    using OfficeFixture::choose;
    using OfficeFixture::click;
    void TestBody() override {}

    /// Opens the editor on a library of this many lines, each with a file of its own if `files` is set.
    Newlib& edit(std::size_t lines, bool files)
    {
        const std::string held = drawings(1)[0];
        std::vector<std::string> paths;
        for (std::size_t i = 0; i < lines; ++i)
            paths.push_back(files ? folder.write("drawings/f" + std::to_string(i) + ".dwg", "x") : held);
        makeLibrary("Large", paths);
        makeLibrary("Small", drawings(1));
        makeCatalogue({"Large", "Small"});
        addLibraryWindows(*program);
        program->load("Zelvora");
        program->show("Newlib");
        QApplication::processEvents();
        return *static_cast<Newlib*>(program->loaded("Newlib"));
    }
};

/// Chooses a library of 10,000 drawings, up to its first screen.
void chooseLibrary(benchmark::State& state)
{
    Office office;
    office.edit(10000, true);
    for ([[maybe_unused]] auto _ : state) {
        state.PauseTiming();
        office.choose("Combo2", "Small", "Newlib");
        QApplication::processEvents();
        state.ResumeTiming();
        office.choose("Combo2", "Large", "Newlib");
        QApplication::processEvents();
    }
}
BENCHMARK(chooseLibrary)->Unit(benchmark::kMillisecond);

/// Changes one label in the largest list there can be, up to the list shown again.
void changeLabel(benchmark::State& state)
{
    Office office;
    Newlib& editor = office.edit(kMostListLines, false);
    office.choose("Combo2", "Large", "Newlib");
    editor.List1->setCurrentRow(20000);
    QApplication::processEvents();
    int round = 0;
    for ([[maybe_unused]] auto _ : state) {
        editor.Text5->setText(QString::number(++round));
        office.click("Command5", "Newlib");
        QApplication::processEvents();
    }
}
BENCHMARK(changeLabel)->Unit(benchmark::kMillisecond);

} // namespace
