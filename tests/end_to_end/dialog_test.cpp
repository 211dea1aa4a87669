// The plug-in's dialog and what the plug-in does with each end of it.
#include <gmock/gmock.h>

#include "whole_run.h"

namespace {

using end_to_end::click;
using end_to_end::type;
using end_to_end::WholeRun;
using host::scriptui::Action;
using testing::ElementsAre;
using testing::IsEmpty;

// One pre-comp layer "Intro" over a composition with one layer "dot".
constexpr const char* kAnimation =
    R"({"v":"5.9.6","fr":30,"ip":0,"op":90,"w":400,"h":300,"nm":"Main","ddd":0,"assets":[{"id":"c","nm":"Intro Comp",)"
    R"("layers":[{"ddd":0,"ind":1,"ty":4,"nm":"dot","sr":1,"ks":{},"ao":0,"shapes":[],"ip":0,"op":90,"st":0,"bm":0}]}],)"
    R"("layers":[{"ddd":0,"ind":1,"ty":0,"nm":"Intro","refId":"c","sr":1,"ks":{},"ao":0,"w":400,"h":300,"ip":0,"op":90,)"
    R"("st":0,"bm":0}]})";

class Dialog : public testing::Test {
  protected:
    host::runner::VisitResult run(const std::vector<Action>& actions) {
        return whole.run(whole.document().main_comp(), {0}, actions);
    }

    // Runs with that prefix; the names of the layers after it.
    std::vector<std::string> names_after(const std::string& prefix) {
        outcome = run({click("optionDiscardAttributes"), type("prefixInput", prefix), click("Ok")});
        EXPECT_FALSE(outcome.has_failed());
        host::model::Comp& comp = whole.document().main_comp();
        std::vector<std::string> names;
        for (int i = 0; i < comp.layer_count(); ++i) names.push_back(comp.layer_at(i).display_name());
        return names;
    }

    void expect_refusal(const std::string& prefix) {
        EXPECT_THAT(names_after(prefix), ElementsAre("Intro")) << prefix;
        EXPECT_TRUE(outcome.is_handled);
        EXPECT_THAT(outcome.undo_steps, IsEmpty());
        EXPECT_THAT(outcome.log, IsEmpty());
        ASSERT_EQ(outcome.alerts.size(), 1U) << prefix;
        EXPECT_EQ(outcome.alerts[0].title, "Prefix Too Long");
        EXPECT_EQ(outcome.alerts[0].message, "The prefix you set it too long. Please limit prefixes to 50 characters.");
    }

    WholeRun whole{kAnimation};
    host::runner::VisitResult outcome;
};

std::string repeated(int times, const std::string& text) {
    std::string all;
    for (int i = 0; i < times; ++i) all += text;
    return all;
}

TEST_F(Dialog, cancelled_in_any_way_changes_nothing_and_is_handled) {
    const std::vector<Action> ways[] = {
        {click("Cancel")}, {{Action::Kind::key_escape}}, {{Action::Kind::close_box}}, {}};
    for (std::vector<Action> actions : ways) {
        actions.insert(actions.begin(), type("prefixInput", "fx"));
        outcome = run(actions);
        EXPECT_FALSE(outcome.has_failed());
        EXPECT_TRUE(outcome.is_handled);
        EXPECT_THAT(outcome.undo_steps, IsEmpty());
        EXPECT_THAT(outcome.alerts, IsEmpty());
        EXPECT_THAT(outcome.log, IsEmpty());
        EXPECT_EQ(whole.document().main_comp().layer_count(), 1);
        EXPECT_EQ(whole.settings().find("corvane.exflate", "settingPrefixInput"), nullptr);
    }
}

TEST_F(Dialog, enter_is_ok) {
    outcome = run({type("prefixInput", "fx"), {Action::Kind::key_enter}});
    EXPECT_THAT(outcome.undo_steps, ElementsAre("Exflate"));
    EXPECT_EQ(whole.document().main_comp().layer_at(0).display_name(), "fx_dot");
}

TEST_F(Dialog, takes_50_bytes_of_prefix_in_ASCII) {
    EXPECT_THAT(names_after(std::string(50, 'p')), ElementsAre(std::string(50, 'p') + "_dot"));
    EXPECT_THAT(outcome.alerts, IsEmpty());
}

TEST_F(Dialog, takes_50_bytes_of_prefix_in_umlauts) {
    EXPECT_THAT(names_after(repeated(25, "\u00FC")), ElementsAre(repeated(25, "\u00FC") + "_dot"));
    EXPECT_THAT(outcome.alerts, IsEmpty());
}

TEST_F(Dialog, takes_50_bytes_of_prefix_with_emoji) {
    // Each of the twelve takes a unit more than the name has room for.
    EXPECT_THAT(names_after("ab" + repeated(12, "\U0001F600")), ElementsAre("ab" + repeated(8, "\U0001F600")));
    EXPECT_THAT(outcome.alerts, IsEmpty());
}

TEST_F(Dialog, counts_and_keeps_the_backslash_before_a_quote_or_a_backslash) {
    EXPECT_THAT(names_after("a\"b\\c"), ElementsAre("a\\\"b\\\\c_dot"));
}

TEST_F(Dialog, takes_25_quotes) {
    EXPECT_THAT(names_after(repeated(25, "\"")), ElementsAre(repeated(25, "\\\"") + "_dot"));
}

TEST_F(Dialog, writes_out_control_characters) {
    EXPECT_THAT(names_after("a\tb\x01"), ElementsAre("a\\tb\\u0001_dot"));
}

TEST_F(Dialog, takes_8_control_characters_of_6_bytes_each) {
    EXPECT_THAT(names_after(repeated(8, "\x01")), ElementsAre(repeated(8, "\\u0001") + "_dot"));
}

TEST_F(Dialog, refuses_prefixes_of_more_than_50_bytes_as_written) {
    for (const std::string& prefix :
         {std::string(51, 'p'), repeated(25, "\u00FC") + "p", repeated(26, "\u00FC"), repeated(13, "\U0001F600"),
          std::string(49, 'p') + "\"", repeated(25, "\"") + "p", std::string(49, 'p') + "\\", repeated(25, "\\") + "p",
          std::string(49, 'p') + "\n", repeated(8, "\x01") + "ppp", std::string(45, 'p') + "\u2028",
          std::string(1999, 'p')}) {
        expect_refusal(prefix);
    }
}

TEST_F(Dialog, offers_a_refused_prefix_again) {
    const std::string prefix(51, 'p');
    expect_refusal(prefix);
    EXPECT_EQ(*whole.settings().find("corvane.exflate", "settingPrefixInput"), prefix);
    outcome = run({click("Ok")});
    ASSERT_EQ(outcome.alerts.size(), 1U);
    EXPECT_EQ(outcome.alerts[0].title, "Prefix Too Long");
    EXPECT_EQ(whole.document().main_comp().layer_count(), 1);
}

TEST_F(Dialog, says_first_that_a_prefix_cannot_be_saved_then_that_it_is_too_long) {
    EXPECT_THAT(names_after(std::string(2000, 'p')), ElementsAre("Intro"));
    ASSERT_EQ(outcome.alerts.size(), 2U);
    EXPECT_EQ(outcome.alerts[0].message, "Error: the value of a setting is longer than 1999 bytes");
    EXPECT_EQ(outcome.alerts[1].title, "Prefix Too Long");
}

}  // namespace
