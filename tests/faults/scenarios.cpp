// The situations in which this plug-in is swept.
#include <utility>

#include "scenario.h"

namespace faults {
namespace {

using namespace host::model;
using host::model::testing::at;
using host::model::testing::install_tint;
using host::model::testing::key;
using host::model::testing::kTintNumber;
using host::model::testing::value;

// A composition "Nest" of three layers, and the layer of it, selected, above a layer named "Below".
struct Nest {
    explicit Nest(Scene& scene)
        : comp(scene.new_comp("Nest", 4)),
          third(scene.layer("Third", &comp)),
          second(scene.layer("Second", &comp)),
          first(scene.layer("First", &comp)),
          below(scene.layer("Below")),
          layer(scene.comp.add_layer(comp)) {
        scene.project.open_comp(&scene.comp);
        scene.comp.select({&layer});
    }

    Comp& comp;
    Layer& third;
    Layer& second;
    Layer& first;
    Layer& below;
    Layer& layer;
};

void plain(Scene& scene) {
    Nest(scene).first.load_name("Top");
}

void parented(Scene& scene) {
    const Nest nest(scene);
    nest.first.load_parent(&nest.third);
    nest.second.load_parent(&nest.first);
}

void animate(Stream& stream, const Value& from, const Value& to) {
    stream.add_keyframes({{at(0), from}, {at(1), to}, {at(2), from}});
}

void moving(Scene& scene) {
    const Nest nest(scene);
    Stream& position = nest.layer.stream(kPosition);
    animate(position, value(10, 20), value(300, 40));
    Keyframe middle = position.keyframe(1);
    middle.flags = kRoving | kSpatialContinuous;
    middle.in = middle.out = Interpolation::bezier;
    middle.tangent_in = value(-5, 0);
    middle.tangent_out = value(5, 0);
    position.set_keyframe(1, middle);
    animate(nest.layer.stream(kRotation), value(0), value(90));
    nest.layer.stream(kOpacity).set_static_value(value(60));
}

void three_d(Scene& scene) {
    const Nest nest(scene);
    nest.layer.set_flag(kIs3D, true);
    animate(nest.layer.stream(kScale), value(100, 100, 100), value(50, 60, 70));
    nest.layer.stream(kRotateX).set_static_value(value(30));
}

void shown_in_part(Scene& scene) {
    const Nest nest(scene);
    nest.layer.load_timing(at(0.5), at(1), at(2), 1);
    nest.second.load_timing(at(1.5), at(1.5), at(0.5), 1);
}

std::shared_ptr<const EffectKind> install_path(Project& project) {
    EffectKind kind;
    kind.match_name = "Test Path";
    kind.display_name = "Path";
    kind.parameters = {{"Input", StreamType::layer_id, false, {}},
                       {"Point", StreamType::two_d_spatial, true, value(1, 2)},
                       {"Fixed", StreamType::one_d, false, value(3)}};
    return project.install_effect(std::move(kind));
}

void with_effects(Scene& scene) {
    const Nest nest(scene);
    Effect& tint = nest.layer.apply_effect(install_tint(scene.project)->key);
    animate(tint.parameter(kTintNumber), value(0), value(100));
    tint.parameter(2).set_expression("[1, 0, 0, 1]");
    Effect& path = nest.layer.apply_effect(install_path(scene.project)->key);
    animate(path.parameter(1), value(0, 0), value(10, 20));
    path.set_flags(kEffectActive, 0);
}

void with_expressions(Scene& scene) {
    const Nest nest(scene);
    nest.first.stream(kPosition).set_expression("wiggle(2, 30)");
    nest.second.stream(kOpacity).set_expression("thisComp.layer('First').transform.opacity * random()");
    animate(nest.third.stream(kRotation), value(0), value(10));
}

void badly_named(Scene& scene) {
    const Nest nest(scene);
    nest.first.load_name("a name of many more bytes than those thirty-one that plug-ins see");
    nest.second.load_name("");
    nest.third.load_name("quo\"ted");
    nest.layer.load_name("Na\xC3\xAFve");
    nest.below.stream(kOpacity).set_expression("thisComp.layer('Below').transform.opacity");
    nest.second.stream(kOpacity).set_expression("thisComp.layer('quo\"ted').transform.opacity");
}

void used_twice(Scene& scene) {
    const Nest nest(scene);
    Layer& again = scene.comp.add_layer(nest.comp);
    scene.comp.select({&nest.layer, &again});
}

void used_elsewhere(Scene& scene) {
    const Nest nest(scene);
    Comp& other = scene.new_comp("Other");
    other.add_layer(nest.comp);
}

void used_elsewhere_among_others(Scene& scene) {
    used_elsewhere(scene);
    Comp& twin = scene.new_comp("Twin", 2);
    scene.layer("Only", &twin);
    Layer& second = scene.comp.add_layer(twin);
    std::vector<Layer*> selection = scene.comp.selected_layers();
    scene.comp.add_layer(twin);
    selection.push_back(&second);
    scene.comp.select(selection);
}

void several(Scene& scene) {
    const Nest nest(scene);
    Comp& twin = scene.new_comp("Twin", 2);
    scene.layer("Only", &twin);
    Layer& second = scene.comp.add_layer(twin);
    scene.comp.select({&second, &nest.below, &nest.layer});
}

void a_nest_before_another_layer(Scene& scene) {
    const Nest nest(scene);
    scene.comp.select({&nest.layer, &nest.below});
}

void an_empty_nest(Scene& scene) {
    Comp& empty = scene.new_comp("Empty");
    Layer& layer = scene.comp.add_layer(empty);
    scene.project.open_comp(&scene.comp);
    scene.comp.select({&layer});
}

void in_the_project_panel(Scene& scene) {
    plain(scene);
    scene.project.set_active_panel(ActivePanel::project);
    scene.project.select_items({&scene.comp});
}

void no_nest_selected(Scene& scene) {
    const Nest nest(scene);
    Layer& text = scene.comp.load_layer(LayerKind::text, nullptr);
    Layer& camera = scene.comp.load_layer(LayerKind::camera, nullptr);
    scene.comp.select({&nest.below, &text, &camera});
}

void nest_selected_last(Scene& scene) {
    const Nest nest(scene);
    Layer& text = scene.comp.load_layer(LayerKind::text, nullptr);
    scene.comp.select({&nest.below, &text, &nest.layer});
}

void nothing_selected(Scene& scene) {
    const Nest nest(scene);
    scene.comp.select({});
}

void nothing_open(Scene& scene) {
    plain(scene);
    scene.project.open_comp(nullptr);
}

void a_picture_is_active(Scene& scene) {
    plain(scene);
    scene.project.set_active_panel(ActivePanel::project);
    scene.project.select_items({&scene.picture});
}

void everything(Scene& scene) {
    Nest nest(scene);
    nest.first.load_parent(&nest.third);
    nest.layer.set_flag(kIs3D, true);
    nest.layer.load_timing(at(0.5), at(1), at(2), 1);
    animate(nest.layer.stream(kPosition), value(10, 20, 0), value(300, 40, 9));
    Effect& tint = nest.layer.apply_effect(install_tint(scene.project)->key);
    tint.parameter(kTintNumber).set_expression("time");
    nest.second.stream(kPosition).set_expression("wiggle(2, 30)");
    scene.comp.select({&nest.layer, &nest.below});
    Comp& twin = scene.new_comp("Twin", 2);
    scene.layer("Only", &twin);
    Layer& second = scene.comp.add_layer(twin);
    scene.comp.select({&nest.layer, &second});
}

using Build = void (*)(Scene&);

Scenario at_entry(const char* name, Build build) {
    Scenario scenario;
    scenario.name = name;
    scenario.door = VisitedDoor::entry_point;
    scenario.build = build;
    return scenario;
}

Scenario at_menu(const char* name, Build build) {
    Scenario scenario = at_entry(name, build);
    scenario.door = VisitedDoor::menu_update;
    return scenario;
}

Scenario at_command(const char* name, Build build, DialogChoices choices, HostRules rules = {}) {
    Scenario scenario = at_entry(name, build);
    scenario.door = VisitedDoor::command;
    scenario.choices = std::move(choices);
    scenario.rules = std::move(rules);
    return scenario;
}

Scenario at_command_with_nothing_open() {
    Scenario scenario = at_command("nothing_open", plain, {});
    // The item stays enabled from before.
    scenario.change_before_visit = [](Project& project) { project.open_comp(nullptr); };
    return scenario;
}

std::vector<Scenario> make_scenarios() {
    HostRules fussy_about_streams;
    fussy_about_streams.inapplicable_stream = InapplicableStream::error;
    HostRules fussy_about_values;
    fussy_about_values.strict_no_data = true;
    HostRules fussy_about_scripts;
    fussy_about_scripts.failing_script_is_an_error = true;
    HostRules empty_expressions;
    empty_expressions.missing_expression = MissingExpression::empty_text;

    std::vector<Scenario> all;
    all.push_back(at_entry("entry", plain));
    all.push_back(at_menu("menu_with_nothing_open", nothing_open));
    all.push_back(at_menu("menu_with_a_picture_active", a_picture_is_active));
    all.push_back(at_menu("menu_with_nothing_selected", nothing_selected));
    all.push_back(at_menu("menu_with_no_nest_selected", no_nest_selected));
    all.push_back(at_menu("menu_with_a_nest_selected_last", nest_selected_last));
    all.push_back(at_command("cancel", plain, {.cancel = true}));
    all.push_back(at_command("prefix_too_long", plain, {.prefix = std::string(51, 'p')}));
    all.push_back(at_command_with_nothing_open());
    all.push_back(at_command("discard", plain, {.copy_attributes = false}));
    all.push_back(
        at_command("discard_with_names", parented, {.copy_attributes = false, .prefix = "fx", .prepend_name = true}));
    all.push_back(at_command("still", plain, {}));
    all.push_back(at_command("parents", parented, {}));
    all.push_back(at_command("moving", moving, {}));
    all.push_back(at_command("three_d", three_d, {}));
    all.push_back(at_command("trims", shown_in_part, {}));
    all.push_back(at_command("effects", with_effects, {}));
    all.push_back(at_command("seeds", with_expressions, {.copy_attributes = false, .fix_random = true}));
    all.push_back(at_command("seeds_for_empty_expressions", with_expressions,
                             {.copy_attributes = false, .fix_random = true}, empty_expressions));
    all.push_back(at_command("names", badly_named, {.prepend_name = true}));
    all.push_back(at_command("typed_prefix", badly_named, {.prefix = "fx"}));
    all.push_back(at_command("source_deleted", plain, {.delete_source = true}));
    all.push_back(at_command("source_used_twice", used_twice, {.copy_attributes = false, .delete_source = true}));
    all.push_back(at_command("source_used_elsewhere", used_elsewhere, {.delete_source = true}));
    all.push_back(at_command("sources_used_elsewhere", used_elsewhere_among_others,
                             {.copy_attributes = false, .delete_source = true}));
    all.push_back(at_command("kept", plain, {.keep_in_comp = true}));
    all.push_back(at_command("several", several, {.copy_attributes = false}));
    all.push_back(at_command("another_layer_last", a_nest_before_another_layer, {.copy_attributes = false}));
    all.push_back(at_command("empty_nest", an_empty_nest, {.prepend_name = true}));
    all.push_back(at_command("project_panel", in_the_project_panel, {}));
    all.push_back(at_command("host_fussy_about_streams", moving, {.prepend_name = true}, fussy_about_streams));
    all.push_back(at_command("host_fussy_about_values", with_effects, {}, fussy_about_values));
    all.push_back(at_command("host_fussy_about_scripts", badly_named, {.prepend_name = true}, fussy_about_scripts));
    all.push_back(at_command("everything", everything,
                             {.delete_source = true, .prefix = "fx", .prepend_name = true, .fix_random = true}));
    return all;
}

}  // namespace

std::vector<host::scriptui::Action> DialogChoices::actions() const {
    using host::scriptui::Action;
    const auto click = [](const char* control) { return Action{Action::Kind::click, control, {}}; };
    if (cancel) return {click("Cancel")};
    std::vector<Action> actions;
    if (!copy_attributes) actions.push_back(click("Discard pre-comp attributes"));
    if (delete_source) actions.push_back(click("Delete source after exflating"));
    if (keep_in_comp) actions.push_back(click("Keep pre-comp in composition"));
    if (!prefix.empty()) actions.push_back({Action::Kind::type, "prefixInput", prefix});
    if (prepend_name) actions.push_back(click("Prepend pre-comp name to extracted layers"));
    if (fix_random) actions.push_back(click("Attempt to correct layers with randomized expressions"));
    actions.push_back(click("Ok"));
    return actions;
}

const std::vector<Scenario>& scenarios() {
    static const std::vector<Scenario> all = make_scenarios();
    return all;
}

}  // namespace faults
