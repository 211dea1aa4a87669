// Many keyframes at once.
#include "handle_pool.h"

namespace host::suites {

using testing::ElementsAre;

class Batches : public World {
  public:
    const AEGP_KeyframeSuite4* keys = keyframes();
    model::Layer& layer = add_layer("A");
    model::Stream& rotation = layer.stream(model::kRotation);
    const AEGP_StreamRefH ref = stream(layer, AEGP_LayerStream_ROTATION);

    Batches() { project.undo().clear(); }

    AEGP_AddKeyframesInfoH start(AEGP_StreamRefH on) {
        AEGP_AddKeyframesInfoH batch = nullptr;
        EXPECT_EQ(keys->AEGP_StartAddKeyframes(on, &batch), 0);
        return batch;
    }
    A_long add(AEGP_AddKeyframesInfoH batch, A_long ticks, AEGP_LTimeMode mode = AEGP_LTimeMode_CompTime) {
        const A_Time time{ticks, 120'000};
        A_long place = -1;
        EXPECT_EQ(keys->AEGP_AddKeyframes(batch, mode, &time, &place), 0);
        return place;
    }
    A_Err set(AEGP_AddKeyframesInfoH batch, A_long place, double value) {
        AEGP_StreamValue2 record{};
        record.val.one_d = value;
        return keys->AEGP_SetAddKeyframe(batch, place, &record);
    }
    std::vector<std::pair<std::int64_t, double>> all() {
        std::vector<std::pair<std::int64_t, double>> pairs;
        for (const model::Keyframe& k : rotation.data().keyframes) pairs.emplace_back(k.time.ticks, k.value.n[0]);
        return pairs;
    }
};

using Pair = std::pair<std::int64_t, double>;

TEST_F(Batches, change_nothing_before_their_end) {
    const AEGP_AddKeyframesInfoH batch = start(ref);
    EXPECT_EQ(add(batch, 500), 0);
    EXPECT_EQ(add(batch, 100), 1);
    EXPECT_EQ(set(batch, 0, 5), 0);
    EXPECT_EQ(set(batch, 1, 1), 0);
    EXPECT_THAT(all(), ElementsAre());
    EXPECT_EQ(keys->AEGP_EndAddKeyframes(true, batch), 0);
    EXPECT_THAT(all(), ElementsAre(Pair(100, 1), Pair(500, 5)));
}

TEST_F(Batches, are_one_undo_step) {
    const AEGP_AddKeyframesInfoH batch = start(ref);
    for (const A_long ticks : {100, 200, 300}) add(batch, ticks);
    EXPECT_EQ(keys->AEGP_EndAddKeyframes(true, batch), 0);
    EXPECT_EQ(all().size(), 3U);
    EXPECT_EQ(project.undo().step_names().size(), 1U);
    project.undo().undo();
    EXPECT_THAT(all(), ElementsAre());
}

TEST_F(Batches, can_be_thrown_away) {
    const AEGP_AddKeyframesInfoH batch = start(ref);
    add(batch, 100);
    EXPECT_EQ(keys->AEGP_EndAddKeyframes(false, batch), 0);
    EXPECT_THAT(all(), ElementsAre());
    EXPECT_FALSE(project.undo().can_undo());
    EXPECT_EQ(keys->AEGP_EndAddKeyframes(true, batch), kBadArgument);
}

TEST_F(Batches, may_be_empty) {
    EXPECT_EQ(keys->AEGP_EndAddKeyframes(true, start(ref)), 0);
    EXPECT_FALSE(project.undo().can_undo());
    EXPECT_EQ(host.ledger().handed_out.at(HandleKind::keyframe_batch), 1U);
}

TEST_F(Batches, replace_the_value_at_a_time_already_keyed_and_nothing_else) {
    model::Keyframe old = key(100, {{1, 0, 0, 0}});
    old.out = model::Interpolation::hold;
    set_keys(rotation, {old});
    const AEGP_AddKeyframesInfoH batch = start(ref);
    EXPECT_EQ(set(batch, add(batch, 100), 9), 0);
    EXPECT_EQ(keys->AEGP_EndAddKeyframes(true, batch), 0);
    EXPECT_THAT(all(), ElementsAre(Pair(100, 9)));
    EXPECT_EQ(rotation.keyframe(0).out, model::Interpolation::hold);
}

TEST_F(Batches, give_times_without_a_value_the_one_the_stream_has_there) {
    set_keys(rotation, {key(0, {{0, 0, 0, 0}}), key(1000, {{10, 0, 0, 0}})});
    const AEGP_AddKeyframesInfoH batch = start(ref);
    add(batch, 500);
    EXPECT_EQ(keys->AEGP_EndAddKeyframes(true, batch), 0);
    EXPECT_THAT(all(), ElementsAre(Pair(0, 0), Pair(500, 5), Pair(1000, 10)));
}

TEST_F(Batches, take_times_of_both_clocks) {
    layer.set_offset({1000});
    const AEGP_AddKeyframesInfoH batch = start(ref);
    add(batch, 1500, AEGP_LTimeMode_CompTime);
    add(batch, 700, AEGP_LTimeMode_LayerTime);
    EXPECT_EQ(keys->AEGP_EndAddKeyframes(true, batch), 0);
    EXPECT_THAT(all(), ElementsAre(Pair(500, 0), Pair(700, 0)));
}

TEST_F(Batches, refuse_places_they_do_not_have_and_values_of_another_type) {
    const AEGP_AddKeyframesInfoH batch = start(ref);
    add(batch, 100);
    EXPECT_EQ(set(batch, -1, 0), kBadArgument);
    EXPECT_EQ(set(batch, 1, 0), kBadArgument);
    AEGP_StreamValue2 position{};
    const AEGP_StreamRefH other = stream(layer, AEGP_LayerStream_POSITION);
    ASSERT_EQ(streams()->AEGP_GetNewStreamValue(plugin, other, 0, &kZero, true, &position), 0);
    EXPECT_EQ(keys->AEGP_SetAddKeyframe(batch, 0, &position), kBadArgument);
    EXPECT_EQ(keys->AEGP_SetAddKeyframe(batch, 0, nullptr), kBadArgument);
    const A_Time no_time{5, 0};
    A_long place = -1;
    EXPECT_EQ(keys->AEGP_AddKeyframes(batch, 0, &no_time, &place), kBadArgument);
    EXPECT_EQ(place, -1);
}

TEST_F(Batches, go_to_streams_that_can_have_keyframes) {
    install_test_effect(project);
    layer.apply_effect(1);
    AEGP_AddKeyframesInfoH batch = nullptr;
    EXPECT_EQ(keys->AEGP_StartAddKeyframes(parameter(layer, 0, 0), &batch), kNotAllowed);
    EXPECT_EQ(batch, nullptr);
}

TEST_F(Batches, outlive_the_reference_but_not_the_stream) {
    const AEGP_AddKeyframesInfoH batch = start(ref);
    EXPECT_EQ(streams()->AEGP_DisposeStream(ref), 0);
    add(batch, 100);
    ASSERT_EQ(layers()->AEGP_DeleteLayer(host.handle(layer)), 0);
    EXPECT_EQ(set(batch, 0, 1), kBadArgument);
    EXPECT_EQ(last_complaint(), "What the stream belongs to was deleted.");
    EXPECT_EQ(keys->AEGP_EndAddKeyframes(true, batch), kBadArgument);
    project.undo().undo();
    EXPECT_THAT(all(), ElementsAre());
}

TEST_F(Batches, do_not_go_to_a_separated_position_unless_the_rules_let_it_have_keyframes) {
    layer.load_stream(model::kPosition, std::make_shared<model::StreamData>(), true);
    const AEGP_StreamRefH separated = stream(layer, AEGP_LayerStream_POSITION);
    AEGP_AddKeyframesInfoH batch = nullptr;
    EXPECT_EQ(keys->AEGP_StartAddKeyframes(separated, &batch), kNotAllowed);
    project.rules().separated_position = model::SeparatedPosition::leader_is_combined;
    EXPECT_EQ(keys->AEGP_StartAddKeyframes(separated, &batch), 0);
}

}  // namespace host::suites
