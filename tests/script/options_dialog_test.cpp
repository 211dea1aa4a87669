// The shipped options dialog, unchanged, in this engine.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <cmath>
#include <ctime>

#include "world.h"

namespace script_test {
namespace {

using host::scriptui::Align;

struct OptionsDialog : World {
    using World::World;

    const std::string script = read_file(OPTIONS_DIALOG_SCRIPT);

    std::string show(std::function<void(Window&)> act) {
        driver.act = std::move(act);
        return run(script);
    }
};

void click(Window& w, std::string_view control) {
    w.click(w.control(control));
}

TEST(OptionsDialog, gives_its_choices_as_json_and_remembers_them) {
    OptionsDialog world;
    ASSERT_FALSE(world.script.empty());
    EXPECT_EQ(world.show([](Window& w) {
        EXPECT_TRUE(w.control("optionCopyAttributes").value());
        w.type_text(w.control("prefixInput"), "fx \"\u00E9\"");
        click(w, "optionDiscardAttributes");
        EXPECT_FALSE(w.control("optionCopyAttributes").value());
        click(w, "optionKeepInComp");
        EXPECT_FALSE(w.control("optionDeleteSource").takes_input());
        click(w, "fixRandomExpresions");
        w.press_enter();
    }),
              "[false,false,true,\"fx \\\"\u00E9\\\"\",false,true]");
    EXPECT_EQ(world.show([](Window& w) {
        EXPECT_TRUE(w.control("optionDiscardAttributes").value());
        EXPECT_EQ(w.control("prefixInput").text(), "fx \"\u00E9\"");
        EXPECT_TRUE(w.control("optionKeepInComp").value());
        EXPECT_FALSE(w.control("optionDeleteSource").is_enabled());
        EXPECT_TRUE(w.control("fixRandomExpresions").value());
        w.press_enter();
    }),
              "[false,false,true,\"fx \\\"\u00E9\\\"\",false,true]");
    EXPECT_TRUE(world.alerts.empty());
}

const char* word(Align align) {
    switch (align) {
        case Align::left:
            return "left";
        case Align::center:
            return "center";
        case Align::right:
            return "right";
        case Align::fill:
            return "fill";
        case Align::top:
            return "top";
        case Align::bottom:
            break;
    }
    return "bottom";
}

std::string words(const host::scriptui::Alignment& alignment) {
    return std::string(word(alignment.first)) + (alignment.second ? std::string(" ") + word(*alignment.second) : "");
}

// One line for each element, with all that the script says of it.
void tell(const host::scriptui::Element& element, const std::string& indent, std::string& out) {
    const host::scriptui::Layout& layout = element.layout();
    out += indent + std::string(type_name(element.type())) + " '" + element.text() + "'";
    if (element.is_container()) {
        out += layout.orientation == host::scriptui::Orientation::row ? " row [" : " column [";
        out += words(layout.align_children) + "] " + std::to_string(std::lround(layout.spacing)) + " [";
        for (const double margin : layout.margins) out += " " + std::to_string(std::lround(margin));
        out += " ]";
    }
    if (layout.alignment) out += " at [" + words(*layout.alignment) + "]";
    if (layout.preferred_size[0] >= 0) out += " wide " + std::to_string(std::lround(layout.preferred_size[0]));
    EXPECT_EQ(layout.preferred_size[1], -1);
    if (element.value()) out += " on";
    if (!element.is_enabled()) out += " grey";
    out += "\n";
    for (const auto& child : element.children()) tell(*child, indent + "  ", out);
}

std::string told(const Window& window) {
    std::string out;
    tell(window, "", out);
    return out;
}

TEST(OptionsDialog, on_first_use_is_this) {
    OptionsDialog world;
    world.show([](Window& w) {
        EXPECT_EQ(told(w), R"(window 'Exflate' column [fill top] 10 [ 16 16 16 16 ]
  group '' row [left center] 10 [ 0 0 0 0 ]
    statictext 'Exflated Layer Prefix'
    edittext '' wide 250
  group '' column [left center] 10 [ 20 0 0 0 ]
    group '' column [left center] 10 [ 0 0 0 0 ]
      radiobutton 'Copy pre-comp attributes to layers' at [left center] on
      group '' row [left center] 10 [ 20 0 0 8 ]
        group '' column [left center] 0 [ 0 0 0 0 ] wide 400
          statictext 'Use this option if you would like to copy the effects and other'
          statictext 'attributes of the pre-comp to the layers being extracted'
    group '' column [left center] 10 [ 0 0 0 0 ]
      radiobutton 'Discard pre-comp attributes'
      group '' row [left center] 10 [ 20 0 0 12 ]
        statictext 'Use this option to extract all layers, but disregard the'
        statictext 'properties of the pre-comp layer'
    checkbox 'Delete source after exflating'
    checkbox 'Keep pre-comp in composition'
    checkbox 'Prepend pre-comp name to extracted layers'
    checkbox 'Attempt to correct layers with randomized expressions'
    group '' row [right center] 10 [ 0 20 0 0 ] at [fill center]
      button 'Ok' wide 100
      button 'Cancel' wide 100
)");
    });
    EXPECT_EQ(world.driver.dialogs, 1);
}

TEST(OptionsDialog, saved_deleting_opens_with_keeping_unticked_and_grey) {
    OptionsDialog world;
    world.settings.save("corvane.exflate", "settingDeleteSource", "true");
    world.settings.save("corvane.exflate", "settingKeepInComp", "false");
    world.show([](Window& w) {
        const std::string all = told(w);
        EXPECT_THAT(all, testing::HasSubstr("'Delete source after exflating' on\n"));
        EXPECT_THAT(all, testing::HasSubstr("'Keep pre-comp in composition' grey\n"));
        EXPECT_THROW(click(w, "optionKeepInComp"), host::scriptui::DialogError);
        click(w, "optionDeleteSource");
        click(w, "optionKeepInComp");
        EXPECT_TRUE(w.control("optionKeepInComp").value());
    });
}

TEST(OptionsDialog, at_most_one_of_deleting_and_keeping_can_be_ticked_by_clicks) {
    for (const char* first : {"optionDeleteSource", "optionKeepInComp"}) {
        const char* second = first == std::string("optionDeleteSource") ? "optionKeepInComp" : "optionDeleteSource";
        OptionsDialog world;
        world.show([&](Window& w) {
            for (int i = 0; i < 3; ++i) {
                click(w, first);
                EXPECT_EQ(w.control(second).is_enabled(), !w.control(first).value());
                EXPECT_TRUE(w.control(first).is_enabled());
                EXPECT_FALSE(w.control(second).value());
            }
            EXPECT_THROW(click(w, second), host::scriptui::DialogError);
        });
    }
}

TEST(OptionsDialog, exactly_one_radio_button_is_on_after_any_click) {
    OptionsDialog world;
    world.show([](Window& w) {
        for (const char* clicked : {"optionCopyAttributes", "optionDiscardAttributes", "optionDiscardAttributes",
                                    "optionCopyAttributes", "optionCopyAttributes"}) {
            click(w, clicked);
            EXPECT_TRUE(w.control(clicked).value());
            EXPECT_NE(w.control("optionCopyAttributes").value(), w.control("optionDiscardAttributes").value());
        }
    });
}

TEST(OptionsDialog, writes_the_prefix_with_the_escapes_of_JSON) {
    const std::pair<std::string, std::string> prefixes[] = {
        {"a\"b", R"(a\"b)"},
        {"a\\b", R"(a\\b)"},
        {"\b\t\n\f\r", R"(\b\t\n\f\r)"},
        {std::string(1, '\0') + "\x1F\x7F", R"(\u0000\u001f\u007f)"},
        {"\u2028\u2029\uFEFF\u200D", R"(\u2028\u2029\ufeff\u200d)"},
        {"</script>'//", "</script>'//"},
        {"\u00FC\U0001F600", "\u00FC\U0001F600"}};
    for (const auto& [typed, written] : prefixes) {
        OptionsDialog world;
        EXPECT_EQ(world.show([&](Window& w) {
            w.type_text(w.control("prefixInput"), typed);
            w.press_enter();
        }),
                  "[true,false,false,\"" + written + "\",false,false]");
        world.show([&](Window& w) { EXPECT_EQ(w.control("prefixInput").text(), typed); });
    }
}

TEST(OptionsDialog, an_empty_prefix_takes_the_place_of_a_saved_one) {
    OptionsDialog world;
    world.settings.save("corvane.exflate", "settingPrefixInput", "old");
    world.show([](Window& w) {
        EXPECT_EQ(w.control("prefixInput").text(), "old");
        w.type_text(w.control("prefixInput"), "");
        w.press_enter();
    });
    EXPECT_EQ(*world.settings.find("corvane.exflate", "settingPrefixInput"), "");
    world.show([](Window& w) { EXPECT_EQ(w.control("prefixInput").text(), ""); });
}

TEST(OptionsDialog, a_prefix_too_long_to_be_kept_is_shown_and_the_result_given_all_the_same) {
    OptionsDialog world;
    const std::string prefix(2000, 'x');
    EXPECT_EQ(world.show([&](Window& w) {
        click(w, "optionDeleteSource");
        w.edit(w.control("prefixInput"), prefix);
        w.press_enter();
    }),
              "[true,true,false,\"" + prefix + "\",false,false]");
    ASSERT_EQ(world.alerts.size(), 1U);
    EXPECT_EQ(world.alerts[0].message, "Error: the value of a setting is longer than 1999 bytes");
    EXPECT_EQ(world.alerts[0].title, "Script Alert");
    EXPECT_NE(world.settings.find("corvane.exflate", "settingCopyPrecompAttr"), nullptr) << "saved before";
    EXPECT_EQ(world.settings.find("corvane.exflate", "settingDeleteSource"), nullptr) << "not saved after";
}

TEST(OptionsDialog, a_setting_too_long_to_be_read_is_shown_and_the_others_come_back) {
    OptionsDialog world;
    world.settings.save("corvane.exflate", "settingPrefixInput", std::string(2000, 'x'));
    world.settings.save("corvane.exflate", "settingPrependPrecompName", "true");
    EXPECT_EQ(world.show([](Window& w) {
        EXPECT_EQ(w.control("prefixInput").text(), "");
        w.press_enter();
    }),
              "[true,false,false,\"\",true,false]");
    ASSERT_EQ(world.alerts.size(), 1U);
    EXPECT_EQ(world.alerts[0].message, "Error: the value of a setting is longer than 1999 bytes");
    EXPECT_EQ(*world.settings.find("corvane.exflate", "settingPrefixInput"), "");
}

TEST(OptionsDialog, keeps_its_choices_under_these_names_and_no_others) {
    OptionsDialog world;
    TemporaryFolder folder;
    world.settings = Settings(folder / "settings");
    world.show([](Window& w) {
        w.type_text(w.control("prefixInput"), "fx");
        click(w, "optionKeepInComp");
        w.press_enter();
    });
    EXPECT_THAT(read_file(folder / "settings"), testing::EndsWith("[\"corvane.exflate\"]\n"
                                                                  "\"settingCopyPrecompAttr\" = \"true\"\n"
                                                                  "\"settingDeleteSource\" = \"false\"\n"
                                                                  "\"settingFixRandomExpressions\" = \"false\"\n"
                                                                  "\"settingKeepInComp\" = \"true\"\n"
                                                                  "\"settingPrefixInput\" = \"fx\"\n"
                                                                  "\"settingPrependPrecompName\" = \"false\"\n"));
}

TEST(OptionsDialog, cancelling_keeps_nothing) {
    OptionsDialog world;
    const std::function<void(Window&)> ways[] = {[](Window& w) { click(w, "Cancel"); },
                                                 [](Window& w) { w.press_escape(); }, [](Window& w) { w.close_box(); }};
    for (const auto& way : ways) {
        EXPECT_EQ(world.show([&](Window& w) {
            w.type_text(w.control("prefixInput"), "x");
            click(w, "optionDeleteSource");
            way(w);
            EXPECT_FALSE(w.is_open());
        }),
                  "");
        EXPECT_EQ(world.settings.find("corvane.exflate", "settingPrefixInput"), nullptr);
    }
}

// The script brings its own JSON along. A deep value may be refused, but in time and with an error that can be caught.
class DeepJson : public testing::TestWithParam<const char*> {};

TEST_P(DeepJson, ends_soon_and_leaves_the_dialog_usable) {
    OptionsDialog world;
    world.show([](Window& w) { w.press_escape(); });
    const auto start = std::clock();
    EXPECT_EQ(world.run(std::string("try { ") + GetParam() + "; 'done'; } catch (e) { 'refused'; }"), "refused");
    const double seconds = static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC;
    EXPECT_LT(seconds, 20) << "of the 30 that one script may take; sanitizers make it slow";
    EXPECT_EQ(world.run("JSON.stringify(JSON.parse('[1,{\"a\":[2]}]'))"), "[1,{\"a\":[2]}]");
    EXPECT_EQ(world.show([](Window& w) { w.press_enter(); }), "[true,false,false,\"\",false,false]");
}

INSTANTIATE_TEST_SUITE_P(
    OptionsDialog, DeepJson,
    testing::Values("var a = []; for (var i = 0; i < 1e5; ++i) a = [a]; JSON.stringify(a)",
                    "var a = []; for (var i = 0; i < 1e5; ++i) a = {x: a}; JSON.stringify(a, null, 2)",
                    "var a = []; a[0] = a; JSON.stringify(a)",
                    "var o = {toJSON: function () { return {x: o}; }}; JSON.stringify(o)",
                    "JSON.parse(new Array(5001).join('[') + new Array(5001).join(']'))",
                    "JSON.parse(new Array(5001).join('{\"a\":') + 1 + new Array(5001).join('}'))",
                    "JSON.parse('[1]', function () { return JSON.parse('[1]', arguments.callee); })",
                    "JSON.parse(new Array(1e6).join('['))"));

// A level is one pass over the whole text, so that a very deep one takes as long as a script may.
TEST(OptionsDialog, json_that_is_too_deep_to_be_looked_through_is_ended) {
    Limits limits;
    limits.time = std::chrono::milliseconds(500);
    OptionsDialog world(limits);
    world.show([](Window& w) { w.press_escape(); });
    const ScriptResult outcome = world.engine.run("JSON.parse(new Array(1e5).join('[') + new Array(1e5).join(']'))");
    EXPECT_TRUE(outcome.took_too_long) << outcome.error;
    EXPECT_EQ(world.run("JSON.parse('[7]')[0]"), "7");
}

TEST(OptionsDialog, gives_nothing_when_cancelled_in_any_way) {
    OptionsDialog world;
    EXPECT_EQ(world.show([](Window& w) { w.press_escape(); }), "");
    EXPECT_EQ(world.show([](Window& w) { click(w, "Cancel"); }), "");
    EXPECT_EQ(world.show([](Window& w) { w.close_box(); }), "");
    EXPECT_EQ(world.show([](Window&) {}), "");
    EXPECT_EQ(world.driver.dialogs, 4);
}

TEST(OptionsDialog, runs_often_without_growing) {
    Limits limits;
    limits.memory = std::size_t{8} << 20;
    host::model::Project project;
    Settings settings = Settings::in_memory();
    ScriptedDriver driver;
    Engine engine(project, settings, driver, nullptr, limits);
    const std::string script = read_file(OPTIONS_DIALOG_SCRIPT);
    for (int i = 0; i < 300; ++i) {
        driver.add({Action::Kind::key_enter});
        const ScriptResult outcome = engine.run(script);
        ASSERT_FALSE(outcome.failed) << outcome.error;
        ASSERT_EQ(outcome.result, "[true,false,false,\"\",false,false]");
    }
}

}  // namespace
}  // namespace script_test
