// Prints the whole sample office to PDF files through the real window, several times over, and tells the time
// of each drawing and how much memory the process has at each quarter of a run.
#include "print/SampleOffice.h"

#include "MemoryInUse.h"

#include <QElapsedTimer>
#include <QPlainTextEdit>
#include <QPrinter>
#include <QPushButton>
#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstdio>

namespace {

constexpr int kRuns = 3;

struct Office : zv::SampleOffice {
    void TestBody() override {}

    void print()
    {
        if (!open())
            return;
        window().DwgViewX1->setPrinterChooser([this](QPrinter& printer, QWidget*) {
            printer.setOutputFormat(QPrinter::PdfFormat);
            printer.setOutputFileName(QString::fromStdString(folder.file("out/first of all.pdf")));
            return true;
        });
        selectAll();
        const std::size_t drawings = paths().size();
        std::vector<double> milliseconds;
        QElapsedTimer timer;
        QObject::connect(window().Text3, &QPlainTextEdit::textChanged, &window(), [&] {
            milliseconds.push_back(double(timer.nsecsElapsed()) / 1e6);
            timer.restart();
            if (milliseconds.size() % (drawings / 4) == 0)
                std::printf(" %.0f", zv::memoryInUse());
        });
        for (int run = 1; run <= kRuns; ++run) {
            std::printf("run %d: memory at each quarter in MiB:", run);
            milliseconds.clear();
            timer.start();
            window().Command7->click();
            // The last one is the emptying of the text at the end.
            milliseconds.resize(std::min(milliseconds.size(), drawings));
            std::sort(milliseconds.begin(), milliseconds.end());
            const auto at = [&](double part) {
                return milliseconds[std::size_t(part * double(milliseconds.size() - 1))];
            };
            std::printf("\n  %zu drawings, milliseconds each: median %.1f, 95 of 100 under %.1f, most %.1f\n",
                        drawings, at(0.5), at(0.95), at(1));
        }
    }
};

void printOffice(benchmark::State& state)
{
    for ([[maybe_unused]] auto _ : state)
        Office().print();
}
BENCHMARK(printOffice)->Unit(benchmark::kSecond)->Iterations(1);

} // namespace
