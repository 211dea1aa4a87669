// Parts of a run by themselves, on a composition with a nest of N layers.
#include <benchmark/benchmark.h>

#include <string>

#include "document/document.h"
#include "model/project.h"
#include "script/engine.h"
#include "script/settings.h"
#include "scriptui/dialog_driver.h"

namespace {

namespace model = host::model;

std::string animation(int layers) {
    std::string text =
        R"({"v":"5.7.0","fr":30,"ip":0,"op":60,"w":200,"h":200,"nm":"Main","ddd":0,"assets":[],"layers":[)";
    for (int i = 1; i <= layers; ++i) {
        const std::string number = std::to_string(i);
        text +=
            (i > 1 ? "," : "") + (R"({"ddd":0,"ind":)" + number + R"(,"ty":1,"nm":"Layer )" + number) +
            R"(","ks":{"o":{"a":0,"k":100},"r":{"a":0,"k":0},"p":{"a":0,"k":[100,100,0]},"a":{"a":0,"k":[0,0,0]},)" +
            R"("s":{"a":0,"k":[100,100,100]}},"sw":10,"sh":10,"sc":"#ff0000","ip":0,"op":60,"st":0,"bm":0})";
    }
    return text + "]}";
}

// Reports the time of one layer.
void count_layers(benchmark::State& state) {
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

void read(benchmark::State& state) {
    const std::string text = animation(static_cast<int>(state.range(0)));
    for (auto _ : state) benchmark::DoNotOptimize(lottie::document::Document::read(text));
    count_layers(state);
}

void write_after_one_change(benchmark::State& state) {
    const lottie::document::Document document =
        lottie::document::Document::read(animation(static_cast<int>(state.range(0))));
    document.main_comp().layer_at(0).rename("another");
    for (auto _ : state) benchmark::DoNotOptimize(document.write());
    count_layers(state);
}

void move_each_layer_to_the_top(benchmark::State& state) {
    const lottie::document::Document document =
        lottie::document::Document::read(animation(static_cast<int>(state.range(0))));
    model::Comp& comp = document.main_comp();
    for (auto _ : state) {
        for (int i = 0; i < comp.layer_count(); ++i) comp.layer_at(i).move_to(0);
        document.project().undo().clear();
    }
    count_layers(state);
}

void find_each_layer_by_name(benchmark::State& state) {
    const lottie::document::Document document =
        lottie::document::Document::read(animation(static_cast<int>(state.range(0))));
    const model::Comp& comp = document.main_comp();
    for (auto _ : state) {
        for (int i = 1; i <= comp.layer_count(); ++i)
            benchmark::DoNotOptimize(comp.layer_named("Layer " + std::to_string(i)));
    }
    count_layers(state);
}

void repair_after_renaming_each_layer(benchmark::State& state) {
    const lottie::document::Document document =
        lottie::document::Document::read(animation(static_cast<int>(state.range(0))));
    model::Comp& comp = document.main_comp();
    const int count = comp.layer_count();
    for (int i = 0; i < count; ++i)
        comp.layer_at(i)
            .stream(model::kOpacity)
            .set_expression("thisComp.layer(\"Layer " + std::to_string((i + 1) % count + 1) + "\").opacity");
    for (auto _ : state) {
        for (int i = 0; i < count; ++i) {
            const std::string name = comp.layer_at(i).display_name();
            comp.layer_at(i).rename(name + "x");
            document.project().auto_fix_expressions(name, name + "x");
        }
        document.project().undo().undo_all();
    }
    count_layers(state);
}

class NobodyThere : public host::scriptui::DialogDriver {
    void drive(host::scriptui::Window&) override {}
};

void run_a_script_of_one_statement_for_each_layer(benchmark::State& state) {
    const lottie::document::Document document =
        lottie::document::Document::read(animation(static_cast<int>(state.range(0))));
    std::string script;
    for (int i = 1; i <= document.main_comp().layer_count(); ++i)
        script += "app.project.item(1).layer(" + std::to_string(i) + ").name;";
    host::script::Settings settings = host::script::Settings::in_memory();
    NobodyThere driver;
    host::script::Engine engine(document.project(), settings, driver, {});
    for (auto _ : state) {
        if (engine.run(script).failed) state.SkipWithError("the script failed");
    }
    count_layers(state);
}

BENCHMARK(read)->RangeMultiplier(10)->Range(100, 100'000);
BENCHMARK(write_after_one_change)->RangeMultiplier(10)->Range(100, 100'000);
BENCHMARK(move_each_layer_to_the_top)->RangeMultiplier(10)->Range(100, 100'000);
BENCHMARK(find_each_layer_by_name)->RangeMultiplier(10)->Range(100, 100'000);
BENCHMARK(repair_after_renaming_each_layer)->RangeMultiplier(10)->Range(100, 100'000);
BENCHMARK(run_a_script_of_one_statement_for_each_layer)->RangeMultiplier(10)->Range(100, 100'000);

}  // namespace

BENCHMARK_MAIN();
