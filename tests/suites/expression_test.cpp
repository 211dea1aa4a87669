// Expressions of streams: 8-bit text, a switch, broken ones.
#include "handle_pool.h"

namespace host::suites {

class Expressions : public World {
  public:
    model::Layer& layer = add_layer("A");
    const AEGP_StreamRefH rotation = stream(layer, AEGP_LayerStream_ROTATION);

    A_Err set(AEGP_StreamRefH ref, const A_char* text) { return streams()->AEGP_SetExpression(plugin, ref, text); }
    AEGP_MemHandle get(AEGP_StreamRefH ref) {
        AEGP_MemHandle text = nullptr;
        EXPECT_EQ(streams()->AEGP_GetExpression(plugin, ref, &text), 0);
        return text;
    }
    bool state(AEGP_StreamRefH ref) {
        A_Boolean enabled = 9;
        EXPECT_EQ(streams()->AEGP_GetExpressionState(plugin, ref, &enabled), 0);
        return enabled != 0;
    }
    bool varies(AEGP_StreamRefH ref) {
        A_Boolean varying = 9;
        EXPECT_EQ(streams()->AEGP_IsStreamTimevarying(ref, &varying), 0);
        return varying != 0;
    }
    A_Err switch_to(AEGP_StreamRefH ref, bool on) { return streams()->AEGP_SetExpressionState(plugin, ref, on); }
};

TEST_F(Expressions, that_are_missing_are_a_null_handle) {
    AEGP_MemHandle text = reinterpret_cast<AEGP_MemHandle>(&layer);
    EXPECT_EQ(streams()->AEGP_GetExpression(plugin, rotation, &text), 0);
    EXPECT_EQ(text, nullptr);
}

TEST_F(Expressions, that_are_missing_are_an_empty_text_if_the_rules_say_so) {
    project.rules().missing_expression = model::MissingExpression::empty_text;
    EXPECT_EQ(text_in(get(rotation)), "");
}

TEST_F(Expressions, come_back_byte_for_byte) {
    const std::string text = "time * 2; // \xE9 is not UTF-8, \xC3\xA9 is\r\n";
    EXPECT_EQ(set(rotation, text.c_str()), 0);
    EXPECT_EQ(text_in(get(rotation)), text);
}

TEST_F(Expressions, are_enabled_by_setting_them_and_make_the_stream_vary) {
    EXPECT_FALSE(state(rotation));
    EXPECT_FALSE(varies(rotation));
    EXPECT_EQ(set(rotation, "time"), 0);
    EXPECT_TRUE(state(rotation));
    EXPECT_TRUE(varies(rotation));
}

TEST_F(Expressions, that_are_disabled_keep_their_text_and_do_not_count) {
    EXPECT_EQ(set(rotation, "time"), 0);
    EXPECT_EQ(switch_to(rotation, false), 0);
    EXPECT_FALSE(state(rotation));
    EXPECT_FALSE(varies(rotation));
    EXPECT_EQ(text_in(get(rotation)), "time");
    EXPECT_EQ(switch_to(rotation, true), 0);
    EXPECT_TRUE(state(rotation));
}

TEST_F(Expressions, that_are_missing_cannot_be_enabled) {
    EXPECT_EQ(switch_to(rotation, true), 0);
    EXPECT_FALSE(state(rotation));
    EXPECT_EQ(switch_to(rotation, false), 0);
    EXPECT_FALSE(state(rotation));
}

TEST_F(Expressions, are_removed_by_an_empty_text) {
    EXPECT_EQ(set(rotation, "time"), 0);
    EXPECT_EQ(set(rotation, ""), 0);
    EXPECT_EQ(get(rotation), nullptr);
    EXPECT_FALSE(state(rotation));
}

TEST_F(Expressions, that_name_a_missing_layer_are_kept_and_do_not_work) {
    EXPECT_EQ(set(rotation, "thisComp.layer(\"Nobody\").rotation"), 0);
    EXPECT_FALSE(state(rotation));
    EXPECT_FALSE(varies(rotation));
    EXPECT_EQ(text_in(get(rotation)), "thisComp.layer(\"Nobody\").rotation");
    add_layer("Nobody");
    EXPECT_TRUE(state(rotation));
}

TEST_F(Expressions, need_a_stream_that_can_vary) {
    install_test_effect(project);
    layer.apply_effect(1);
    for (const int constant : {0, 3}) {
        const AEGP_StreamRefH ref = parameter(layer, 0, constant);
        EXPECT_EQ(set(ref, "1"), kNotAllowed);
        EXPECT_EQ(get(ref), nullptr);
    }
    EXPECT_EQ(set(parameter(layer, 0, 1), "1"), 0);
    EXPECT_EQ(set(rotation, nullptr), kBadArgument);
}

TEST_F(Expressions, are_not_evaluated_by_this_host) {
    AEGP_StreamValue2 value{};
    EXPECT_EQ(set(rotation, "time"), 0);
    EXPECT_EQ(streams()->AEGP_GetNewStreamValue(plugin, rotation, 1, &kZero, false, &value), kNotImplemented);
    EXPECT_EQ(streams()->AEGP_GetNewStreamValue(plugin, rotation, 1, &kZero, true, &value), 0);
    EXPECT_EQ(streams()->AEGP_DisposeStreamValue(&value), 0);
    EXPECT_EQ(switch_to(rotation, false), 0);
    EXPECT_EQ(streams()->AEGP_GetNewStreamValue(plugin, rotation, 1, &kZero, false, &value), 0);
}

TEST_F(Expressions, follow_the_name_of_the_layer_they_mean) {
    model::Layer& named = add_layer("Old");
    EXPECT_EQ(set(rotation, "thisComp.layer('Old').rotation"), 0);
    EXPECT_EQ(layers()->AEGP_SetLayerName(host.handle(named), "New"), 0);
    EXPECT_EQ(text_in(get(rotation)), "thisComp.layer('New').rotation");
    EXPECT_TRUE(state(rotation));
}

}  // namespace host::suites
