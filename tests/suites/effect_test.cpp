// Effects on layers.
#include <array>

#include "handle_pool.h"

namespace host::suites {

class Effects : public World {
  public:
    const AEGP_EffectSuite3* effects = suite<AEGP_EffectSuite3>();
    const int key = install_test_effect(project);
    model::Layer& layer = add_layer("A");
    const AEGP_LayerH handle = host.handle(layer);

    AEGP_EffectRefH apply() {
        AEGP_EffectRefH made = nullptr;
        EXPECT_EQ(effects->AEGP_ApplyEffect(plugin, handle, key, &made), 0);
        return made;
    }
    A_long count(AEGP_LayerH of) {
        A_long number = -1;
        EXPECT_EQ(effects->AEGP_GetLayerNumEffects(of, &number), 0);
        return number;
    }
    AEGP_EffectFlags flags(AEGP_EffectRefH effect) {
        AEGP_EffectFlags all = -1;
        EXPECT_EQ(effects->AEGP_GetEffectFlags(effect, &all), 0);
        return all;
    }
};

TEST_F(Effects, are_appended_with_the_next_free_name) {
    EXPECT_EQ(count(handle), 0);
    apply();
    apply();
    apply();
    ASSERT_EQ(count(handle), 3);
    EXPECT_EQ(layer.effect(0).name(), "Mixer");
    EXPECT_EQ(layer.effect(1).name(), "Mixer 2");
    EXPECT_EQ(layer.effect(2).name(), "Mixer 3");
}

TEST_F(Effects, start_active_with_their_defaults) {
    EXPECT_EQ(flags(apply()), AEGP_EffectFlags_ACTIVE);
    EXPECT_EQ(layer.effect(0).parameter(1).data().static_value.n[0], 7);
}

TEST_F(Effects, share_the_key_of_their_kind) {
    const AEGP_EffectRefH first = apply();
    const AEGP_EffectRefH second = apply();
    for (const AEGP_EffectRefH effect : {first, second}) {
        AEGP_InstalledEffectKey found = 0;
        EXPECT_EQ(effects->AEGP_GetInstalledKeyFromLayerEffect(effect, &found), 0);
        EXPECT_EQ(found, key);
    }
}

TEST_F(Effects, are_found_by_index_from_the_top) {
    apply();
    apply();
    layer.effect(1).set_flags(~0U, model::kEffectMissing);
    AEGP_EffectRefH found = nullptr;
    ASSERT_EQ(effects->AEGP_GetLayerEffectByIndex(plugin, handle, 1, &found), 0);
    EXPECT_EQ(flags(found), AEGP_EffectFlags_MISSING);
    EXPECT_EQ(effects->AEGP_DisposeEffect(found), 0);
    EXPECT_EQ(effects->AEGP_DisposeEffect(found), kBadArgument);
    for (const A_long wrong : {-1, 2}) {
        AEGP_EffectRefH untouched = nullptr;
        EXPECT_EQ(effects->AEGP_GetLayerEffectByIndex(plugin, handle, wrong, &untouched), kBadArgument);
        EXPECT_EQ(untouched, nullptr);
    }
}

TEST_F(Effects, change_the_masked_flags_only) {
    const AEGP_EffectRefH effect = apply();
    EXPECT_EQ(effects->AEGP_SetEffectFlags(effect, AEGP_EffectFlags_AUDIO_TOO, ~0), 0);
    EXPECT_EQ(flags(effect), AEGP_EffectFlags_ACTIVE | AEGP_EffectFlags_AUDIO_TOO);
    EXPECT_EQ(effects->AEGP_SetEffectFlags(effect, AEGP_EffectFlags_ACTIVE, 0), 0);
    EXPECT_EQ(flags(effect), AEGP_EffectFlags_AUDIO_TOO);
    project.undo().undo();
    EXPECT_EQ(flags(effect), AEGP_EffectFlags_ACTIVE | AEGP_EffectFlags_AUDIO_TOO);
}

TEST_F(Effects, do_not_go_on_cameras_and_lights) {
    for (const model::LayerKind kind : {model::LayerKind::camera, model::LayerKind::light}) {
        const AEGP_LayerH bare = host.handle(main.load_layer(kind, nullptr));
        EXPECT_EQ(count(bare), 0);
        AEGP_EffectRefH made = nullptr;
        EXPECT_EQ(effects->AEGP_ApplyEffect(plugin, bare, key, &made), kBadArgument);
        EXPECT_EQ(made, nullptr);
        EXPECT_EQ(count(bare), 0);
    }
}

TEST_F(Effects, of_unknown_kind_cannot_be_applied) {
    AEGP_EffectRefH made = nullptr;
    for (const int unknown : {AEGP_InstalledEffectKey_NONE, -1, key + 1})
        EXPECT_EQ(effects->AEGP_ApplyEffect(plugin, handle, unknown, &made), kBadArgument);
    EXPECT_EQ(effects->AEGP_ApplyEffect(plugin, handle, key, nullptr), kBadArgument);
    EXPECT_EQ(count(handle), 0);
}

TEST_F(Effects, are_dead_while_their_layer_is) {
    const AEGP_EffectRefH effect = apply();
    ASSERT_EQ(layers()->AEGP_DeleteLayer(handle), 0);
    AEGP_EffectFlags all = -1;
    EXPECT_EQ(effects->AEGP_GetEffectFlags(effect, &all), kBadArgument);
    EXPECT_EQ(last_complaint(), "The effect or its layer was deleted.");
    project.undo().undo();
    EXPECT_EQ(flags(effect), AEGP_EffectFlags_ACTIVE);
}

TEST_F(Effects, taken_back_are_dead_to_references_and_streams) {
    const AEGP_EffectRefH effect = apply();
    const AEGP_StreamRefH amount = parameter(layer, 0, 1);
    project.undo().undo();
    EXPECT_EQ(count(handle), 0);
    AEGP_EffectFlags all = -1;
    EXPECT_EQ(effects->AEGP_GetEffectFlags(effect, &all), kBadArgument);
    AEGP_StreamType type = -1;
    EXPECT_EQ(streams()->AEGP_GetStreamType(amount, &type), kBadArgument);
    EXPECT_EQ(effects->AEGP_DisposeEffect(effect), 0);
    EXPECT_EQ(streams()->AEGP_DisposeStream(amount), 0);
}

TEST_F(Effects, have_as_many_streams_as_parameters) {
    const AEGP_EffectRefH effect = apply();
    A_long number = -1;
    EXPECT_EQ(streams()->AEGP_GetEffectNumParamStreams(effect, &number), 0);
    ASSERT_EQ(number, 6);
    const std::array types = {AEGP_StreamType_LAYER_ID, AEGP_StreamType_OneD,  AEGP_StreamType_TwoD_SPATIAL,
                              AEGP_StreamType_NO_DATA,  AEGP_StreamType_COLOR, AEGP_StreamType_LAYER_ID};
    for (int i = 0; i < 6; ++i) {
        AEGP_StreamType type = -1;
        EXPECT_EQ(streams()->AEGP_GetStreamType(parameter(layer, 0, i), &type), 0);
        EXPECT_EQ(type, types[static_cast<std::size_t>(i)]);
    }
    for (const int wrong : {-1, 6}) {
        AEGP_StreamRefH made = nullptr;
        EXPECT_EQ(streams()->AEGP_GetNewEffectStreamByIndex(plugin, effect, wrong, &made), kBadArgument);
        EXPECT_EQ(made, nullptr);
    }
}

}  // namespace host::suites
