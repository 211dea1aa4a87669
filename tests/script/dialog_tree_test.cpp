// Building dialogs: elements, names, parents.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "world.h"

namespace script_test {
namespace {

using testing::HasSubstr;

constexpr const char* kDialog = R"js(
var w = new Window("dialog", "Title", undefined, {name: "main"});
var g = w.add("group", undefined, {name: "top"});
var p = w.add("panel", undefined, "A Panel", {name: "box"});
var s = g.add("statictext", undefined, "Some words", {name: "words"});
var e = g.add("edittext", undefined, "typed", {name: "input"});
var c = p.add("checkbox", undefined, "Check me", {name: "check"});
var r = p.add("radiobutton", undefined, "Pick me", {name: "pick"});
var b = w.add("button", undefined, "Go", {name: "go"});
)js";

TEST(DialogTree, elements_give_their_type_text_and_name) {
    World world;
    world.run(kDialog);
    EXPECT_EQ(
        world.run(
            "[w, g, p, s, e, c, r, b].map(function (x) { return x.type + ':' + x.name + ':' + x.text; }).join(' ')"),
        "dialog:main:Title group:top: panel:box:A Panel statictext:words:Some words edittext:input:typed "
        "checkbox:check:Check me radiobutton:pick:Pick me button:go:Go");
}

TEST(DialogTree, text_can_be_assigned_the_windows_is_its_title) {
    World world;
    world.run(kDialog);
    world.driver.act = [](Window& window) { EXPECT_EQ(window.text(), "New Title \U0001F600"); };
    EXPECT_EQ(world.run("w.text = 'New Title \U0001F600'; e.text = 5; w.show(); e.text + typeof e.text"), "5string");
    EXPECT_EQ(world.driver.dialogs, 1);
}

TEST(DialogTree, children_are_listed_by_number_and_name) {
    World world;
    world.run(kDialog);
    EXPECT_EQ(world.run("w.children.length"), "3");
    EXPECT_EQ(world.run("w.children[0] === g && w.children['box'] === p && w.children[2] === w.children['go']"),
              "true");
    EXPECT_EQ(world.run("w.children.pop(); w.children.length"), "3");
}

TEST(DialogTree, a_named_child_is_a_property_of_its_parent) {
    World world;
    world.run(kDialog);
    EXPECT_EQ(world.run("w.top === g && w.top.input === e && w.box.check === c"), "true");
}

TEST(DialogTree, a_name_never_hides_a_member) {
    World world;
    EXPECT_EQ(
        world.run("var w = new Window('dialog', 'T'); w.add('button', undefined, 'x', {name: 'text'});"
                  "w.add('button', undefined, 'y', {name: 'add'}); w.add('button', undefined, 'z', {name: 'length'});"
                  "w.text + typeof w.add + w.children.length + w.findElement('text').text"),
        "Tfunction3x");
}

TEST(DialogTree, parents_and_windows_are_known) {
    World world;
    world.run(kDialog);
    EXPECT_EQ(world.run("e.parent === g && g.parent === w && w.parent === null && e.window === w && w.window === w"),
              "true");
    EXPECT_THAT(world.error("e.parent = w"), HasSubstr("\"parent\" is read-only"));
}

TEST(DialogTree, findElement_searches_all_levels) {
    World world;
    world.run(kDialog);
    EXPECT_EQ(world.run("w.findElement('input') === e && p.findElement('check') === c"), "true");
    EXPECT_EQ(
        world.run("w.findElement('nobody') === null && p.findElement('input') === null && w.findElement('') === null"),
        "true");
}

TEST(DialogTree, texts_of_containers_may_be_left_out) {
    World world;
    EXPECT_EQ(world.run("var w = new Window('dialog'); var g = w.add('group', undefined, {name: 'g'});"
                        "var h = w.add('group', undefined, undefined, {name: 'h'}); var n = w.add('button');"
                        "[g.name, h.name, n.name, n.text, w.text].join('|')"),
              "g|h|||");
}

TEST(DialogTree, element_types_are_told_apart_whatever_their_case) {
    World world;
    EXPECT_EQ(world.run("new Window('dialog').add('StaticText', undefined, 'x').type"), "statictext");
}

TEST(DialogTree, unknown_things_are_errors_that_name_them) {
    World world;
    EXPECT_THAT(world.error("new Window('dialog').add('slider')"), HasSubstr("no element of type \"slider\""));
    EXPECT_THAT(world.error("new Window('dialog').add('window')"), HasSubstr("no element of type \"window\""));
    EXPECT_THAT(world.error("new Window('dialog').add()"), HasSubstr("no element of type \"undefined\""));
    EXPECT_THAT(world.error("new Window('palette')"), HasSubstr("\"palette\" are not supported"));
    EXPECT_THAT(world.error("Window('dialog')"), HasSubstr("called with new"));
    EXPECT_THAT(world.error("var w = new Window('dialog'); w.add.call(w.add('button'), 'button')"),
                HasSubstr("not a container"));
    EXPECT_THAT(world.error("w.show.call(w.add('group'))"), HasSubstr("not a window"));
    EXPECT_THAT(world.error("w.add('group').show()"), HasSubstr("TypeError"));
    EXPECT_EQ(world.run("typeof w.noSuchThing"), "undefined");
}

TEST(DialogTree, members_that_only_the_applications_elements_have_are_errors_whether_read_or_set) {
    World world;
    world.run("var w = new Window('dialog'), b = w.add('button', undefined, 'b');");
    for (const std::string member : {"graphics", "indent", "properties", "shortcutKey", "onDraw", "onShortcutKey",
                                     "onActivate", "onDeactivate", "textselection", "windowBounds"}) {
        EXPECT_THAT(world.error("b." + member), HasSubstr('"' + member + "\" of dialog elements is not supported"));
        EXPECT_THAT(world.error("b." + member + " = 1"), HasSubstr('"' + member + '"'));
        EXPECT_THAT(world.error("w." + member + " = 1"), HasSubstr('"' + member + '"'));
    }
    for (const std::string member : {"opacity", "maximized", "minimized", "onMove", "onMoving", "onResize",
                                     "onResizing", "frameBounds", "frameLocation", "frameSize"}) {
        EXPECT_THAT(world.error("w." + member), HasSubstr('"' + member + '"'));
        EXPECT_THAT(world.error("w." + member + " = function () {}"), HasSubstr('"' + member + '"'));
    }
}

TEST(DialogTree, calls_of_what_only_the_application_has_are_errors_that_name_it) {
    World world;
    world.run("var w = new Window('dialog'), b = w.add('button', undefined, 'b');");
    for (const std::string call :
         {"w.center", "w.update", "w.remove", "b.addEventListener", "b.removeEventListener", "b.dispatchEvent",
          "b.hide", "b.show", "b.add", "Window.alert", "Window.confirm", "Window.prompt"}) {
        const std::string member = call.substr(call.rfind('.') + 1);
        EXPECT_THAT(world.error(call + "()"), HasSubstr("'" + member + "'")) << call;
    }
    EXPECT_THAT(world.error("ScriptUI.newFont('x')"), HasSubstr("'ScriptUI'"));
    EXPECT_THAT(world.error("confirm('x')"), HasSubstr("'confirm'"));
    EXPECT_THAT(world.error("prompt('x')"), HasSubstr("'prompt'"));
    EXPECT_THAT(world.error("$.writeln('x')"), HasSubstr("'$'"));
}

TEST(DialogTree, types_of_elements_that_only_the_application_has_are_errors_that_name_them) {
    World world;
    world.run("var w = new Window('dialog');");
    for (const std::string type : {"dropdownlist", "iconbutton", "image", "listbox", "progressbar", "scrollbar",
                                   "slider", "tab", "tabbedpanel", "treeview", "item", "dialog", ""}) {
        EXPECT_THAT(world.error("w.add('" + type + "')"), HasSubstr("no element of type \"" + type + '"'));
    }
    EXPECT_EQ(world.run("w.children.length"), "0");
}

TEST(DialogTree, creation_properties_that_are_not_known_or_no_object_are_errors) {
    World world;
    world.run("var w = new Window('dialog');");
    for (const std::string value : {"'name'", "7", "true"}) {
        EXPECT_THAT(world.error("w.add('button', undefined, 'b', " + value + ")"),
                    HasSubstr("creation properties cannot be read"));
        EXPECT_THAT(world.error("new Window('dialog', 'w', undefined, " + value + ")"),
                    HasSubstr("creation properties cannot be read"));
    }
    EXPECT_THAT(world.error("w.add('edittext', undefined, '', {scrolling: true})"), HasSubstr("\"scrolling\""));
    EXPECT_THAT(world.error("new Window('dialog', 'w', undefined, {resizeable: true})"), HasSubstr("\"resizeable\""));
    EXPECT_EQ(world.run("w.add('button', undefined, 'b', null).text + w.add('button', undefined, 'c', undefined).text"),
              "bc");
}

TEST(DialogTree, a_child_may_have_the_name_of_what_only_the_applications_elements_have) {
    World world;
    EXPECT_EQ(world.run("var w = new Window('dialog'), o = w.add('group', undefined, {name: 'opacity'});"
                        "var i = o.add('button', undefined, 'i', {name: 'indent'});"
                        "o.add('button', undefined, 'second', {name: 'indent'});"
                        "w.opacity === o && w.opacity.indent === i && w.children.opacity === o"),
              "true");
    EXPECT_THAT(world.error("i.indent"), HasSubstr("\"indent\""));
}

TEST(DialogTree, an_element_that_could_not_be_made_is_not_there) {
    World world;
    EXPECT_EQ(
        world.run("var w = new Window('dialog'); try { w.add('button', 'no bounds'); } catch (e) {} w.children.length"),
        "0");
}

TEST(DialogTree, what_is_not_supported_is_an_error_that_names_it) {
    World world;
    world.run(kDialog);
    EXPECT_THAT(world.error("b.graphics.newPen()"), HasSubstr("\"graphics\" of dialog elements is not supported"));
    EXPECT_THAT(world.error("e.onActivate = function () {}"), HasSubstr("\"onActivate\""));
    EXPECT_THAT(world.error("w.frameBounds"), HasSubstr("\"frameBounds\""));
    EXPECT_THAT(world.error("e.addEventListener('keydown', null)"), HasSubstr("addEventListener"));
    EXPECT_THAT(world.error("new Window('palette')"), HasSubstr("\"palette\""));
    EXPECT_THAT(world.error("w.add('edittext', undefined, '', {noecho: true})"),
                HasSubstr("the creation property \"noecho\" is not supported"));
    EXPECT_THAT(world.error("new Window('dialog', 'T', undefined, {resizeable: true})"), HasSubstr("\"resizeable\""));
    EXPECT_EQ(world.run("new Window('dialog', 'T', undefined, {resizeable: false}).text"), "T");
    EXPECT_EQ(world.run("var names = []; for (var name in b) names.push(b[name]); names.length > 10"), "true");
}

TEST(DialogTree, texts_know_their_side_their_length_and_their_tip) {
    World world;
    world.run(kDialog);
    EXPECT_EQ(world.run("s.justify = 'Right'; e.justify = 'center'; e.characters = 12; b.helpTip = 'Starts it';"
                        "[s.justify, e.justify, e.characters, b.helpTip].join()"),
              "right,center,12,Starts it");
    EXPECT_THAT(world.error("s.justify = 'fill'"), HasSubstr("justified"));
    EXPECT_THAT(world.error("s.justify = 'top'"), HasSubstr("horizontal"));
    EXPECT_EQ(world.run("typeof b.justify + typeof s.characters"), "undefinedundefined");
}

TEST(DialogTree, scripts_may_note_things_of_their_own_on_elements) {
    World world;
    world.run(kDialog);
    EXPECT_EQ(world.run("w.top.input.note = {a: 1}; w.children[0].children[1].note.a"), "1");
    EXPECT_EQ(world.run("b.value = 7; b.opacity = .5; e.checked = true; [b.value, b.opacity, e.checked].join()"),
              "7,0.5,true");
}

TEST(DialogTree, elements_keep_their_window_alive) {
    World world;
    EXPECT_EQ(
        world.run(
            "var b = (function () { var w = new Window('dialog', 'Kept'); return w.add('group').add('button'); })();"
            "for (var i = 0; i < 2000; i++) new Window('dialog', 'gone').add('button'); b.window.text + b.parent.type"),
        "Keptgroup");
}

TEST(DialogTree, windows_that_were_let_go_do_not_pile_up) {
    World world;
    EXPECT_EQ(
        world.run(
            "for (var i = 0; i < 15000; i++) { var w = new Window('dialog'); w.add('button'); } w.children.length"),
        "1");
}

TEST(DialogTree, elements_cannot_be_nested_without_end) {
    World world;
    EXPECT_THAT(world.error("var g = new Window('dialog'); while (true) g = g.add('group');"),
                HasSubstr("nested too deeply"));
    EXPECT_EQ(world.run("g.window.layout.layout(true); g.size.width"), "0");
}

TEST(DialogTree, a_dialog_cannot_grow_without_end) {
    World world;
    EXPECT_THAT(world.error("var w = new Window('dialog'); while (true) w.add('button');"),
                HasSubstr("too many dialog elements"));
}

}  // namespace
}  // namespace script_test
