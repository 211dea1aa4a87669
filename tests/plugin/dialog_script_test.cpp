// The dialog script, run by a script engine of the same age as the host's against controls that only remember.
#include <duktape.h>
#include <gtest/gtest.h>

#include <memory>
#include <sstream>
#include <string>

#include "embedded_jsx.h"

namespace {

// ScriptUI and the host's settings, as far as the script touches them. scenario(dialog) plays the user.
const char* const kPrelude = R"(
var PREFType = {PREF_Type_MACHINE_SPECIFIC: "machine"};
var settings = {}, saved = [], alerts = [], saveFails = false, unreadable = {};
var app = {settings: {
    haveSetting: function (section, key, type) {
        return settings.hasOwnProperty(section + "|" + key + "|" + type);
    },
    getSetting: function (section, key, type) {
        if (unreadable[key]) { throw new Error("cannot read " + key); }
        if (!this.haveSetting(section, key, type)) { throw new Error("asked for what is not there: " + key); }
        return settings[section + "|" + key + "|" + type];
    },
    saveSetting: function (section, key, value, type) {
        if (saveFails) { throw new Error("no room"); }
        if (typeof value !== "string") { throw new Error("not a text: " + key); }
        settings[section + "|" + key + "|" + type] = value;
        saved.push(key + "=" + value);
    }
}};
function alert(text) { alerts.push(String(text)); }
function Control(type, text) {
    this.type = type; this.text = text; this.children = []; this.preferredSize = {}; this.enabled = true; this.value = false;
}
Control.prototype.add = function (type, bounds, text, properties) {
    var child = new Control(type, type === "group" ? undefined : text);
    properties = type === "group" ? text : properties;
    child.name = properties.name;
    this.children.push(child);
    return child;
};
function Window(type, title, bounds, properties) { Control.call(this, type, title); this.name = properties.name; }
Window.prototype = new Control();
Window.prototype.show = function () { this.shown = true; scenario(this); };
Window.prototype.close = function () { this.closed = true; };
function click(control) {
    if (control.type === "checkbox") { control.value = !control.value; }
    if (control.type === "radiobutton") { control.value = true; }
    if (control.onClick) { control.onClick(); }
}
var scenario = function () {};
function names(control) {
    var text = control.name, i;
    for (i = 0; i < control.children.length; i += 1) { text += " " + names(control.children[i]); }
    return text;
}
function tree(control) {
    var text = control.type + (control.text ? " '" + control.text + "'" : "");
    var parts = [], i;
    if (control.orientation) { text += " " + control.orientation + " [" + control.alignChildren + "] " + control.spacing + " [" + control.margins + "]"; }
    if (control.alignment) { text += " @[" + control.alignment + "]"; }
    if (control.preferredSize.width) { text += " w" + control.preferredSize.width; }
    for (i = 0; i < control.children.length; i += 1) { parts.push(tree(control.children[i])); }
    return text + (parts.length ? " {" + parts.join("; ") + "}" : "");
}
)";

class DialogScript : public testing::Test {
  protected:
    DialogScript() : engine_(duk_create_heap_default(), duk_destroy_heap) {
        run("(function () { delete this.JSON; }());");
        run(kPrelude);
    }

    // The value of the script's last statement as text.
    std::string run(const std::string& script) {
        duk_context* context = engine_.get();
        const bool failed = duk_peval_lstring(context, script.data(), script.size()) != 0;
        const std::string text = duk_safe_to_string(context, -1);
        duk_pop(context);
        EXPECT_FALSE(failed) << text;
        return text;
    }

    std::string run_dialog(const std::string& scenario = "") {
        run("scenario = function (dialog) {" + scenario + "};");
        return run(find_embedded_file("mainPanel.jsx", nullptr));
    }

    void set(const std::string& key, const std::string& value) {
        run("settings['corvane.exflate|" + key + "|machine'] = '" + value + "';");
    }

  private:
    std::unique_ptr<duk_context, void (*)(duk_context*)> engine_;
};

}  // namespace

TEST_F(DialogScript, closing_without_a_button_gives_an_empty_text) {
    EXPECT_EQ(run_dialog(), "");
    EXPECT_EQ(run("dialog.shown"), "true");
    EXPECT_EQ(run("saved.length"), "0");
    EXPECT_EQ(run("[optionCopyAttributes.value, optionDiscardAttributes.value]"), "true,false");
}

TEST_F(DialogScript, cancel_gives_an_empty_text_and_saves_nothing) {
    EXPECT_EQ(run_dialog("click(optionDeleteSource); click(buttonCancel);"), "");
    EXPECT_EQ(run("dialog.closed"), "true");
    EXPECT_EQ(run("saved.length"), "0");
}

TEST_F(DialogScript, cancel_takes_an_earlier_ok_back) {
    EXPECT_EQ(run_dialog("click(buttonOK); click(buttonCancel);"), "");
}

TEST_F(DialogScript, ok_on_first_use_gives_the_defaults) {
    EXPECT_EQ(run_dialog("click(buttonOK);"), R"([true,false,false,"",false,false])");
    EXPECT_EQ(run("dialog.closed"), "true");
    EXPECT_EQ(run("saved.join(' ')"),
              "settingCopyPrecompAttr=true settingPrefixInput= settingDeleteSource=false settingKeepInComp=false "
              "settingPrependPrecompName=false settingFixRandomExpressions=false");
    EXPECT_EQ(run("optionDeleteSource.enabled && optionKeepInComp.enabled"), "true");
}

TEST_F(DialogScript, result_follows_the_controls) {
    EXPECT_EQ(run_dialog("click(optionDiscardAttributes); click(optionDeleteSource); prefixInput.text = 'fx';"
                         "click(optionPrependPrecompName); click(optionFixRandomExpresions); click(buttonOK);"),
              R"([false,true,false,"fx",true,true])");
    EXPECT_EQ(run_dialog("click(optionDeleteSource); click(optionKeepInComp); click(buttonOK);"),
              R"([false,false,true,"fx",true,true])");
}

TEST_F(DialogScript, settings_are_asked_for_in_the_order_in_which_they_are_saved) {
    run("var asked = [], have = app.settings.haveSetting;"
        "app.settings.haveSetting = function (section, key, type) { asked.push(key); return have(section, key, type); "
        "};");
    run_dialog("click(buttonOK);");
    EXPECT_EQ(run("asked.join(' ')"),
              "settingCopyPrecompAttr settingPrefixInput settingDeleteSource settingKeepInComp "
              "settingPrependPrecompName settingFixRandomExpressions");
}

TEST_F(DialogScript, radio_buttons_uncheck_each_other) {
    run_dialog("click(optionDiscardAttributes);");
    EXPECT_EQ(run("[optionCopyAttributes.value, optionDiscardAttributes.value]"), "false,true");
    run("click(optionCopyAttributes);");
    EXPECT_EQ(run("[optionCopyAttributes.value, optionDiscardAttributes.value]"), "true,false");
}

TEST_F(DialogScript, deleting_the_source_and_keeping_the_layer_disable_each_other) {
    run_dialog("click(optionDeleteSource);");
    EXPECT_EQ(run("[optionDeleteSource.enabled, optionKeepInComp.enabled]"), "true,false");
    run("click(optionDeleteSource); click(optionKeepInComp);");
    EXPECT_EQ(run("[optionDeleteSource.enabled, optionKeepInComp.enabled]"), "false,true");
    run("click(optionKeepInComp);");
    EXPECT_EQ(run("[optionDeleteSource.enabled, optionKeepInComp.enabled]"), "true,true");
}

// What was saved, without "setting" in front of each key; the result of "Ok"; and whether discarding is chosen,
// deleting enabled and keeping enabled.
struct SavedCase {
    const char* name;
    const char* saved;
    const char* result;
    const char* controls;

    friend void PrintTo(const SavedCase& tested, std::ostream* out) { *out << tested.name; }
};

const SavedCase kSavedCases[] = {
    {"all_choices",
     "CopyPrecompAttr=false PrefixInput=old DeleteSource=true KeepInComp=false PrependPrecompName=true "
     "FixRandomExpressions=true",
     R"([false,true,false,"old",true,true])", "true,true,false"},
    {"any_other_text_as_false",
     "CopyPrecompAttr=TRUE DeleteSource=yes KeepInComp=1 PrependPrecompName= FixRandomExpressions=false",
     R"([false,false,false,"",false,false])", "true,true,true"},
    {"deleting_and_keeping_as_keeping", "DeleteSource=true KeepInComp=true", R"([true,false,true,"",false,false])",
     "false,false,false"},
    {"discarding_alone", "CopyPrecompAttr=no", R"([false,false,false,"",false,false])", "true,true,true"},
    {"prefix_alone", "PrefixInput=no", R"([true,false,false,"no",false,false])", "false,true,true"},
    {"deleting_alone", "DeleteSource=true", R"([true,true,false,"",false,false])", "false,true,false"},
    {"keeping_alone", "KeepInComp=true", R"([true,false,true,"",false,false])", "false,false,true"},
    {"prepending_alone", "PrependPrecompName=true", R"([true,false,false,"",true,false])", "false,true,true"},
    {"seeding_alone", "FixRandomExpressions=true", R"([true,false,false,"",false,true])", "false,true,true"},
};

class SavedChoices : public DialogScript, public testing::WithParamInterface<SavedCase> {};

TEST_P(SavedChoices, come_back) {
    std::istringstream saved(GetParam().saved);
    for (std::string setting; saved >> setting;) {
        const std::size_t sign = setting.find('=');
        set("setting" + setting.substr(0, sign), setting.substr(sign + 1));
    }
    EXPECT_EQ(run_dialog("click(buttonOK);"), GetParam().result);
    EXPECT_EQ(run("[optionDiscardAttributes.value, optionDeleteSource.enabled, optionKeepInComp.enabled]"),
              GetParam().controls);
    EXPECT_EQ(run("alerts.length"), "0");
}

INSTANTIATE_TEST_SUITE_P(Cases, SavedChoices, testing::ValuesIn(kSavedCases),
                         [](const auto& saved) { return saved.param.name; });

TEST_F(DialogScript, a_setting_that_cannot_be_read_is_shown_and_the_others_come_back) {
    for (const char* key : {"settingCopyPrecompAttr", "settingPrefixInput", "settingDeleteSource", "settingKeepInComp",
                            "settingPrependPrecompName", "settingFixRandomExpressions"}) {
        for (const char* each : {"settingPrependPrecompName", "settingFixRandomExpressions"}) set(each, "true");
        set(key, "true");
        run(std::string("alerts = []; unreadable = {}; unreadable['") + key + "'] = true;");
        run_dialog();
        EXPECT_EQ(run("alerts.join('|')"), std::string("Error: cannot read ") + key);
        EXPECT_EQ(run("dialog.shown"), "true");
        EXPECT_EQ(run("String(optionPrependPrecompName.value)"),
                  key == std::string("settingPrependPrecompName") ? "false" : "true");
        run("settings = {};");
    }
}

TEST_F(DialogScript, radio_buttons_that_are_clicked_again_stay) {
    run_dialog("click(optionCopyAttributes); click(optionCopyAttributes);");
    EXPECT_EQ(run("[optionCopyAttributes.value, optionDiscardAttributes.value]"), "true,false");
}

TEST_F(DialogScript, result_has_each_choice_in_its_place) {
    const std::pair<const char*, const char*> clicks[] = {
        {"optionCopyAttributes", R"([true,false,false,"",false,false])"},
        {"optionDiscardAttributes", R"([false,false,false,"",false,false])"},
        {"optionDeleteSource", R"([true,true,false,"",false,false])"},
        {"optionKeepInComp", R"([true,false,true,"",false,false])"},
        {"optionPrependPrecompName", R"([true,false,false,"",true,false])"},
        {"optionFixRandomExpresions", R"([true,false,false,"",false,true])"}};
    for (const auto& [control, result] : clicks) {
        run("settings = {}; saved = [];");
        EXPECT_EQ(run_dialog(std::string("click(") + control + "); click(buttonOK);"), result);
        EXPECT_EQ(run("saved.join().replace(/=[^,]*/g, '')"),
                  "settingCopyPrecompAttr,settingPrefixInput,settingDeleteSource,settingKeepInComp,"
                  "settingPrependPrecompName,settingFixRandomExpressions");
    }
}

TEST_F(DialogScript, a_failed_save_ends_the_saving) {
    run("var attempts = 0; app.settings.saveSetting = function () { attempts += 1; throw new Error('full'); };");
    EXPECT_EQ(run_dialog("click(buttonOK);"), R"([true,false,false,"",false,false])");
    EXPECT_EQ(run("attempts + alerts.join()"), "1Error: full");
    EXPECT_EQ(run("dialog.closed"), "true");
}

TEST_F(DialogScript, settings_of_another_kind_are_not_read) {
    run("settings['corvane.exflate|settingPrefixInput|other'] = 'x'; settings['other|settingPrefixInput|machine'] = "
        "'x';");
    EXPECT_EQ(run_dialog("click(buttonOK);"), R"([true,false,false,"",false,false])");
}

TEST_F(DialogScript, failed_save_is_shown_and_the_result_still_given) {
    run("saveFails = true;");
    EXPECT_EQ(run_dialog("click(buttonOK);"), R"([true,false,false,"",false,false])");
    EXPECT_EQ(run("alerts.join('|')"), "Error: no room");
}

TEST_F(DialogScript, runs_again_and_again_in_one_engine) {
    EXPECT_EQ(run_dialog("prefixInput.text = 'a'; click(buttonOK);"), R"([true,false,false,"a",false,false])");
    EXPECT_EQ(run_dialog(), "") << "a result of an earlier run";
    EXPECT_EQ(run_dialog("click(buttonOK);"), R"([true,false,false,"a",false,false])");
}

TEST_F(DialogScript, opens_in_an_engine_of_the_languages_third_edition) {
    run("var newer = [[Object, 'create defineProperty defineProperties freeze getOwnPropertyDescriptor "
        "getOwnPropertyNames "
        "getPrototypeOf keys seal'], [Array, 'isArray'], [Array.prototype, 'every filter forEach indexOf lastIndexOf "
        "map "
        "reduce reduceRight some'], [Date, 'now'], [Date.prototype, 'toISOString toJSON'], [Function.prototype, "
        "'bind'], "
        "[String.prototype, 'trim']], i, j, names;"
        "for (i = 0; i < newer.length; i += 1) {"
        "    names = newer[i][1].split(' ');"
        "    for (j = 0; j < names.length; j += 1) { delete newer[i][0][names[j]]; }"
        "}"
        // Pattern texts are read differently from engine to engine.
        "RegExp = function () { throw new Error('a pattern was built from text'); };");
    EXPECT_EQ(run_dialog("prefixInput.text = 'a\"\\u2028'; click(buttonOK);"),
              R"([true,false,false,"a\"\u2028",false,false])");
    EXPECT_EQ(run("alerts.length"), "0");
    EXPECT_EQ(run("JSON.parse('[1,\"x\"]').join()"), "1,x");
}

TEST_F(DialogScript, builds_its_controls_in_order) {
    run_dialog();
    EXPECT_EQ(run("tree(dialog)"),
              "dialog 'Exflate' column [fill,top] 10 [16] {"
              "group row [left,center] 10 [0] {statictext 'Exflated Layer Prefix'; edittext w250}; "
              "group column [left,center] 10 [20,0,0,0] {"
              "group column [left,center] 10 [0] {radiobutton 'Copy pre-comp attributes to layers' @[left,center]; "
              "group row [left,center] 10 [20,0,0,8] {group column [left,center] 0 [0] w400 {"
              "statictext 'Use this option if you would like to copy the effects and other'; "
              "statictext 'attributes of the pre-comp to the layers being extracted'}}}; "
              "group column [left,center] 10 [0] {radiobutton 'Discard pre-comp attributes'; "
              "group row [left,center] 10 [20,0,0,12] {"
              "statictext 'Use this option to extract all layers, but disregard the'; "
              "statictext 'properties of the pre-comp layer'}}; "
              "checkbox 'Delete source after exflating'; checkbox 'Keep pre-comp in composition'; "
              "checkbox 'Prepend pre-comp name to extracted layers'; "
              "checkbox 'Attempt to correct layers with randomized expressions'; "
              "group row [right,center] 10 [0,20,0,0] @[fill,center] {button 'Ok' w100; button 'Cancel' w100}}}");
}

TEST_F(DialogScript, names_its_controls) {
    run_dialog();
    EXPECT_EQ(
        run("names(dialog)"),
        "dialog prefixGroup prefixTitle prefixInput optionsGroup option1Group optionCopyAttributes staticText1Group "
        "staticText1 staticText1Line1 staticText1Line2 option2Group optionDiscardAttributes staticText2Group "
        "staticText2Line1 staticText2Line2 optionDeleteSource optionKeepInComp prependPrecompName "
        "fixRandomExpresions buttons buttonOK buttonCancel");
}

// ---- JSON, where the engine has none

class Json : public DialogScript {
  protected:
    void SetUp() override { run_dialog(); }
};

TEST_F(Json, is_left_alone_where_the_engine_has_one) {
    run("JSON = {stringify: function () { return 'own'; }};");
    EXPECT_EQ(run_dialog("click(buttonOK);"), "own");
}

TEST_F(Json, quotes_text_with_escapes) {
    EXPECT_EQ(run(R"(JSON.stringify('a"b\\c/d'))"), R"("a\"b\\c/d")");
    EXPECT_EQ(run(R"(JSON.stringify('\b\t\n\f\r\u0000\u001f\u007f'))"), R"("\b\t\n\f\r\u0000\u001f\u007f")");
    EXPECT_EQ(run(R"(JSON.stringify('\u00ad\u0600\u070f\u17b4\u200c\u2028\u2029\u2060\ufeff\uffff'))"),
              R"("\u00ad\u0600\u070f\u17b4\u200c\u2028\u2029\u2060\ufeff\uffff")");
    EXPECT_EQ(run("JSON.stringify('caf\xc3\xa9 \xe4\xb8\xad')"), "\"caf\xc3\xa9 \xe4\xb8\xad\"");
}

TEST_F(Json, quotes_only_what_needs_an_escape) {
    EXPECT_EQ(run(R"(
        var ranges = [[0, 0x1f], [0x22, 0x22], [0x5c, 0x5c], [0x7f, 0x9f], [0xad, 0xad], [0x600, 0x604], [0x70f, 0x70f],
                      [0x17b4, 0x17b5], [0x200c, 0x200f], [0x2028, 0x202f], [0x2060, 0x206f], [0xfeff, 0xfeff],
                      [0xfff0, 0xffff]];
        var all = [], plain = [], unit = 0, n;
        for (n = 0; n <= ranges.length; n += 1) {
            for (; unit < (n < ranges.length ? ranges[n][0] : 0x10000); unit += 1) {
                plain.push(String.fromCharCode(unit));
            }
            for (; n < ranges.length && unit <= ranges[n][1]; unit += 1) {
                all.push(String.fromCharCode(unit));
            }
        }
        var text = all.join(''), unescaped = plain.join('');
        [JSON.stringify(unescaped) === '"' + unescaped + '"', JSON.parse(JSON.stringify(text)) === text,
         JSON.stringify(text).slice(1, -1).split(/\\(?:u[0-9a-f]{4}|.)/).length - 1 === text.length].join())"),
              "true,true,true");
}

TEST_F(Json, writes_every_kind_of_value) {
    EXPECT_EQ(run("JSON.stringify([1, -1.5, 1e21, true, false, null, 'x', [], {}])"),
              R"([1,-1.5,1e+21,true,false,null,"x",[],{}])");
    EXPECT_EQ(run("JSON.stringify([NaN, Infinity, undefined, function () {}])"), "[null,null,null,null]");
    EXPECT_EQ(run("JSON.stringify({a: undefined, b: function () {}, c: 1, 'd e': {f: [2]}})"),
              R"({"c":1,"d e":{"f":[2]}})");
    EXPECT_EQ(run("JSON.stringify([new Number(3), new String('s'), new Boolean(false)])"), R"([3,"s",false])");
    EXPECT_EQ(run("typeof JSON.stringify(undefined)"), "undefined");
}

TEST_F(Json, leaves_inherited_members_out) {
    EXPECT_EQ(run("function P() { this.own = 1; } P.prototype.inherited = 2; JSON.stringify(new P())"), R"({"own":1})");
}

TEST_F(Json, asks_to_json_with_the_key) {
    EXPECT_EQ(run("JSON.stringify({a: {toJSON: function (key) { return 'at ' + key; }}})"), R"({"a":"at a"})");
    EXPECT_EQ(run("JSON.stringify([{toJSON: function (key) { return typeof key + key; }}])"), R"(["string0"])");
    EXPECT_EQ(run("delete Date.prototype.toJSON; JSON.stringify(new Date(Date.UTC(2020, 1, 3, 4, 5, 6)))"),
              R"("2020-02-03T04:05:06Z")");
    EXPECT_EQ(run("JSON.stringify(new Date(NaN))"), "null");
}

TEST_F(Json, writes_dates_with_two_digits_each) {
    EXPECT_EQ(run("delete Date.prototype.toJSON; JSON.stringify([new Date(Date.UTC(2020, 9, 10, 9, 10, 11)),"
                  "new Date(Date.UTC(1999, 11, 31, 23, 59, 59)), new Date(Date.UTC(2001, 0, 1, 0, 0, 0))])"),
              R"(["2020-10-10T09:10:11Z","1999-12-31T23:59:59Z","2001-01-01T00:00:00Z"])");
}

TEST_F(Json, heeds_replacer_and_space) {
    EXPECT_EQ(run("JSON.stringify({a: 1, b: [2, 3]}, function (k, v) { return v === 2 ? undefined : v; })"),
              R"({"a":1,"b":[null,3]})");
    EXPECT_EQ(run("JSON.stringify({a: 1, b: {a: 2, c: 3}}, ['a', 'b'])"), R"({"a":1,"b":{"a":2}})");
    EXPECT_EQ(run("JSON.stringify({a: [1, 2], b: {}}, null, 2)"), "{\n  \"a\": [\n    1,\n    2\n  ],\n  \"b\": {}\n}");
    EXPECT_EQ(run("JSON.stringify([1], null, '--')"), "[\n--1\n]");
    EXPECT_EQ(run("try { JSON.stringify([1], 'x'); 'none'; } catch (e) { e.message; }"), "JSON.stringify");
}

TEST_F(Json, reads_what_it_writes) {
    EXPECT_EQ(run("var v = JSON.parse('[true,false,null,-1.5e3,\"a\\\\u00e9\\\\n\",{\"k\":[{}]}]');"
                  "[v[0], v[1], v[2] === null, v[3], v[4], v[5].k.length].join('|')"),
              "true|false|true|-1500|a\xc3\xa9\n|1");
    EXPECT_EQ(run("JSON.parse(' \"s\" ')"), "s");
    EXPECT_EQ(run("JSON.parse('7')"), "7");
    EXPECT_EQ(run("JSON.parse('\"\\u2028\"') === '\\u2028'"), "true") << "a line end to engines that read program text";
    EXPECT_EQ(run("var a = []; for (var i = 0; i < 12000; i += 1) { a.push([i, 'x']); }"
                  "JSON.parse(JSON.stringify(a)).length"),
              "12000");
}

TEST_F(Json, revives_from_the_inside_out) {
    EXPECT_EQ(run("var order = []; var v = JSON.parse('{\"a\":[1,2],\"b\":3}', function (k, v) {"
                  "order.push(k); return k === 'b' ? undefined : typeof v === 'number' ? v * 10 : v; });"
                  "[order.join(), v.a.join(), 'b' in v].join('|')"),
              "0,1,a,b,|10,20|false");
}

TEST_F(Json, revives_texts_and_nulls_as_wholes) {
    EXPECT_EQ(run("var order = []; JSON.parse('{\"text\":\"xy\",\"none\":null,\"list\":[\"z\"]}', function (k, v) {"
                  "order.push(k); return v; }); order.join()"),
              "text,none,0,list,");
}

TEST_F(Json, refuses_everything_else_without_running_it) {
    EXPECT_EQ(run(R"script(
        var texts = [
            '', ' ', '[', ']', '[1,]', '[,1]', '[1 2]', '[s]', '[1}', '[1],[2]', '[1][0]', '[1]//', '[alert(1)]',
            '{', '{a:1}', '{\'a\':1}', '{"a":}', '{"a":1,}', '{1:2}', '{}[0]', '{"a":1}{}', '{"a":1]', '{"a":alert(1)}',
            '01', '1.', '.5', '+1', '- 1', '0x10', '1,2', '/**/1', '\ufeff1', '\u2028[1]', '1;alert(1)', 'a=1',
            'nul', 'truefalse', 'NaN', 'undefined', 's', 'v', '@', '!', '/x/', '`x`', 'alert(1)', '(alert(1))',
            '"a', '"\\x41"', '"a\nb"', '\\"', '"a"["length"]', '"x"+alert(1)'];
        var accepted = [], reason, i;
        for (i = 0; i < texts.length; i += 1) {
            reason = 'accepted';
            try { JSON.parse(texts[i]); } catch (e) { reason = e.name + e.message; }
            if (reason !== 'SyntaxErrorJSON.parse') { accepted.push(texts[i] + ': ' + reason); }
        }
        texts.length + accepted.join())script"),
              "53");
    EXPECT_EQ(run("alerts.length"), "0");
}
