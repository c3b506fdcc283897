#include "host/ActionProcedure.h"
#include "platform/Desktop.h"
#include "platform/LocalHosts.h"

#include <benchmark/benchmark.h>

#include <chrono>
#include <cstdio>

// From a double-click to the command text typed at a running host, and the parts of that way. Start
// zelvora-bench first.

namespace {

using namespace zv;
using Clock = std::chrono::steady_clock;

constexpr const char* kHost = "AutoCAD.Application";
// A name that no drawing has: the host takes the text in and ends the command.
constexpr const char* kDrawing = "C:\\Lib\\no such drawing.dwg";

PlainEventPump g_pump;

class NoSplash final : public LoadSplash {
public:
    void show() override {}
    void unload() override {}
};

class PlainWindow final : public ActionWindow, public Messages {
public:
    void hideWindow() override {}
    void showWindow() override {}
    void setDefaultPointer() override {}
    Messages& messages() override { return *this; }
    void show(const Message&) override {}
    bool ask(const Message&) override { return false; }
    std::optional<bool> askOrClose(const Message&) override { return false; }
    bool confirm(const Message&) override { return false; }
    ActionMode mode() const override { return ActionMode::Block; }
    bool autoScale() const override { return false; }
    bool explode() const override { return false; }
    std::string scaleText() const override { return "1.00"; }
    void setScaleText(const std::string&) override {}
    Result<std::string> firstCustomProperty(const std::string&) override { return std::string(); }
    bool openXattach(const std::string&, const std::string&) override { return false; }
    bool openCmode(const std::string&) override { return false; }
    void clearCartMark() override {}
    void enableMainWindow() override {}
};

/// Tells when the command text has gone out and been answered.
class TypedTime final : public Automation {
public:
    explicit TypedTime(Automation& inner) : m_inner(inner) {}
    Result<AutomationObjectPtr> attach(const std::string& progId) override
    {
        auto application = m_inner.attach(progId);
        if (application)
            return AutomationObjectPtr(std::make_shared<Object>(*application, *this));
        return application;
    }
    Result<AutomationObjectPtr> create(const std::string& progId) override { return m_inner.create(progId); }
    Clock::time_point typed;

private:
    class Object final : public AutomationObject {
    public:
        Object(AutomationObjectPtr inner, TypedTime& owner) : m_inner(std::move(inner)), m_owner(owner) {}
        Result<AutomationValue> get(std::string_view name) override
        {
            auto value = m_inner->get(name);
            if (value) {
                if (auto* object = std::get_if<AutomationObjectPtr>(&*value))
                    *object = std::make_shared<Object>(*object, m_owner);
            }
            return value;
        }
        Result<void> set(std::string_view name, const AutomationValue& value) override
        {
            return m_inner->set(name, value);
        }
        Result<AutomationValue> call(std::string_view name,
                                     const std::vector<AutomationValue>& arguments) override
        {
            auto value = m_inner->call(name, arguments);
            if (name == "SendCommand")
                m_owner.typed = Clock::now();
            return value;
        }
        Result<std::vector<AutomationValue>> items() override { return m_inner->items(); }

    private:
        AutomationObjectPtr m_inner;
        TypedTime& m_owner;
    };

    Automation& m_inner;
};

void doubleClickToCommand(benchmark::State& state)
{
    const auto carrier = systemAutomation(g_pump);
    TypedTime timed(*carrier);
    NoSplash splash;
    PlainWindow window;
    ActionServices services{{timed, splash, activateWindowByTitle}, {}, {}};
    services.writeLog = [](const std::string&, std::string_view) {};
    for (auto _ : state) {
        const auto start = Clock::now();
        static_cast<void>(runAction(ActionCaller::Command11, kDrawing, kDrawing, window, services, {}));
        state.SetIterationTime(std::chrono::duration<double>(timed.typed - start).count());
    }
}

void attachAlone(benchmark::State& state)
{
    const auto carrier = systemAutomation(g_pump);
    for (auto _ : state) {
        const auto application = carrier->attach(kHost);
        benchmark::DoNotOptimize((*application)->get("Version"));
    }
}

void oneVariable(benchmark::State& state)
{
    const auto carrier = systemAutomation(g_pump);
    const auto drawing = *asObject((*carrier->attach(kHost))->get("ActiveDocument"));
    for (auto _ : state)
        benchmark::DoNotOptimize(drawing->call("GetVariable", {std::string("filedia")}));
}

void sendAlone(benchmark::State& state)
{
    const auto carrier = systemAutomation(g_pump);
    const auto drawing = *asObject((*carrier->attach(kHost))->get("ActiveDocument"));
    for (auto _ : state)
        benchmark::DoNotOptimize(drawing->call("SendCommand", {std::string("REGEN\r")}));
}

void activation(benchmark::State& state)
{
    const auto carrier = systemAutomation(g_pump);
    const std::string caption = *asText((*carrier->attach(kHost))->get("Caption"));
    for (auto _ : state)
        benchmark::DoNotOptimize(activateWindowByTitle(caption));
}

} // namespace

int main(int argc, char** argv)
{
    if (!systemAutomation(g_pump)->attach(kHost)) {
        std::puts("No host runs; start zelvora-bench first.");
        return 0;
    }
    const auto unit = benchmark::kMillisecond;
    benchmark::RegisterBenchmark("double-click to command text", doubleClickToCommand)
        ->UseManualTime()
        ->Unit(unit);
    benchmark::RegisterBenchmark("attach and Version", attachAlone)->Unit(unit);
    benchmark::RegisterBenchmark("one variable", oneVariable)->Unit(unit);
    benchmark::RegisterBenchmark("SendCommand", sendAlone)->Unit(unit);
    benchmark::RegisterBenchmark("activation", activation)->Unit(unit);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
