// Cost of the toolkit's layout and widget traffic in simhost (no rendering): a dialog shown and
// answered by a click, a column of 99 text lines, and a full table refill.
#include <benchmark/benchmark.h>

#include <string>

#include "XPStandardWidgets.h"
#include "XPWidgets.h"
#include "simhost/Simhost.h"
#include "simhost/Widgets.h"
#include "toolkit/Controls.h"
#include "toolkit/CtrlArray.h"
#include "toolkit/Dialog.h"
#include "toolkit/Window.h"

namespace {

/// A host with one in-process plug-in that every API call is attributed to.
struct BenchHost {
    simhost::Host host;
    BenchHost() {
        simhost::InProcessPlugin plugin;
        plugin.name = "ToolkitBench";
        plugin.signature = "kalvora.bench.toolkit";
        host.setDirectCaller(host.addPlugin(plugin));
    }
};

int gAnswers = 0;
void Count(int) {
    ++gAnswers;
}

void BM_DialogShowAndClick(benchmark::State& state) {
    BenchHost bench;
    for (auto _ : state) {
        HV_Dialog::Show("Kalvora", "The aircraft is moving.;Stop the push-back now?", "Stop", "Continue",
                        Count);
        simhost::WidgetHandle stop = simhost::findWidget("Stop");
        simhost::clickWidget(bench.host, stop);
    }
    state.counters["answers"] = gAnswers;
}
BENCHMARK(BM_DialogShowAndClick)->Unit(benchmark::kMicrosecond);

void BM_ColumnOf99Lines(benchmark::State& state) {
    BenchHost bench;
    for (auto _ : state) {
        HV_Window window(nullptr, nullptr, 300, "Lines", false, true);
        auto* panel = new HV_Panel(nullptr, false, 0, nullptr, true, true);
        window.AddChild(panel);
        for (int i = 0; i < HV_Panel::kMaxChildrenPerColumn; ++i)
            panel->AddChild(new HV_CtrlText(("line " + std::to_string(i)).c_str(), kAlignLeft, true), 0);
        window.Pack();
        benchmark::DoNotOptimize(panel->bottom);
    }
}
BENCHMARK(BM_ColumnOf99Lines)->Unit(benchmark::kMicrosecond);

void BM_TableRefill(benchmark::State& state) {
    BenchHost bench;
    HV_Window window(nullptr, nullptr, 400, "Table", false, true);
    auto* table = new HV_CtrlArray(2, 12, true, true);
    table->SetColumn(0, "Name", 300);
    table->SetColumn(1, "Kind", 70);
    window.AddChild(table);
    const int rows = static_cast<int>(state.range(0));
    for (auto _ : state) {
        table->SetRowCount(0);
        table->SetRowCount(rows);
        for (int i = 0; i < rows; ++i) {
            table->SetCellText(i, 0, "some_file_name.obj");
            table->SetCellText(i, 1, "File");
        }
    }
    state.SetItemsProcessed(state.iterations() * rows);
}
BENCHMARK(BM_TableRefill)->Arg(100)->Arg(10000)->Unit(benchmark::kMicrosecond);

} // namespace

BENCHMARK_MAIN();
