#include "drawing/Reader.h"
#include "drawing/paint/Picture.h"

#include <QGuiApplication>

#include <benchmark/benchmark.h>

#include <algorithm>
#include <filesystem>

// Opening a real drawing and painting it whole, warm. Without ../shared/drawings only a made one is measured.

namespace {

using namespace zv;
using namespace zv::dwg;

const QSize kSize(800, 600);

/// The real drawing whose size is nearest to 1 MB.
std::string drawingOfOneMegabyte()
{
    std::string best;
    double apart = 1e18;
    std::error_code problem;
    const std::filesystem::path folder = ZELVORA_SOURCE_DIR "/../shared/drawings";
    for (std::filesystem::recursive_directory_iterator entry(folder, problem), end; entry != end;
         entry.increment(problem)) {
        if (problem || entry->path().extension() != ".dwg")
            continue;
        const double away = std::abs(double(entry->file_size()) - 1e6);
        if (away < apart) {
            apart = away;
            best = entry->path().string();
        }
    }
    return best;
}

void openAndPaint(benchmark::State& state)
{
    const std::string path = drawingOfOneMegabyte();
    if (path.empty()) {
        state.SkipWithError("no drawings");
        return;
    }
    state.SetLabel(std::filesystem::path(path).filename().string());
    for (auto run : state) {
        const auto drawing = openDrawing(path, {});
        if (!drawing || paintPicture(drawing->scene, kSize, Qt::black).isNull())
            state.SkipWithError("the drawing cannot be shown");
    }
}
BENCHMARK(openAndPaint)->Unit(benchmark::kMillisecond);

/// `count` short lines, circles and letters.
Document crowd(int count)
{
    Document document;
    document.blocks.emplace_back();
    document.blocks[0].layout = true;
    for (int i = 0; i < count; ++i) {
        const double x = i % 400 * 10.0, y = i / 400 * 10.0;
        Entity entity;
        if (i % 10 == 0) {
            TextLine text;
            text.text = u"A";
            text.height = 5;
            text.insertion = {x, y, 0};
            entity.geometry = text;
        } else if (i % 3 == 0) {
            entity.geometry = Circle{{x, y, 0}, 4};
        } else {
            entity.geometry = Line{{x, y, 0}, {x + 9, y + i % 7, 0}};
        }
        entity.color = {Color::Kind::Index, static_cast<std::uint8_t>(1 + i % 5), 0};
        document.blocks[0].entities.push_back(std::move(entity));
    }
    return document;
}

void makeScene(benchmark::State& state)
{
    const Document document = crowd(int(state.range(0)));
    for (auto run : state)
        benchmark::DoNotOptimize(drawingScene(document, {}));
    state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(makeScene)->Arg(100000)->Unit(benchmark::kMillisecond);

void paintScene(benchmark::State& state)
{
    const Scene scene = drawingScene(crowd(int(state.range(0))), {});
    for (auto run : state)
        benchmark::DoNotOptimize(paintPicture(scene, kSize, Qt::black));
    state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(paintScene)->Arg(100000)->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QGuiApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
