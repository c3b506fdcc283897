// Starts the program again and again on an X display without a window manager and times each from the start
// of its process to the mapping of its window: start_benchmark PROGRAM, under xvfb-run.
#include <benchmark/benchmark.h>

#include <QProcess>
#include <xcb/xcb.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <memory>

namespace {

/// Waits for the next top-level window to be mapped; false when the display ends.
bool waitForWindow(xcb_connection_t* display)
{
    while (xcb_generic_event_t* event = xcb_wait_for_event(display)) {
        const std::unique_ptr<xcb_generic_event_t, void (*)(void*)> held(event, std::free);
        if ((event->response_type & 0x7f) == XCB_MAP_NOTIFY)
            return true;
    }
    return false;
}

void startToWindow(benchmark::State& state, xcb_connection_t* display, const QString& program)
{
    for ([[maybe_unused]] auto _ : state) {
        QProcess process;
        const auto before = std::chrono::steady_clock::now();
        process.start(program, QStringList());
        if (!waitForWindow(display)) {
            state.SkipWithError("the display has ended");
            return;
        }
        state.SetIterationTime(
            std::chrono::duration<double>(std::chrono::steady_clock::now() - before).count());
        process.terminate();
        process.waitForFinished();
    }
}

} // namespace

int main(int argc, char** argv)
{
    benchmark::Initialize(&argc, argv);
    if (argc != 2) {
        std::fprintf(stderr, "start_benchmark PROGRAM\n");
        return 2;
    }
    xcb_connection_t* display = xcb_connect(nullptr, nullptr);
    if (xcb_connection_has_error(display)) {
        std::fprintf(stderr, "start_benchmark: no X display; run it under xvfb-run\n");
        return 1;
    }
    const xcb_screen_t* screen = xcb_setup_roots_iterator(xcb_get_setup(display)).data;
    const std::uint32_t events = XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY;
    xcb_change_window_attributes(display, screen->root, XCB_CW_EVENT_MASK, &events);
    xcb_flush(display);
    const QString program = QString::fromLocal8Bit(argv[1]);
    benchmark::RegisterBenchmark("startToWindow",
                                 [&](benchmark::State& state) { startToWindow(state, display, program); })
        ->UseManualTime()
        ->Unit(benchmark::kMillisecond)
        ->Iterations(20);
    benchmark::RunSpecifiedBenchmarks();
    xcb_disconnect(display);
    return 0;
}
