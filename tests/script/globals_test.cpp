// What scripts can see.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "world.h"

namespace script_test {
namespace {

using testing::HasSubstr;

TEST(Globals, scripts_see_the_old_standard_objects_and_those_of_the_host_and_nothing_else) {
    World world;
    EXPECT_EQ(
        world.run("Object.getOwnPropertyNames((function () { return this; })()).sort().join(' ')"),
        "AVLayer Array Boolean CameraLayer CompItem Date Error EvalError FolderItem FootageItem Function Infinity "
        "LightLayer Math NaN Number Object PREFType RangeError ReferenceError RegExp ShapeLayer String SyntaxError "
        "TextLayer TypeError URIError Window alert app decodeURI decodeURIComponent encodeURI encodeURIComponent "
        "escape eval isFinite isNaN isValid parseFloat parseInt undefined unescape");
}

TEST(Globals, nothing_reaches_files_network_processes_or_the_engine_itself) {
    World world;
    for (const char* name :
         {"JSON",        "File",           "Folder",     "Socket",  "system",      "$",           "require",
          "process",     "global",         "globalThis", "Duktape", "performance", "print",       "console",
          "CBOR",        "Proxy",          "Reflect",    "Symbol",  "Buffer",      "ArrayBuffer", "Uint8Array",
          "TextDecoder", "XMLHttpRequest", "load",       "quit"}) {
        EXPECT_EQ(world.run(std::string("typeof ") + name), "undefined") << name;
    }
}

TEST(Globals, a_script_that_brings_its_own_JSON_keeps_it) {
    World world;
    world.run("if (typeof JSON !== 'object') { JSON = {stringify: function (x) { return 'own ' + x; }}; }");
    EXPECT_EQ(world.run("if (typeof JSON !== 'object') { JSON = 'replaced'; } JSON.stringify(1)"), "own 1");
}

TEST(Globals, alert_records_message_and_title) {
    World world;
    EXPECT_EQ(world.run("alert('first'); alert('second', 'A Title', true); alert(12);"), "");
    ASSERT_EQ(world.alerts.size(), 3U);
    EXPECT_EQ(world.alerts[0].message, "first");
    EXPECT_EQ(world.alerts[0].title, "Script Alert");
    EXPECT_EQ(world.alerts[1].message, "second");
    EXPECT_EQ(world.alerts[1].title, "A Title");
    EXPECT_EQ(world.alerts[2].message, "12");
    EXPECT_FALSE(world.alerts[0].is_error);
    EXPECT_TRUE(world.alerts[1].is_error);
    EXPECT_THAT(world.error("alert()"), HasSubstr("needs a message"));
}

TEST(Globals, alerts_are_proper_utf_8) {
    World world;
    world.run("alert('\U0001F600 \\uD83D', '\\uDC80')");
    EXPECT_EQ(world.alerts.at(0).message, "\U0001F600 \xEF\xBF\xBD");
    EXPECT_EQ(world.alerts.at(0).title, "\xEF\xBF\xBD");
}

TEST(Globals, isValid_tells_living_from_deleted_objects) {
    SmallProject world;
    world.run("var layer = app.project.item(2).layer(1), picture = app.project.item(3);");
    EXPECT_EQ(world.run("[isValid(layer), isValid(picture), isValid(app), isValid(null), isValid(3)].join()"),
              "true,true,true,false,false");
    world.run("layer.remove()");
    EXPECT_EQ(world.run("[isValid(layer), isValid(picture)].join()"), "false,true");
    world.run("picture.remove()");
    EXPECT_EQ(world.run("isValid(picture)"), "false");
}

TEST(Globals, item_and_layer_classes_serve_instanceof_and_cannot_be_made) {
    SmallProject world;
    world.outer.load_layer(host::model::LayerKind::camera, nullptr);
    world.outer.load_layer(host::model::LayerKind::light, nullptr);
    world.outer.load_layer(host::model::LayerKind::text, nullptr);
    world.outer.load_layer(host::model::LayerKind::vector, nullptr);
    EXPECT_EQ(
        world.run("var p = app.project, c = p.item(4); [p.item(1) instanceof FolderItem, p.item(2) instanceof CompItem,"
                  "p.item(3) instanceof FootageItem, p.item(2) instanceof FolderItem].join()"),
        "true,true,true,false");
    EXPECT_EQ(
        world.run("[c.layer(1) instanceof AVLayer, c.layer(2) instanceof CameraLayer, c.layer(3) instanceof LightLayer,"
                  "c.layer(4) instanceof TextLayer, c.layer(5) instanceof ShapeLayer, c.layer(4) instanceof AVLayer,"
                  "c.layer(2) instanceof AVLayer].join()"),
        "true,true,true,true,true,true,false");
    EXPECT_THAT(world.error("new CompItem()"), HasSubstr("cannot be made with new"));
}

}  // namespace
}  // namespace script_test
