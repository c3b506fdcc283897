// The main function of the benchmarks that open windows.
#include <QApplication>
#include <benchmark/benchmark.h>

#include <clocale>

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    std::setlocale(LC_ALL, "");
    QApplication::setQuitOnLastWindowClosed(false);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
