// A small project to test with.
#include "scene.h"

namespace host::model::testing {

Scene::Scene(HostRules rules)
    : project(std::move(rules)), picture(project.add_footage("Picture", {}, 200, 100)), comp(new_comp("Main")) {
    project.undo().clear();
}

Layer& Scene::layer(const std::string& name, Comp* in) {
    Layer& layer = (in != nullptr ? *in : comp).add_layer(picture);
    layer.load_name(name);
    project.undo().clear();
    return layer;
}

Comp& Scene::new_comp(const std::string& name, double seconds) {
    Comp& made = project.add_comp(name);
    made.load_size(640, 480);
    made.load_timing(25, from_seconds(seconds));
    return made;
}

Time at(double seconds) {
    return from_seconds(seconds);
}

Value value(double a, double b, double c, double d) {
    return {{a, b, c, d}};
}

Keyframe key(double seconds, const Value& value) {
    Keyframe keyframe;
    keyframe.time = at(seconds);
    keyframe.value = value;
    return keyframe;
}

std::vector<std::string> names(const Comp& comp) {
    return names(comp.stack().to_vector());
}

std::vector<std::string> names(const std::vector<Layer*>& layers) {
    std::vector<std::string> all;
    for (const Layer* layer : layers) all.push_back(layer->display_name());
    return all;
}

std::shared_ptr<const EffectKind> install_tint(Project& project) {
    EffectKind kind;
    kind.match_name = "Test Tint";
    kind.display_name = "Tint";
    kind.parameters = {
        {"Input", StreamType::layer_id, false, {}},
        {"Amount", StreamType::one_d, true, value(50)},
        {"Color", StreamType::color, true, value(1, 0, 0, 1)},
        {"Map", StreamType::layer_id, true, {}},
        {"Group end", StreamType::no_data, true, {}},
    };
    return project.install_effect(std::move(kind));
}

}  // namespace host::model::testing
