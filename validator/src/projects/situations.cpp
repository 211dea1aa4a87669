// What people have every day, and nothing at all.
#include "projects/situations.h"

#include <stdexcept>

#include "projects/stages.h"

namespace validator {
namespace {

using namespace host::model;

using Build = void (*)(BuiltStage&);

struct Row {
    const char* name;
    const char* sentence;
    Build build;
};

Keyframe key_at(double seconds_in, const Value& value) {
    Keyframe key;
    key.time = from_seconds(seconds_in);
    key.value = value;
    return key;
}

void animate(Stream& stream, const Value& from, const Value& to) {
    stream.add_keyframes({{from_seconds(0), from}, {from_seconds(1), to}, {from_seconds(3), from}});
}

void nothing_open(BuiltStage& stage) {
    stage.add_layer("Layer");
    stage.project().open_comp(nullptr);
}

void empty_project(BuiltStage& stage) {
    stage.project().open_comp(nullptr);
    stage.project().delete_item(stage.main());
    stage.project().delete_item(stage.picture());
}

void no_layers(BuiltStage&) {}

void nothing_selected(BuiltStage& stage) {
    stage.add_layer("Below");
    stage.add_layer("Above");
}

void one_layer(BuiltStage& stage) {
    stage.add_layer("Below");
    stage.main().select({&stage.add_layer("Layer")});
}

void several_layers(BuiltStage& stage) {
    Layer& first = stage.add_layer("First");
    stage.add_layer("Second");
    Layer& third = stage.add_layer("Third");
    first.set_flag(kMotionBlur, true);
    stage.main().select({&third, &first});
}

void all_layers(BuiltStage& stage) {
    for (const char* name : {"One", "Two", "Three", "Four", "Five"}) stage.add_layer(name);
    stage.main().select(stage.main().stack().to_vector());
}

void layers_of_every_kind(BuiltStage& stage) {
    for (const LayerKind kind : {LayerKind::text, LayerKind::vector, LayerKind::camera, LayerKind::light})
        stage.main().load_layer(kind, nullptr).load_name("Kind " + std::to_string(static_cast<int>(kind)));
    stage.main().create_null("Null", {});
    stage.add_layer("Picture").set_flag(kIs3D, true);
    stage.main().select(stage.main().stack().to_vector());
}

void nested(BuiltStage& stage) {
    Comp& inner = stage.add_comp("Inner");
    Layer& third = stage.add_layer("Third", &inner);
    Layer& second = stage.add_layer("Second", &inner);
    stage.add_layer("First", &inner).load_parent(&third);
    second.stream(kPosition).set_expression("wiggle(2, 30)");
    stage.add_layer("Below");
    Layer& nest = stage.main().add_layer(inner);
    animate(nest.stream(kPosition), {{10, 20, 0, 0}}, {{300, 40, 0, 0}});
    nest.load_timing(from_seconds(0.5), from_seconds(1), from_seconds(4), 1);
    stage.main().select({&nest});
}

void parents_and_mattes(BuiltStage& stage) {
    Layer& child = stage.add_layer("Child");
    Layer& parent = stage.add_layer("Parent");
    Layer& matte = stage.add_layer("Matte");
    child.load_parent(&parent);
    parent.load_matte(&matte, MatteType::alpha);
    stage.main().select({&parent, &child});
}

void keyframes(BuiltStage& stage) {
    Layer& layer = stage.add_layer("Moving");
    Stream& position = layer.stream(kPosition);
    animate(position, {{10, 20, 0, 0}}, {{300, 40, 0, 0}});
    Keyframe middle = position.keyframe(1);
    middle.flags = kRoving | kSpatialContinuous;
    middle.in = middle.out = Interpolation::bezier;
    middle.tangent_in = {{-5, 0, 0, 0}};
    middle.tangent_out = {{5, 0, 0, 0}};
    position.set_keyframe(1, middle);
    animate(layer.stream(kRotation), {}, {{90, 0, 0, 0}});
    KeyframeList one;
    one.insert(0, key_at(2, {{40, 0, 0, 0}}));
    layer.stream(kOpacity).replace({}, std::move(one));
    stage.main().select({&layer});
}

void expressions(BuiltStage& stage) {
    Layer& first = stage.add_layer("First");
    Layer& second = stage.add_layer("Second");
    first.stream(kPosition).set_expression("wiggle(2, 30)");
    second.stream(kOpacity).set_expression("thisComp.layer('First').transform.opacity * random()");
    second.stream(kRotation).set_expression("thisComp.layer('nobody').transform.rotation");
    stage.main().select({&first, &second});
}

void effects(BuiltStage& stage) {
    Layer& layer = stage.add_layer("Tinted");
    const int key = stage.install_effect()->key;
    Effect& tint = layer.apply_effect(key);
    animate(tint.parameter(1), {}, {{100, 0, 0, 0}});
    tint.parameter(2).set_expression("[1, 0, 0, 1]");
    layer.apply_effect(key).set_flags(kEffectActive, 0);
    stage.main().select({&layer});
}

void locked_layers(BuiltStage& stage) {
    Layer& free = stage.add_layer("Free");
    Layer& locked = stage.add_layer("Locked");
    locked.set_flag(kLocked, true);
    stage.main().select({&locked, &free});
}

void unnamed_layers(BuiltStage& stage) {
    Layer& with_source = stage.add_layer("");
    Layer& nameless = stage.main().load_layer(LayerKind::vector, nullptr);
    stage.main().select({&with_source, &nameless});
}

void picture_in_panel(BuiltStage& stage) {
    stage.add_layer("Layer");
    stage.project().set_active_panel(ActivePanel::project);
    stage.project().select_items({&stage.picture()});
}

void composition_in_panel(BuiltStage& stage) {
    stage.main().select({&stage.add_layer("Layer")});
    stage.project().set_active_panel(ActivePanel::project);
    stage.project().select_items({&stage.main()});
}

void folders(BuiltStage& stage) {
    Item& outer = stage.project().add_folder("Outer");
    Item& inner = stage.project().add_folder("Inner", &outer);
    Comp& hidden = stage.project().add_comp("Hidden", &inner);
    hidden.load_size(100, 100);
    hidden.load_timing(30, from_seconds(2));
    stage.add_layer("Inside", &hidden);
    stage.main().select({&stage.add_layer("Layer")});
}

void two_compositions(BuiltStage& stage) {
    Comp& other = stage.add_comp("Other");
    stage.add_layer("Theirs", &other);
    stage.add_layer("Theirs too", &other);
    stage.add_layer("Below");
    stage.main().select({&stage.add_layer("Ours")});
}

constexpr Row kEmpty[] = {
    {"nothing-open", "no composition is open", nothing_open},
    {"empty-project", "the project is empty", empty_project},
    {"no-layers", "the composition has no layers", no_layers},
    {"nothing-selected", "no layer is selected", nothing_selected},
};

constexpr Row kTypical[] = {
    {"one-layer", "one layer is selected", one_layer},
    {"several-layers", "two of three layers are selected", several_layers},
    {"all-layers", "all layers are selected", all_layers},
    {"every-kind", "text, shapes, a camera, a light, a null and a picture are selected", layers_of_every_kind},
    {"nested", "a layer that shows another composition is selected", nested},
    {"parents-and-mattes", "the selected layers have a parent and a matte", parents_and_mattes},
    {"keyframes", "the selected layer has keyframes of several kinds", keyframes},
    {"expressions", "the selected layers have expressions, one of them broken", expressions},
    {"effects", "the selected layer has effects", effects},
    {"locked-layers", "a selected layer is locked", locked_layers},
    {"unnamed-layers", "the selected layers have no names of their own", unnamed_layers},
    {"picture-in-panel", "a picture is selected in the Project panel", picture_in_panel},
    {"composition-in-panel", "a composition is selected in the Project panel", composition_in_panel},
    {"folders", "the project has folders in folders", folders},
    {"two-compositions", "the project has a second composition with layers", two_compositions},
};

template <std::size_t N>
std::vector<Situation> all_of(const Row (&rows)[N], const Answers& answers, Sources sources) {
    std::vector<Situation> all;
    for (const Row& row : rows) all.push_back(built_situation(row.name, row.sentence, row.build, answers, sources));
    return all;
}

}  // namespace

const Situation& situation_named(const std::vector<Situation>& situations, const std::string& name) {
    for (const Situation& situation : situations)
        if (situation.name == name) return situation;
    throw std::out_of_range("no situation is named " + name);
}

std::vector<Situation> empty_situations(const Answers& answers) {
    return all_of(kEmpty, answers, Sources::pictures);
}

std::vector<Situation> typical_situations(const Answers& answers, Sources sources) {
    return all_of(kTypical, answers, sources);
}

}  // namespace validator
