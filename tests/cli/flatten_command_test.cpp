// `exflate flatten`, and what other commands say about it.
#include <gmock/gmock.h>

#include "animations.h"
#include "result.h"
#include "sandbox.h"

using test::exflate;
using test::exflate_on;
using test::Finished;
using test::layer_names;
using test::Sandbox;
using testing::AllOf;
using testing::ElementsAre;
using testing::EndsWith;
using testing::HasSubstr;
using testing::Not;

namespace {

// A blur over two layers that lie over one another: no flat file can hold it.
std::string blurred_nest(int ind, const std::string& name, const std::string& asset) {
    const std::string layer = test::nest_layer(ind, name, asset);
    const std::string blur =
        R"("ef":[{"ty":29,"nm":"Blur","np":1,"mn":"ADBE Gaussian Blur 2","ix":1,"en":1,"ef":[]}],)";
    return std::string(layer).insert(layer.find(R"("ip")"), blur);
}

// One nest that becomes flat, with another one inside, and one that stays.
std::string flat_and_blurred() {
    return test::animation(
        {test::asset("flat", "Flat", {test::nest_layer(1, "Inner", "leaf"), test::solid_layer(2, "dot")}),
         test::asset("leaf", "Leaf", {test::shape_layer(1, "leaf")}),
         test::asset("blur", "Blur", {test::solid_layer(1, "one"), test::solid_layer(2, "two")})},
        {test::nest_layer(1, "Flat", "flat"), blurred_nest(2, "Soft", "blur")});
}

// Composition `n` shows the one before it twice.
std::string doubling(int levels) {
    std::vector<std::string> assets = {test::asset("c0", "C0", {test::shape_layer(1, "x")})};
    for (int i = 1; i < levels; ++i) {
        const std::string inner = "c" + std::to_string(i - 1);
        assets.push_back(test::asset("c" + std::to_string(i), "C" + std::to_string(i),
                                     {test::nest_layer(1, "a", inner), test::nest_layer(2, "b", inner)}));
    }
    return test::animation(assets, {test::nest_layer(1, "All", "c" + std::to_string(levels - 1))});
}

std::string last_line(const Finished& finished) {
    const std::string text = finished.err.substr(0, finished.err.size() - 1);
    return text.substr(text.rfind('\n') + 1);
}

TEST(Flatten, a_nest_that_is_needed_for_the_look_stays_with_its_reason) {
    const Finished finished = exflate_on(flat_and_blurred(), {"flatten"});
    EXPECT_EQ(finished.exit_code, 1);
    EXPECT_THAT(layer_names(finished.out), ElementsAre("leaf", "dot", "Soft"));
    EXPECT_THAT(last_line(finished), testing::StartsWith("a.json: 1 pre-comp left: \"Soft\" (effects: "));
}

TEST(Flatten, all_un_nests_everything_and_says_which_looks_change) {
    const Finished finished = exflate_on(flat_and_blurred(), {"flatten", "--all"});
    EXPECT_EQ(finished.exit_code, 1);
    EXPECT_THAT(finished.out, Not(HasSubstr("refId")));
    EXPECT_THAT(last_line(finished),
                testing::StartsWith("a.json: 0 pre-comps left; look changed: \"Soft\" (effects: "));
}

TEST(Flatten, succeeds_when_every_nest_keeps_its_look) {
    const Finished finished = exflate_on(test::three_nests(), {"flatten"});
    EXPECT_EQ(finished.exit_code, 0) << finished.err;
    EXPECT_EQ(last_line(finished), "a.json: 0 pre-comps left, look kept");
    EXPECT_THAT(layer_names(finished.out), ElementsAre("dot", "dot", "core", "frame"));
    EXPECT_THAT(finished.out, Not(HasSubstr("comp_")));
}

TEST(Flatten, selected_nests_become_flat_by_one_level) {
    const Finished layer = exflate_on(flat_and_blurred(), {"flatten", "--layer", "Flat"});
    EXPECT_EQ(layer.exit_code, 0);
    EXPECT_THAT(layer_names(layer.out), ElementsAre("Inner", "dot", "Soft"));
    EXPECT_EQ(last_line(layer), "a.json: 2 pre-comps left, look kept");
    const Finished comp = exflate_on(flat_and_blurred(), {"flatten", "--comp", "Flat"});
    EXPECT_EQ(comp.exit_code, 0);
    EXPECT_THAT(layer_names(comp.out), ElementsAre("Flat", "Soft"));
    EXPECT_THAT(comp.out, Not(HasSubstr("Inner")));
    EXPECT_EQ(exflate_on(flat_and_blurred(), {"flatten", "--comp", "Absent"}).exit_code, 2);
}

TEST(Flatten, a_dry_run_says_the_same_and_writes_nothing) {
    const Sandbox sandbox(flat_and_blurred());
    const Finished dry = exflate(sandbox, {"flatten", "-n", "-i", "a.json"});
    EXPECT_EQ(dry.exit_code, 1);
    EXPECT_EQ(sandbox.read("a.json"), flat_and_blurred());
    EXPECT_EQ(dry.err, exflate(sandbox, {"flatten", "-i", "a.json"}).err);
    EXPECT_NE(sandbox.read("a.json"), flat_and_blurred());
}

TEST(Flatten, several_files_in_parallel_give_the_same_result) {
    const Sandbox sandbox(flat_and_blurred());
    sandbox.write("b.json", test::three_nests());
    const Finished finished = exflate(sandbox, {"flatten", "-j", "2", "--out-dir", "out", "a.json", "b.json"});
    EXPECT_EQ(finished.exit_code, 1);
    EXPECT_EQ(sandbox.read("out/a.json"), exflate_on(flat_and_blurred(), {"flatten"}).out);
    EXPECT_EQ(sandbox.read("out/b.json"), exflate_on(test::three_nests(), {"flatten"}).out);
}

TEST(Flatten, shared_nests_stay_where_the_file_would_grow_too_far) {
    const Finished finished = exflate_on(doubling(4), {"flatten", "--max-growth", "0"});
    EXPECT_EQ(finished.exit_code, 1);
    EXPECT_LE(finished.out.size(), doubling(4).size());
    EXPECT_THAT(last_line(finished), HasSubstr("(size: the file would become too large"));
    EXPECT_EQ(last_line(exflate_on(doubling(4), {"flatten"})), "a.json: 0 pre-comps left, look kept");
}

TEST(Flatten, the_last_line_names_only_a_few_nests) {
    std::vector<std::string> nests;
    for (int i = 1; i <= 25; ++i) nests.push_back(blurred_nest(i, "nest " + std::to_string(i), "blur"));
    const std::string text = test::animation(
        {test::asset("blur", "Blur", {test::solid_layer(1, "one"), test::solid_layer(2, "two")})}, nests);
    const std::string last = last_line(exflate_on(text, {"flatten"}));
    EXPECT_THAT(last, testing::StartsWith("a.json: 25 pre-comps left: \"nest 1\" (effects: "));
    EXPECT_THAT(last, HasSubstr("\"nest 20\" ("));
    EXPECT_THAT(last, testing::EndsWith(") and 5 more, which --verbose names"));
    EXPECT_THAT(exflate_on(text, {"flatten", "--verbose"}).err, HasSubstr("nest #25 \"nest 25\" stays: effects: "));
}

TEST(Flatten, compositions_that_double_at_each_of_many_levels_do_not_fill_the_memory) {
    const Finished finished = exflate_on(doubling(40), {"flatten"});
    EXPECT_EQ(finished.exit_code, 1);
    EXPECT_LT(finished.out.size(), std::size_t{10} << 20);
    EXPECT_THAT(last_line(finished), HasSubstr("(size: "));
}

TEST(Flatten, exact_keeps_nests_that_are_only_equal_to_the_eye) {
    std::string nest = test::nest_layer(1, "Nest", "inside");
    nest.replace(nest.find("[50,40,0]"), 9, "[0,0,0]").replace(nest.find(R"("w":100)"), 7, R"("w":90)");
    std::string wide = test::solid_layer(1, "wide");
    wide.replace(wide.find("[50,40,0]"), 9, "[50.02,20,0]");
    const std::string text = test::animation({test::asset("inside", "Inside", {wide})}, {nest});
    EXPECT_EQ(exflate_on(text, {"flatten"}).exit_code, 0);
    EXPECT_THAT(exflate_on(text, {"check", "--flatten"}).out, HasSubstr("1 equal to the eye"));
    EXPECT_THAT(exflate_on(text, {"flatten", "--exact", "-v"}).err, Not(HasSubstr("un-nested: equal to the eye")));
}

TEST(Flatten, each_nest_is_listed_on_request) {
    EXPECT_THAT(exflate_on(flat_and_blurred(), {"flatten"}).err, Not(HasSubstr("nest #")));
    const std::string told = exflate_on(flat_and_blurred(), {"flatten", "--verbose"}).err;
    EXPECT_THAT(told, HasSubstr("a.json: nest #1 \"Inner\" in composition \"Flat\" un-nested: exact\n"));
    EXPECT_THAT(told, HasSubstr("a.json: nest #2 \"Soft\" stays: effects: "));
}

TEST(Flatten, check_shows_what_it_would_do) {
    const Finished text = exflate_on(flat_and_blurred(), {"check", "--flatten"});
    EXPECT_EQ(text.exit_code, 1);
    EXPECT_THAT(text.out, AllOf(HasSubstr("becomes flat\n"), HasSubstr("stays: effects: "),
                                HasSubstr("made flat: 2 un-nested, 1 kept; ")));
    const Finished json = exflate_on(flat_and_blurred(), {"check", "--flatten", "--format", "json"});
    EXPECT_THAT(json.out, AllOf(HasSubstr(R"("becomes": "flat")"), HasSubstr(R"("becomes": "kept")"),
                                HasSubstr(R"("kept_because": "effects: )"), HasSubstr(R"("mended": [])")));
    const Finished junit = exflate_on(flat_and_blurred(), {"check", "--flatten", "--format", "junit"});
    EXPECT_THAT(junit.out, AllOf(HasSubstr(R"(failures="1")"), HasSubstr("kept: effects: ")));
    EXPECT_EQ(exflate_on(test::three_nests(), {"check", "--flatten"}).exit_code, 0);
}

TEST(Flatten, a_bare_run_hints_at_it_where_looks_change) {
    EXPECT_THAT(exflate_on(test::fading_nest()).err, EndsWith("1 of 1 look changes; exflate flatten keeps it\n"));
    EXPECT_THAT(exflate_on(test::one_nest()).err, Not(HasSubstr("exflate flatten")));
    EXPECT_THAT(exflate_on(test::fading_nest(), {"--keep-look"}).err, Not(HasSubstr("exflate flatten")));
}

TEST(Flatten, a_recursive_run_says_that_inner_nests_lose_their_parent) {
    std::string inner = test::nest_layer(1, "Inner", "inner");
    inner.insert(1, R"("parent":2,)");
    const std::string text = test::animation({test::asset("outer", "Outer", {inner, test::shape_layer(2, "carrier")}),
                                              test::asset("inner", "Inner", {test::shape_layer(1, "core")})},
                                             {test::nest_layer(1, "Box", "outer")});
    EXPECT_THAT(exflate_on(text, {"--recursive"}).err,
                HasSubstr("1 nest inside of others lost the layer that it hung on"));
    EXPECT_EQ(last_line(exflate_on(text, {"flatten"})), "a.json: 0 pre-comps left, look kept");
}

TEST(Flatten, keep_look_leaves_what_would_change) {
    const Finished finished = exflate_on(flat_and_blurred(), {"--keep-look"});
    EXPECT_EQ(finished.exit_code, 0);
    EXPECT_THAT(layer_names(finished.out), ElementsAre("Inner", "dot", "Soft"));
}

TEST(Flatten, a_mending_run_un_nests_everything_and_restores_what_was_lost) {
    std::string nest = test::nest_layer(1, "Nest", "inside");
    nest.replace(nest.find(R"("op":50)"), 7, R"("op":20)");
    const std::string text = test::animation({test::asset("inside", "Inside", {test::shape_layer(1, "x")})}, {nest});
    const Finished mended = exflate_on(text, {"--mend"});
    EXPECT_EQ(mended.exit_code, 0);
    EXPECT_THAT(layer_names(mended.out), ElementsAre("x"));
    EXPECT_THAT(mended.out, HasSubstr(R"("op":20)"));
    EXPECT_THAT(mended.err, EndsWith("; every look is kept\n"));
    EXPECT_EQ(exflate_on(test::three_nests(), {"--mend"}).out, exflate_on(test::three_nests()).out);
    const Finished still = exflate_on(flat_and_blurred(), {"--mend"});
    EXPECT_THAT(layer_names(still.out), ElementsAre("Inner", "dot", "one", "two"));
    EXPECT_THAT(still.err, EndsWith("1 of 2 looks changes\n"));
}

}  // namespace
