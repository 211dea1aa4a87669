// Making one of everything.
#include "handle_pool.h"

namespace host::suites {

int install_test_effect(model::Project& project) {
    model::EffectKind kind;
    kind.match_name = "TEST Mixer";
    kind.display_name = "Mixer";
    kind.parameters = {{"Input", model::StreamType::layer_id, false, {}},
                       {"Amount", model::StreamType::one_d, true, {{7, 0, 0, 0}}},
                       {"Point", model::StreamType::two_d_spatial, true, {{10, 20, 0, 0}}},
                       {"Group", model::StreamType::no_data, false, {}},
                       {"Colour", model::StreamType::color, true, {{0.25, 0.5, 0.75, 1}}},
                       {"Other", model::StreamType::layer_id, true, {}}};
    return project.install_effect(kind)->key;
}

HandlePool::HandlePool(World& world) {
    const int key = install_test_effect(world.project);
    model::Layer& pool_layer = world.add_layer("Pool");
    project = world.host.project_handle();
    item = world.host.handle(world.footage);
    comp = world.host.comp_handle(world.main);
    layer = world.host.handle(pool_layer);
    const AEGP_ColorVal white{1, 1, 1, 1};
    const AEGP_PluginID id = world.plugin;
    EXPECT_EQ(world.suite<AEGP_FootageSuite5>()->AEGP_NewSolidFootage("Solid", 10, 10, &white, &footage), 0);
    EXPECT_EQ(world.collections()->AEGP_NewCollection(id, &collection), 0);
    EXPECT_EQ(world.suite<AEGP_EffectSuite3>()->AEGP_ApplyEffect(id, layer, key, &effect), 0);
    EXPECT_EQ(world.memory()->AEGP_NewMemHandle(id, "pool", 64, AEGP_MemFlag_CLEAR, &memory), 0);
    stream = world.stream(pool_layer, AEGP_LayerStream_POSITION);
    EXPECT_EQ(world.keyframes()->AEGP_StartAddKeyframes(stream, &batch), 0);
}

std::vector<void*> HandlePool::all() const {
    return {project, item, comp, layer, footage, collection, stream, effect, memory, batch};
}

}  // namespace host::suites
