// The path of a call: which host it reaches, who watches it, what becomes of exceptions.
#include <memory>
#include <new>
#include <stdexcept>
#include <thread>

#include "world.h"

namespace host::suites {

using testing::ElementsAre;

class Hosts : public World {
  public:
    const AEGP_LayerSuite5* table = layers();
    const AEGP_UtilitySuite6* utility = suite<AEGP_UtilitySuite6>();

    A_Err run_script() { return utility->AEGP_ExecuteScript(plugin, "1", false, nullptr, nullptr); }
};

TEST_F(Hosts, get_the_calls_while_they_are_the_newest) {
    model::Project other_project;
    model::Comp& other_comp = other_project.add_comp("Other");
    A_long count = -1;
    {
        const SuiteHost newer(other_project, {});
        EXPECT_EQ(table->AEGP_GetCompNumLayers(newer.comp_handle(other_comp), &count), 0);
        EXPECT_EQ(table->AEGP_GetCompNumLayers(host.comp_handle(main), &count), kBadArgument);
        EXPECT_EQ(newer.diagnostics().size(), 1U);
    }
    EXPECT_TRUE(host.diagnostics().empty());
    EXPECT_EQ(table->AEGP_GetCompNumLayers(host.comp_handle(main), &count), 0);
}

TEST_F(Hosts, may_go_in_any_order) {
    auto second = std::make_unique<SuiteHost>(project, Ports{});
    auto third = std::make_unique<SuiteHost>(project, Ports{});
    second.reset();
    A_long count = -1;
    EXPECT_EQ(table->AEGP_GetCompNumLayers(third->comp_handle(main), &count), 0);
    third.reset();
    EXPECT_EQ(table->AEGP_GetCompNumLayers(host.comp_handle(main), &count), 0);
}

TEST_F(Hosts, refuse_calls_off_their_thread) {
    const std::uint64_t calls = host.calls_made();
    A_long count = -1;
    A_Err result = 0;
    std::thread([&] { result = table->AEGP_GetCompNumLayers(host.comp_handle(main), &count); }).join();
    EXPECT_EQ(result, kWrongThread);
    EXPECT_EQ(count, -1);
    EXPECT_EQ(host.calls_made(), calls);
    ASSERT_EQ(host.diagnostics().size(), 1U);
    EXPECT_EQ(host.diagnostics()[0].call, 0U);
    EXPECT_EQ(last_complaint(), "The call came off the main thread.");
}

TEST(NoHost, calls_without_one_are_refused) {
    const AEGP_LayerSuite5* table = nullptr;
    SPBasicSuite* basic = nullptr;
    {
        model::Project project;
        SuiteHost host(project, {});
        basic = host.basic_suite();
        const void* found = nullptr;
        ASSERT_EQ(basic->AcquireSuite("AEGP Layer Suite", 11, &found), 0);
        table = static_cast<const AEGP_LayerSuite5*>(found);
    }
    A_long count = -1;
    EXPECT_EQ(table->AEGP_GetCompNumLayers(nullptr, &count), kNotAllowed);
    const void* found = &count;
    EXPECT_EQ(basic->AcquireSuite("AEGP Layer Suite", 11, &found), kNotAllowed);
    EXPECT_EQ(found, nullptr);
}

TEST_F(Hosts, give_the_same_handle_for_an_object_all_its_life) {
    model::Layer& a = add_layer("A");
    model::Layer& b = add_layer("B");
    const AEGP_LayerH handle = host.handle(a);
    EXPECT_NE(handle, host.handle(b));
    a.move_to(0);
    a.rename("Renamed");
    b.remove();
    main.create_null("Null", {});
    EXPECT_EQ(host.handle(a), handle);
    EXPECT_EQ(table->AEGP_DeleteLayer(handle), 0);
    A_long index = -1;
    EXPECT_EQ(table->AEGP_GetLayerIndex(handle, &index), kBadArgument);
    project.undo().undo();
    EXPECT_EQ(table->AEGP_GetLayerIndex(handle, &index), 0);
}

TEST_F(Hosts, number_calls_and_say_why_they_failed) {
    const std::uint64_t before = host.calls_made();
    EXPECT_EQ(table->AEGP_DeleteLayer(nullptr), kBadArgument);
    EXPECT_EQ(host.calls_made(), before + 1);
    ASSERT_EQ(host.diagnostics().size(), 1U);
    EXPECT_EQ(host.diagnostics()[0].call, before + 1);
    EXPECT_EQ(host.diagnostics()[0].function, "LayerSuite5.AEGP_DeleteLayer");
    EXPECT_EQ(host.diagnostics()[0].code, kBadArgument);
    EXPECT_EQ(last_complaint(), "The layer handle is null.");
}

TEST_F(Hosts, know_plug_ins_by_name) {
    EXPECT_EQ(plugin, 1);
    EXPECT_EQ(host.plugin_name(plugin), "Tester");
    EXPECT_EQ(host.plugin_name(0), "");
    EXPECT_EQ(host.plugin_name(2), "");
}

class Ported : public testing::Test {
  public:
    // What a script call answers when the port behaves like this.
    A_Err answer(std::function<ScriptReply(std::string_view)> port) {
        SuiteHost host(project, {.run_script = std::move(port), .report = {}});
        const void* found = nullptr;
        EXPECT_EQ(host.basic_suite()->AcquireSuite("AEGP Utility Suite", 13, &found), 0);
        const A_Err result =
            static_cast<const AEGP_UtilitySuite6*>(found)->AEGP_ExecuteScript(1, "1", false, nullptr, nullptr);
        sentence = host.diagnostics().empty() ? "" : host.diagnostics().back().sentence;
        return result;
    }

    model::Project project;
    std::string sentence;
};

TEST_F(Ported, exceptions_become_codes) {
    EXPECT_EQ(answer([](std::string_view) -> ScriptReply { throw std::runtime_error("Broken."); }), kInternal);
    EXPECT_EQ(sentence, "Broken.");
    EXPECT_EQ(answer([](std::string_view) -> ScriptReply { throw std::bad_alloc(); }), kOutOfMemory);
    EXPECT_EQ(answer([](std::string_view) -> ScriptReply { throw 5; }), kInternal);
    EXPECT_EQ(answer([](std::string_view) { return ScriptReply{}; }), 0);
}

TEST_F(Ported, a_missing_port_is_a_call_not_implemented) {
    EXPECT_EQ(answer({}), kNotImplemented);
    EXPECT_EQ(sentence, "This session runs no scripts.");
}

namespace {

// Writes down what it sees; may refuse.
class Witness : public Observer {
  public:
    Witness(std::string name, std::vector<std::string>& log, std::optional<A_Err> refusal = {})
        : name_(std::move(name)), log_(log), refusal_(refusal) {}
    std::optional<A_Err> before(const SuiteCall& call) override {
        log_.push_back(name_ + " before " + std::string(call.function()));
        return refusal_;
    }
    void after(const SuiteCall& call) override {
        log_.push_back(name_ + " after " + std::to_string(call.result()) + (call.is_injected() ? " injected" : ""));
    }

  private:
    std::string name_;
    std::vector<std::string>& log_;
    std::optional<A_Err> refusal_;
};

}  // namespace

TEST_F(Hosts, let_observers_see_calls_from_both_sides) {
    std::vector<std::string> log;
    Witness outer("outer", log);
    Witness inner("inner", log);
    host.add_observer(outer);
    host.add_observer(inner);
    EXPECT_EQ(table->AEGP_DeleteLayer(nullptr), kBadArgument);
    EXPECT_THAT(log, ElementsAre("outer before AEGP_DeleteLayer", "inner before AEGP_DeleteLayer", "inner after 3",
                                 "outer after 3"));
    host.remove_observer(outer);
    host.remove_observer(inner);
    log.clear();
    EXPECT_EQ(table->AEGP_DeleteLayer(nullptr), kBadArgument);
    EXPECT_TRUE(log.empty());
}

TEST_F(Hosts, take_the_refusal_of_the_first_observer_that_has_one) {
    std::vector<std::string> log;
    Witness agreeing("agreeing", log, A_Err_NONE);
    Witness refusing("refusing", log, 41);
    Witness late("late", log, 42);
    for (Witness* witness : {&agreeing, &refusing, &late}) host.add_observer(*witness);
    EXPECT_EQ(run_script(), 41);
    EXPECT_TRUE(scripts.empty());
    EXPECT_THAT(log, testing::Contains("late before AEGP_ExecuteScript"));
    EXPECT_THAT(log, testing::Contains("agreeing after 41 injected"));
    for (Witness* witness : {&agreeing, &refusing, &late}) host.remove_observer(*witness);
    EXPECT_EQ(run_script(), 0);
}

TEST_F(Hosts, tell_observers_the_suite_asked_for) {
    struct Asker : Observer {
        std::optional<A_Err> before(const SuiteCall& call) override {
            asked.push_back(std::string(call.suite()) + " " + std::string(call.requested_suite()));
            numbers_ascend = numbers_ascend && call.number() > last;
            last = call.number();
            return {};
        }
        void after(const SuiteCall&) override {}
        std::vector<std::string> asked;
        std::uint64_t last = 0;
        bool numbers_ascend = true;
    } asker;
    host.add_observer(asker);
    const void* found = nullptr;
    EXPECT_EQ(host.basic_suite()->AcquireSuite("AEGP Item Suite", 13, &found), 0);
    EXPECT_NE(host.basic_suite()->AcquireSuite("AEGP Item Suite", 999, &found), 0);
    EXPECT_EQ(run_script(), 0);
    host.remove_observer(asker);
    EXPECT_THAT(asker.asked, ElementsAre("SPBasicSuite AEGP_ItemSuite8", "SPBasicSuite ", "AEGP_UtilitySuite6 "));
    EXPECT_TRUE(asker.numbers_ascend);
}

}  // namespace host::suites
