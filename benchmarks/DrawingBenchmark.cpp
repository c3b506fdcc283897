#include "drawing/Reader.h"
#include "drawing/preview/Preview.h"
#include "drawing/properties/PropertiesReader.h"
#include "platform/Files.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <filesystem>

// Each figure is for one drawing, opened anew, with its pages in the system's cache. The drawings are real
// ones from
// ../shared/drawings; without that folder nothing is measured.

namespace {

using namespace zv;
using namespace zv::dwg;

const std::string kFolder = ZELVORA_SOURCE_DIR "/../shared/drawings";

std::vector<std::string> drawingsOf(const std::vector<std::string>& folders)
{
    std::vector<std::string> paths;
    std::error_code problem;
    for (const std::string& folder : folders) {
        for (const auto& entry : std::filesystem::directory_iterator(kFolder + "/" + folder, problem))
            paths.push_back(entry.path().string());
    }
    std::sort(paths.begin(), paths.end());
    return paths;
}

/// Calls `read` with one drawing after the other.
template <class Read> void eachOf(benchmark::State& state, const std::vector<std::string>& paths, Read read)
{
    if (paths.empty()) {
        state.SkipWithError("no drawings");
        return;
    }
    std::size_t next = 0;
    for (auto run : state) {
        const auto source = openByteSource(paths[next++ % paths.size()]);
        if (!source || !read(**source))
            state.SkipWithError("a drawing cannot be read");
    }
    state.SetItemsProcessed(state.iterations());
}

bool preview(const ByteSource& source)
{
    return readPreviews(source).ok();
}

bool decodedPreview(const ByteSource& source)
{
    const auto previews = readPreviews(source);
    if (!previews)
        return false;
    if (!previews->empty() && previews->front().kind == PreviewKind::Bmp)
        benchmark::DoNotOptimize(decodeBitmap(previews->front().bytes));
    return true;
}

bool properties(const ByteSource& source)
{
    return readProperties(source).ok();
}

bool document(const ByteSource& source)
{
    return readDocument(source).ok();
}

const std::vector<std::string> kOld{"r13", "r14", "2000"}, kNew{"2004", "2007", "2010", "2013", "2018"};

void previewOf(benchmark::State& state)
{
    eachOf(state, drawingsOf(kNew), preview);
}
void previewDecoded(benchmark::State& state)
{
    eachOf(state, drawingsOf(kNew), decodedPreview);
}
void propertiesR2004(benchmark::State& state)
{
    eachOf(state, drawingsOf(kNew), properties);
}
void propertiesBeforeR2004(benchmark::State& state)
{
    eachOf(state, drawingsOf(kOld), properties);
}
void wholeDrawing(benchmark::State& state, const char* name)
{
    const std::string path = kFolder + "/" + name;
    eachOf(state, fileExists(path) ? std::vector{path} : std::vector<std::string>(), document);
    if (const auto length = fileLength(path))
        state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(*length));
}

BENCHMARK(previewOf)->Unit(benchmark::kMicrosecond);
BENCHMARK(previewDecoded)->Unit(benchmark::kMicrosecond);
BENCHMARK(propertiesR2004)->Unit(benchmark::kMicrosecond);
BENCHMARK(propertiesBeforeR2004)->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(wholeDrawing, R14_1300kB, "r14/sample_AC1014.dwg")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(wholeDrawing, R2000_680kB, "2000/testDWG2000.dwg")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(wholeDrawing, R2004_1100kB, "2004/sample_AC1018.dwg")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(wholeDrawing, R2007_490kB, "2007/testDWGmech2008.dwg")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(wholeDrawing, R2018_1100kB, "2018/sample_AC1032.dwg")->Unit(benchmark::kMillisecond);

} // namespace

BENCHMARK_MAIN();
