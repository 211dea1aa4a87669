// Projects that are built in memory.
#include "projects/stages.h"

namespace validator {

using namespace host::model;

BuiltStage::BuiltStage(Sources sources)
    : main_(&add_comp("Main")), picture_(&project_.add_footage("Picture", {}, 200, 100)), source_(picture_) {
    if (sources == Sources::compositions) {
        Comp& shown = add_comp("Shown");
        shown.add_layer(*picture_).load_name("Lower");
        shown.add_layer(*picture_).load_name("Upper");
        source_ = &shown;
    }
    project_.set_active_panel(ActivePanel::timeline);
    project_.open_comp(main_);
}

Comp& BuiltStage::add_comp(const std::string& name) {
    Comp& comp = project_.add_comp(name);
    comp.load_size(640, 480);
    comp.load_timing(25, from_seconds(10));
    return comp;
}

Layer& BuiltStage::add_layer(const std::string& name, Comp* comp) {
    Layer& layer = comp != nullptr ? comp->add_layer(*picture_) : main_->add_layer(*source_);
    layer.load_name(name);
    return layer;
}

std::shared_ptr<const EffectKind> BuiltStage::install_effect() {
    EffectKind kind;
    kind.match_name = "Check Effect";
    kind.display_name = "Tint";
    kind.parameters = {
        {"Input", StreamType::layer_id, false, {}},
        {"Amount", StreamType::one_d, true, Value{{50, 0, 0, 0}}},
        {"Color", StreamType::color, true, Value{{1, 0, 0, 1}}},
        {"Map", StreamType::layer_id, true, {}},
        {"Group end", StreamType::no_data, true, {}},
    };
    return project_.install_effect(std::move(kind));
}

Situation built_situation(const char* name, const std::string& sentence, void (*build)(BuiltStage&),
                          const std::vector<Answer>& answers, Sources sources) {
    return {.name = name,
            .sentence = sentence + (sources == Sources::compositions ? " (the layers show compositions)" : ""),
            .build =
                [build, sources] {
                    auto stage = std::make_unique<BuiltStage>(sources);
                    build(*stage);
                    return stage;
                },
            .dialogs = [answers] { return accept_dialogs(answers); }};
}

}  // namespace validator
