// Calls as lines of text.
#include "suites/tracer.h"

#include "handle_pool.h"
#include "suites/fault_injector.h"

namespace host::suites {

using testing::ElementsAre;

class Traces : public World {
  public:
    Traces() { host.add_observer(tracer); }
    ~Traces() override { host.remove_observer(tracer); }

    const std::string& line() {
        static const std::string none;
        return tracer.lines().empty() ? none : tracer.lines().back();
    }

    model::Layer& layer = add_layer("Sky");
    const std::string layer_text = "layer " + std::to_string(layer.id()) + " \"Sky\"";
    Tracer tracer;
};

TEST_F(Traces, show_arguments_result_and_outputs) {
    A_long index = -1;
    EXPECT_EQ(layers()->AEGP_GetLayerIndex(host.handle(layer), &index), 0);
    EXPECT_EQ(line(), "LayerSuite5.AEGP_GetLayerIndex(" + layer_text + ") = 0 -> 0");
    A_Boolean is_3d = 0;
    EXPECT_EQ(layers()->AEGP_IsLayer3D(host.handle(layer), &is_3d), 0);
    EXPECT_EQ(line(), "LayerSuite5.AEGP_IsLayer3D(" + layer_text + ") = 0 -> false");
    AEGP_LayerH parent = nullptr;
    EXPECT_EQ(layers()->AEGP_GetLayerParent(host.handle(layer), &parent), 0);
    EXPECT_EQ(line(), "LayerSuite5.AEGP_GetLayerParent(" + layer_text + ") = 0 -> null");
}

TEST_F(Traces, say_why_a_call_failed) {
    EXPECT_EQ(layers()->AEGP_DeleteLayer(nullptr), kBadArgument);
    EXPECT_EQ(line(), "LayerSuite5.AEGP_DeleteLayer(null) = 3: The layer handle is null.");
}

TEST_F(Traces, name_what_a_call_deletes) {
    EXPECT_EQ(layers()->AEGP_DeleteLayer(host.handle(layer)), 0);
    EXPECT_EQ(line(), "LayerSuite5.AEGP_DeleteLayer(" + layer_text + ") = 0");
    EXPECT_EQ(layers()->AEGP_DeleteLayer(host.handle(layer)), kBadArgument);
    EXPECT_THAT(line(), testing::StartsWith("LayerSuite5.AEGP_DeleteLayer(dead layer "));
}

TEST_F(Traces, show_texts_of_either_width) {
    EXPECT_EQ(layers()->AEGP_SetLayerName(host.handle(layer), "a\"b\n\x01"), 0);
    EXPECT_EQ(line(), "LayerSuite5.AEGP_SetLayerName(" + layer_text + ", \"a\\\"b\\n\\x01\") = 0");
    const A_UTF16Char wide[] = {0xE9, 0};
    EXPECT_EQ(suite<AEGP_LayerSuite6>()->AEGP_SetLayerName(host.handle(layer), wide), 0);
    EXPECT_THAT(line(), testing::EndsWith(", \"\xC3\xA9\") = 0"));
    A_char own[AEGP_MAX_LAYER_NAME_SIZE];
    EXPECT_EQ(layers()->AEGP_GetLayerName(host.handle(layer), own, nullptr), 0);
    EXPECT_THAT(line(), testing::EndsWith(") = 0 -> \"\xC3\xA9\", null"));
}

TEST_F(Traces, cut_long_texts) {
    const std::string text(500, 'x');
    EXPECT_EQ(suite<AEGP_UtilitySuite6>()->AEGP_StartUndoGroup(text.c_str()), 0);
    EXPECT_EQ(line(), "UtilitySuite6.AEGP_StartUndoGroup(\"" + std::string(200, 'x') + "\"...) = 0");
    EXPECT_EQ(suite<AEGP_UtilitySuite6>()->AEGP_EndUndoGroup(), 0);
    EXPECT_EQ(line(), "UtilitySuite6.AEGP_EndUndoGroup() = 0");
}

TEST_F(Traces, show_times_values_and_eases) {
    const AEGP_StreamRefH position = stream(layer, AEGP_LayerStream_POSITION);
    AEGP_StreamValue2 value{};
    const A_Time time{12, 24};
    EXPECT_EQ(streams()->AEGP_GetNewStreamValue(plugin, position, 1, &time, true, &value), 0);
    EXPECT_THAT(line(), testing::MatchesRegex("StreamSuite4.AEGP_GetNewStreamValue\\(1, stream [0-9]+ "
                                              "\\(\"Position\" of layer [0-9]+\\), 1, 12/24, 1\\) = 0 -> "
                                              "\\(500, 250, 0\\)"));
    EXPECT_EQ(streams()->AEGP_SetStreamValue(plugin, position, &value), 0);
    EXPECT_THAT(line(), testing::EndsWith(", (500, 250, 0)) = 0"));
    EXPECT_EQ(streams()->AEGP_DisposeStreamValue(&value), 0);
    EXPECT_EQ(line(), "StreamSuite4.AEGP_DisposeStreamValue((500, 250, 0)) = 0");
    A_long index = -1;
    EXPECT_EQ(keyframes()->AEGP_InsertKeyframe(position, 1, &time, &index), 0);
    const AEGP_KeyframeEase ease{1.5, 0.25};
    EXPECT_EQ(keyframes()->AEGP_SetKeyframeTemporalEase(position, 0, 0, &ease, nullptr), 0);
    EXPECT_THAT(line(), testing::EndsWith(", 0, 0, speed 1.5 influence 0.25, null) = 0"));
}

TEST_F(Traces, show_records_of_every_kind) {
    AEGP_CollectionItemV2 item{};
    item.type = AEGP_CollectionItemType_LAYER;
    item.u.layer.layerH = host.handle(layer);
    AEGP_Collection2H collection = nullptr;
    EXPECT_EQ(collections()->AEGP_NewCollection(plugin, &collection), 0);
    EXPECT_THAT(line(), testing::MatchesRegex("CollectionSuite2.AEGP_NewCollection\\(1\\) = 0 -> "
                                              "collection [0-9]+ \\(0 items\\)"));
    EXPECT_EQ(collections()->AEGP_CollectionPushBack(collection, &item), 0);
    EXPECT_THAT(line(), testing::EndsWith("(0 items), " + layer_text + ") = 0"));
    A_Ratio aspect{};
    EXPECT_EQ(suite<AEGP_ItemSuite8>()->AEGP_GetItemPixelAspectRatio(host.handle(footage), &aspect), 0);
    EXPECT_THAT(line(), testing::EndsWith(" \"Red\") = 0 -> 1:1"));
    AEGP_FootageInterp interpretation{};
    EXPECT_EQ(suite<AEGP_FootageSuite5>()->AEGP_GetFootageInterpretation(host.handle(footage), false, &interpretation),
              0);
    EXPECT_THAT(line(), testing::EndsWith(", 0) = 0 -> pixel aspect 1:1"));
    const AEGP_ColorVal colour{1, 0.5, 0, 0.25};
    AEGP_FootageH solid = nullptr;
    EXPECT_EQ(suite<AEGP_FootageSuite5>()->AEGP_NewSolidFootage("S", 4, 2, &colour, &solid), 0);
    EXPECT_THAT(line(), testing::HasSubstr("(\"S\", 4, 2, rgba(0.5, 0, 0.25, 1)) = 0 -> footage "));
}

TEST_F(Traces, show_values_by_the_type_of_their_stream) {
    install_test_effect(project);
    layer.apply_effect(1);
    for (const auto& [number, shown] : std::vector<std::pair<int, std::string>>{
             {1, "7"}, {2, "(10, 20)"}, {3, "no data"}, {4, "rgba(0.25, 0.5, 0.75, 1)"}, {5, "layer id 0"}}) {
        SCOPED_TRACE(number);
        AEGP_StreamValue2 value{};
        const AEGP_StreamRefH of = parameter(layer, 0, number);
        EXPECT_EQ(streams()->AEGP_GetNewStreamValue(plugin, of, AEGP_LTimeMode_CompTime, &kZero, true, &value), 0);
        EXPECT_THAT(line(), testing::EndsWith(" = 0 -> " + shown));
    }
    AEGP_StreamValue2 unknown{};
    EXPECT_EQ(streams()->AEGP_DisposeStreamValue(&unknown), 0);
    EXPECT_THAT(line(), testing::HasSubstr("(value of no stream) = 0"));
}

TEST_F(Traces, show_members_that_are_not_layers) {
    AEGP_Collection2H collection = nullptr;
    EXPECT_EQ(collections()->AEGP_NewCollection(plugin, &collection), 0);
    AEGP_CollectionItemV2 item{};
    item.type = AEGP_CollectionItemType_STREAMREF;
    item.stream_refH = stream(layer, AEGP_LayerStream_POSITION);
    collections()->AEGP_CollectionPushBack(collection, &item);
    EXPECT_THAT(line(), testing::ContainsRegex("\\(0 items\\), stream [0-9]+ \\(\"Position\" of layer [0-9]+\\)\\)"));
    item.type = AEGP_CollectionItemType_MASK;
    collections()->AEGP_CollectionPushBack(collection, &item);
    EXPECT_THAT(line(),
                testing::HasSubstr("(1 items), member of type " + std::to_string(AEGP_CollectionItemType_MASK)));
}

TEST_F(Traces, show_texts_in_memory) {
    AEGP_MemHandle name = nullptr;
    EXPECT_EQ(suite<AEGP_ItemSuite8>()->AEGP_GetItemName(plugin, host.handle(footage), &name), 0);
    EXPECT_THAT(line(), testing::ContainsRegex(" = 0 -> memory [0-9]+ .*\"Red\""));
}

TEST_F(Traces, show_slots_that_are_not_implemented) {
    AEGP_LayerQuality quality = 0;
    EXPECT_EQ(layers()->AEGP_GetLayerQuality(host.handle(layer), &quality), kNotImplemented);
    EXPECT_EQ(line(), "LayerSuite5.AEGP_GetLayerQuality(" + layer_text + ") = " + std::to_string(kNotImplemented) +
                          ": LayerSuite5.AEGP_GetLayerQuality is not implemented by this host.");
}

TEST_F(Traces, mark_injected_results) {
    FaultInjector injector;
    host.add_observer(injector);
    injector.fail_call(1, 77);
    EXPECT_EQ(layers()->AEGP_DeleteLayer(host.handle(layer)), 77);
    EXPECT_EQ(line(), "LayerSuite5.AEGP_DeleteLayer(" + layer_text + ") = 77 (injected)");
    host.remove_observer(injector);
}

TEST_F(Traces, leave_out_the_basic_suite) {
    const void* table = nullptr;
    EXPECT_EQ(host.basic_suite()->AcquireSuite("AEGP Item Suite", 13, &table), 0);
    EXPECT_TRUE(tracer.lines().empty());
    EXPECT_EQ(host.basic_suite()->ReleaseSuite("AEGP Item Suite", 13), 0);
    EXPECT_TRUE(tracer.lines().empty());
}

TEST_F(Traces, go_line_by_line_to_a_sink) {
    std::vector<std::string> lines;
    Tracer streaming([&lines](std::string_view text) { lines.emplace_back(text); });
    host.add_observer(streaming);
    EXPECT_EQ(layers()->AEGP_DeleteLayer(nullptr), kBadArgument);
    host.remove_observer(streaming);
    EXPECT_EQ(lines, tracer.lines());
    EXPECT_TRUE(streaming.lines().empty());
}

TEST(NestedTraces, end_the_inner_call_first) {
    model::Project project;
    const AEGP_CommandSuite1* commands = nullptr;
    SuiteHost host(project, {.run_script =
                                 [&commands](std::string_view) {
                                     AEGP_Command command = 0;
                                     EXPECT_EQ(commands->AEGP_GetUniqueCommand(&command), 0);
                                     return ScriptReply{false, "done", ""};
                                 },
                             .report = {}});
    const void* table = nullptr;
    ASSERT_EQ(host.basic_suite()->AcquireSuite("AEGP Command Suite", 1, &table), 0);
    commands = static_cast<const AEGP_CommandSuite1*>(table);
    ASSERT_EQ(host.basic_suite()->AcquireSuite("AEGP Utility Suite", 13, &table), 0);
    Tracer tracer;
    host.add_observer(tracer);
    AEGP_MemHandle result = nullptr;
    EXPECT_EQ(static_cast<const AEGP_UtilitySuite6*>(table)->AEGP_ExecuteScript(1, "go()", true, &result, nullptr), 0);
    host.remove_observer(tracer);
    EXPECT_THAT(tracer.lines(), ElementsAre("CommandSuite1.AEGP_GetUniqueCommand() = 0 -> 1",
                                            "UtilitySuite6.AEGP_ExecuteScript(1, \"go()\", 1) = 0 -> memory 0 "
                                            "(\"script result\": \"done\"), null"));
}

}  // namespace host::suites
