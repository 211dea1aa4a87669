// The project of the world.
#include "world.h"

#include <cstring>

namespace host::suites {

namespace {

model::Comp& make_main(model::Project& project) {
    model::Comp& comp = project.add_comp("Main");
    comp.load_size(1000, 500);
    comp.load_timing(25, model::from_seconds(10));
    return comp;
}

model::Item& make_footage(model::Project& project) {
    model::FootageFacts facts;
    facts.is_solid = true;
    facts.color = {1, 0, 0, 1};
    return project.add_footage("Red", facts, 200, 100);
}

}  // namespace

World::World()
    : main(make_main(project)),
      footage(make_footage(project)),
      host(project, {.run_script =
                         [this](std::string_view text) {
                             scripts.emplace_back(text);
                             return next_script_outcome;
                         },
                     .report =
                         [this](std::string_view name, std::string_view text) {
                             reports.push_back(std::string(name) + ": " + std::string(text));
                         }}),
      plugin(host.add_plugin("Tester")) {
    project.open_comp(&main);
    project.undo().clear();
}

model::Layer& World::add_layer(const std::string& name) {
    model::Layer& layer = main.add_layer(footage);
    layer.rename(name);
    return layer;
}

AEGP_StreamRefH World::stream(model::Layer& layer, int number) {
    AEGP_StreamRefH made = nullptr;
    EXPECT_EQ(streams()->AEGP_GetNewLayerStream(plugin, host.handle(layer), number, &made), 0);
    return made;
}

AEGP_StreamRefH World::parameter(model::Layer& layer, int effect, int index) {
    AEGP_EffectRefH ref = nullptr;
    EXPECT_EQ(suite<AEGP_EffectSuite3>()->AEGP_GetLayerEffectByIndex(plugin, host.handle(layer), effect, &ref), 0);
    AEGP_StreamRefH made = nullptr;
    EXPECT_EQ(streams()->AEGP_GetNewEffectStreamByIndex(plugin, ref, index, &made), 0);
    EXPECT_EQ(suite<AEGP_EffectSuite3>()->AEGP_DisposeEffect(ref), 0);
    return made;
}

model::Keyframe World::key(std::int64_t ticks, model::Value value) {
    model::Keyframe keyframe;
    keyframe.time = {ticks};
    keyframe.value = value;
    return keyframe;
}

void World::set_keys(model::Stream& stream, std::vector<model::Keyframe> keyframes) {
    stream.replace(stream.data().static_value, std::move(keyframes));
}

std::string World::text_in(AEGP_MemHandle handle) {
    void* data = nullptr;
    EXPECT_EQ(memory()->AEGP_LockMemHandle(handle, &data), 0);
    if (!data) return {};
    std::string text = static_cast<const char*>(data);
    EXPECT_EQ(memory()->AEGP_UnlockMemHandle(handle), 0);
    EXPECT_EQ(memory()->AEGP_FreeMemHandle(handle), 0);
    return text;
}

std::u16string World::wide_text_in(AEGP_MemHandle handle) {
    void* data = nullptr;
    EXPECT_EQ(memory()->AEGP_LockMemHandle(handle, &data), 0);
    if (!data) return {};
    std::u16string text = static_cast<const char16_t*>(data);
    EXPECT_EQ(memory()->AEGP_UnlockMemHandle(handle), 0);
    EXPECT_EQ(memory()->AEGP_FreeMemHandle(handle), 0);
    return text;
}

std::string World::last_complaint() {
    const auto all = host.diagnostics();
    return all.empty() ? std::string() : all.back().sentence;
}

std::vector<std::string> World::layer_names(const model::Comp& comp) const {
    std::vector<std::string> names;
    for (int i = 0; i < comp.layer_count(); ++i) names.push_back(comp.layer_at(i).display_name());
    return names;
}

}  // namespace host::suites
