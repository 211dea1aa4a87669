// Names, times and numbers that nobody has thought of.
#include "projects/situations.h"
#include "projects/stages.h"

namespace validator {
namespace {

using namespace host::model;

using Build = void (*)(BuiltStage&);

void select_all(BuiltStage& stage) {
    stage.main().select(stage.main().stack().to_vector());
}

// Each name is a layer's and, in a nested composition of its own, a composition's.
void name_all(BuiltStage& stage, const std::vector<std::string>& names) {
    for (const std::string& name : names) {
        stage.add_layer(name);
        Comp& inner = stage.add_comp(name);
        stage.add_layer(name, &inner);
        stage.main().add_layer(inner).load_name(name);
    }
    select_all(stage);
}

void odd_names(BuiltStage& stage) {
    name_all(stage, {"quo\"ted", "it's", "back\\slash", "two\nlines", "tab\there", "%s%n%d", "#", "-", "</script>",
                     "\x1B[31mred", "null", "undefined", " "});
}

void foreign_names(BuiltStage& stage) {
    name_all(stage, {"Na\xC3\xAFve", "\xE6\x97\xA5\xE6\x9C\xAC\xE8\xAA\x9E", "\xF0\x9F\xA6\x81\xF0\x9F\x8E\xA8",
                     "\xD8\xA7\xD9\x84\xD8\xB7\xD8\xA8\xD9\x82\xD8\xA9", "e\xCC\x81"});
}

void undecodable_names(BuiltStage& stage) {
    name_all(stage, {"\xFF\xFE", "cut \xC3", "\xED\xA0\x80", "over\xC0\xAF"});
}

void long_names(BuiltStage& stage) {
    // Names that plug-ins get in buffers of 32 bytes, to the byte, with a character cut in two, and far beyond.
    name_all(stage, {std::string(30, 'a'), std::string(31, 'b'), std::string(32, 'c'),
                     std::string(29, 'd') + "\xC3\xA9\xC3\xA9", std::string(30, 'e') + "\xE2\x82\xAC",
                     std::string(5000, 'f')});
}

void same_names(BuiltStage& stage) {
    name_all(stage, {"Layer", "Layer", "Layer", "Main", "Main"});
}

void odd_times(BuiltStage& stage) {
    stage.add_layer("Reversed").load_timing(from_seconds(5), from_seconds(1), from_seconds(4), -1);
    stage.add_layer("Before").load_timing(from_seconds(-20), from_seconds(-15), from_seconds(3), 1);
    stage.add_layer("After").load_timing(from_seconds(50), from_seconds(60), from_seconds(3), 2);
    stage.add_layer("Short").load_timing({}, {}, {1}, 1);
    stage.add_layer("Fast").load_timing({}, {}, from_seconds(9), 0.01);
    stage.main().set_current_time(from_seconds(9.99));
    select_all(stage);
}

void deep_nesting(BuiltStage& stage) {
    constexpr int kDepth = 60;
    Comp* outer = &stage.main();
    for (int depth = 1; depth <= kDepth; ++depth) {
        Comp& inner = stage.add_comp("Level " + std::to_string(depth));
        outer->add_layer(inner);
        outer = &inner;
    }
    stage.add_layer("Innermost", outer);
    select_all(stage);
}

void parent_chain(BuiltStage& stage) {
    Layer* parent = nullptr;
    for (int i = 0; i < 200; ++i) {
        Layer& layer = stage.add_layer("Link " + std::to_string(i));
        layer.load_parent(parent);
        parent = &layer;
    }
    select_all(stage);
}

void many_keyframes(BuiltStage& stage) {
    Layer& layer = stage.add_layer("Keyed");
    std::vector<std::pair<Time, Value>> keys;
    for (int i = 0; i < 2000; ++i) keys.push_back({Time{i * 600}, {{static_cast<double>(i % 100), 0, 0, 0}}});
    layer.stream(kOpacity).add_keyframes(keys);
    layer.stream(kPosition).add_keyframes(keys);
    select_all(stage);
}

void many_effects(BuiltStage& stage) {
    Layer& layer = stage.add_layer("Tinted");
    const int key = stage.install_effect()->key;
    for (int i = 0; i < 100; ++i) layer.apply_effect(key);
    select_all(stage);
}

}  // namespace

std::vector<Situation> hostile_situations(const Answers& answers, Sources sources) {
    const auto situation = [&](const char* name, const char* sentence, Build build) {
        return built_situation(name, sentence, build, answers, sources);
    };
    return {
        situation("odd-names", "names hold quotes, line ends and format letters", odd_names),
        situation("foreign-names", "names are not ASCII", foreign_names),
        situation("undecodable-names", "names are no valid UTF-8", undecodable_names),
        situation("long-names", "names are as long as the buffers for them, and longer", long_names),
        situation("same-names", "layers and compositions share their names", same_names),
        situation("odd-times", "layers run backwards, lie outside the composition or last no time", odd_times),
        situation("deep-nesting", "compositions are nested 60 deep", deep_nesting),
        situation("parent-chain", "200 layers are each the parent of the next", parent_chain),
        situation("many-keyframes", "a layer has thousands of keyframes", many_keyframes),
        situation("many-effects", "a layer has 100 effects", many_effects),
    };
}

Situation many_layers(int count, const Answers& answers, Sources sources) {
    return {.name = "layers-" + std::to_string(count),
            .sentence = "a composition has " + std::to_string(count) + " layers",
            .build =
                [count, sources] {
                    auto stage = std::make_unique<BuiltStage>(sources);
                    for (int i = 0; i < count; ++i) stage->add_layer("Layer " + std::to_string(i));
                    stage->main().select(stage->main().stack().to_vector());
                    return stage;
                },
            .dialogs = [answers] { return accept_dialogs(answers); }};
}

}  // namespace validator
