// app.settings in scripts.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "world.h"

namespace script_test {
namespace {

using testing::HasSubstr;

TEST(SettingsObject, keeps_texts_by_section_and_key) {
    World world;
    EXPECT_EQ(world.run("var s = app.settings; s.haveSetting('section', 'key')"), "false");
    EXPECT_EQ(world.run("s.saveSetting('section', 'key', 'a value')"), "");
    EXPECT_EQ(world.run("s.haveSetting('section', 'key') + s.getSetting('section', 'key')"), "truea value");
    EXPECT_EQ(world.run("[s.haveSetting('section', 'other'), s.haveSetting('other', 'key')].join()"), "false,false");
    EXPECT_EQ(*world.settings.find("section", "key"), "a value");
}

TEST(SettingsObject, turns_other_values_into_text) {
    World world;
    EXPECT_EQ(world.run("app.settings.saveSetting('s', 'k', true); typeof app.settings.getSetting('s', 'k')"),
              "string");
    EXPECT_EQ(world.run("app.settings.getSetting('s', 'k')"), "true");
    EXPECT_EQ(world.run("app.settings.saveSetting('s', 'k', 1.5); app.settings.getSetting('s', 'k')"), "1.5");
}

TEST(SettingsObject, a_missing_setting_is_an_error) {
    World world;
    EXPECT_THAT(world.error("app.settings.getSetting('section', 'key')"),
                HasSubstr("there is no setting \"key\" in section \"section\""));
}

TEST(SettingsObject, an_empty_text_can_be_read_but_counts_as_no_value) {
    World world;
    world.run("app.settings.saveSetting('s', 'k', '')");
    EXPECT_EQ(world.run("app.settings.haveSetting('s', 'k')"), "false");
    EXPECT_EQ(world.run("app.settings.getSetting('s', 'k')"), "");
}

TEST(SettingsObject, PREFType_has_seven_members_of_distinct_values) {
    World world;
    EXPECT_EQ(
        world.run(
            "var names = [], values = {}, n = 0; for (var k in PREFType) { names.push(k); values[PREFType[k]] = 1; }"
            "for (k in values) n++; names.length + ' ' + n + ' ' + names[0]"),
        "7 7 PREF_Type_MACHINE_SPECIFIC");
    EXPECT_EQ(world.run("PREFType.PREF_Type_MACHINE_SPECIFIC = 'other'; typeof PREFType.PREF_Type_MACHINE_SPECIFIC"),
              "number");
}

TEST(SettingsObject, each_type_has_its_own_values_and_machine_specific_is_the_usual_one) {
    World world;
    world.run("var s = app.settings; for (var k in PREFType) s.saveSetting('s', 'k', k, PREFType[k]);");
    EXPECT_EQ(world.run("s.getSetting('s', 'k')"), "PREF_Type_MACHINE_SPECIFIC");
    EXPECT_EQ(world.run("var right = 0; for (k in PREFType) right += s.getSetting('s', 'k', PREFType[k]) === k; right"),
              "7");
    EXPECT_THAT(world.error("s.haveSetting('s', 'k', 7)"), HasSubstr("member of PREFType"));
    EXPECT_THAT(world.error("s.haveSetting('s', 'k', -1)"), HasSubstr("member of PREFType"));
    EXPECT_THAT(world.error("s.saveSetting('s', 'k', 'v', 'MACHINE')"), HasSubstr("number was expected"));
}

TEST(SettingsObject, values_over_1999_bytes_are_errors_on_saving_and_reading) {
    World world;
    world.run("var longest = new Array(2000).join('x'); app.settings.saveSetting('s', 'k', longest);");
    EXPECT_EQ(world.run("app.settings.getSetting('s', 'k').length"), "1999");
    EXPECT_THAT(world.error("app.settings.saveSetting('s', 'k', longest + 'x')"), HasSubstr("1999 bytes"));
    EXPECT_THAT(world.error("app.settings.saveSetting('s', 'k', longest.substr(1) + '\u00E9')"),
                HasSubstr("1999 bytes"));
    world.settings.save("s", "long", std::string(2000, 'x'));
    EXPECT_THAT(world.error("app.settings.getSetting('s', 'long')"), HasSubstr("1999 bytes"));
    EXPECT_EQ(world.run("app.settings.getSetting('s', 'k').length"), "1999");
}

TEST(SettingsObject, any_characters_survive) {
    World world;
    EXPECT_EQ(world.run("var v = '\U0001F600 \"q\" \\\\ \\n \\u0000 \\t'; app.settings.saveSetting(v, v, v);"
                        "app.settings.getSetting(v, v) === v"),
              "true");
}

TEST(SettingsObject, a_file_that_cannot_be_written_is_an_error_the_script_can_catch) {
    TemporaryFolder folder;
    write_file(folder / "no_folder", "a file");
    host::model::Project project;
    Settings settings(folder / "no_folder" / "settings");
    ScriptedDriver driver;
    std::vector<Alert> alerts;
    Engine engine(project, settings, driver, [&](const Alert& alert) { alerts.push_back(alert); });
    const ScriptResult outcome = engine.run(
        "try { app.settings.saveSetting('s', 'k', 'v'); } catch (e) { alert(e.toString()); } "
        "app.settings.getSetting('s', 'k')");
    EXPECT_FALSE(outcome.failed) << outcome.error;
    EXPECT_EQ(outcome.result, "v");
    ASSERT_EQ(alerts.size(), 1U);
    EXPECT_THAT(alerts[0].message, HasSubstr("Error: Cannot make or open settings folder"));
    EXPECT_THAT(alerts[0].message, HasSubstr("no_folder"));
}

}  // namespace
}  // namespace script_test
