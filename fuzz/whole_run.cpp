// Any bytes as names and expressions: the plug-in's command runs over a small project in the real host and ends; what
// it leaves can be written and read, and taking it back gives the first project.
//
// An input is a byte of choices, and then fields, each ended by 0x1F; 0x1E before a byte stands for the byte itself.
#include <array>
#include <chrono>

#include "Exflate.h"
#include "document/document.h"
#include "embedded_jsx.h"
#include "harness.h"
#include "model/error.h"
#include "runner/utf8_locale.h"
#include "script/engine.h"
#include "script/settings.h"
#include "scriptui/dialog_driver.h"
#include "suites/suite_host.h"

namespace {

using lottie::document::Document;

class Input {
  public:
    explicit Input(std::string_view rest) : rest_(rest) {}

    std::uint8_t take_byte() {
        if (rest_.empty()) return 0;
        const char byte = rest_.front();
        rest_.remove_prefix(1);
        return static_cast<std::uint8_t>(byte);
    }

    std::string take_field() {
        std::string field;
        while (!rest_.empty()) {
            const std::uint8_t byte = take_byte();
            if (byte == 0x1F) break;
            field += static_cast<char>(byte == 0x1E ? take_byte() : byte);
        }
        return field;
    }

  private:
    std::string_view rest_;
};

// Every byte as one character.
std::string in_json(std::string_view bytes) {
    std::string text;
    for (const char c : bytes) {
        std::array<char, 8> escape{};
        std::snprintf(escape.data(), escape.size(), "\\u%04x", static_cast<unsigned>(static_cast<unsigned char>(c)));
        text += escape.data();
    }
    return text;
}

// "outer" holds a nest that moves and has an effect; "inner" holds two layers, one the other's child.
std::string animation(std::string_view effect_name) {
    return R"({"v":"5.9.6","fr":30,"ip":0,"op":9,"w":8,"h":6,"nm":"outer","assets":[{"id":"c","nm":"inner","layers":[)"
           R"({"ind":1,"ty":4,"nm":"a","parent":2,"ks":{"r":{"a":0,"k":0}},"shapes":[],"ip":0,"op":9,"st":0},)"
           R"({"ind":2,"ty":4,"nm":"b","ks":{"o":{"a":0,"k":100}},"shapes":[],"ip":0,"op":9,"st":0}]}],"layers":[)"
           R"({"ind":1,"ty":0,"nm":"nest","refId":"c","w":8,"h":6,"ks":{"p":{"a":1,"k":[{"t":0,"s":[1,2,0]},{"t":4,)"
           R"("s":[3,4,0]}]}},"ef":[{"ty":5,"nm":")" +
           in_json(effect_name) +
           R"(","mn":"m","ix":1,"en":1,"ef":[{"ty":0,"nm":"s","ix":1,"v":{"a":0,"k":7}}]}],"ip":0,"op":9,"st":0}]})";
}

void set_names_and_expressions(Document& document, Input& input) {
    host::model::Comp& outer = document.main_comp();
    host::model::Layer& nest = outer.layer_at(0);
    host::model::Comp& inner = *nest.source()->comp();
    nest.rename(input.take_field());
    inner.layer_at(0).rename(input.take_field());
    inner.layer_at(1).rename(input.take_field());
    inner.layer_at(0).stream(host::model::kRotation).set_expression(input.take_field());
    nest.stream(host::model::kPosition).set_expression(input.take_field());
    inner.set_name(input.take_field());
    outer.set_name(input.take_field());
    document.project().open_comp(&outer);
    outer.select({&nest});
    document.project().undo().clear();
}

// What the dialog gives. Not the harness's matter, so the prefix is kept from being anything but a text.
std::string answer(std::uint8_t choices, std::string prefix) {
    std::erase_if(prefix, [](char c) { return c == '"' || c == '\\'; });
    const auto choice = [choices](int bit) { return (choices >> bit & 1) != 0 ? "true" : "false"; };
    return std::string("[") + choice(0) + "," + choice(1) + "," + choice(2) + ",\"" + prefix.substr(0, 50) + "\"," +
           choice(3) + "," + choice(4) + "]";
}

// The plug-in's command once over the project.
void run(host::model::Project& project, const std::string& dialog_result) {
    using namespace host::script;
    using host::suites::SuiteHost;
    using Visit = SuiteHost::Visit;
    Settings settings = Settings::in_memory();
    host::scriptui::ScriptedDriver driver;
    Engine engine(project, settings, driver, {},
                  {.memory = std::size_t{4} << 20, .time = std::chrono::milliseconds(20)});
    const std::string_view dialog = find_embedded_file("mainPanel.jsx", nullptr);
    SuiteHost suites(project, {.run_script = [&](std::string_view text) -> host::suites::ScriptReply {
                                   if (text == dialog) return {.failed = false, .result = dialog_result, .error = {}};
                                   ScriptResult outcome = engine.run(text);
                                   return {outcome.failed, outcome.result, outcome.error};
                               },
                               .report = {}});
    const AEGP_PluginID plugin = suites.add_plugin("plug-in");
    AEGP_GlobalRefcon refcon = nullptr;
    {
        const Visit visit(suites, plugin, host::suites::PluginFunction::entry_point);
        fuzz::require(EntryPointFunc(suites.basic_suite(), 114, 0, plugin, &refcon) == A_Err_NONE,
                      "the plug-in starts");
    }
    const Visit visit(suites, plugin, host::suites::PluginFunction::command_hook);
    A_Boolean handled = 0;
    // Scripts in names may delete what the command works on, so it may end with any code.
    const A_Err code = CommandHook(nullptr, nullptr, S_Exflate_cmd, AEGP_HP_BeforeAE, 0, &handled);
    fuzz::require(handled == 1, "the command is handled");
    fuzz::require(suites.suites_held().empty(), "every suite is released");
    // A name beyond Unicode, which no file can hold, raises an exception; as after a missing suite, the host closes the
    // group.
    const bool has_raised = code == A_Err_GENERIC;
    fuzz::require(project.undo().close_all_groups() == 0 || has_raised, "every undo group is closed");
}

void expect_readable(std::string text) {
    try {
        (void)Document::read(std::move(text));
    } catch (const lottie::document::InputError& error) {
        fuzz::require(false, error.what());
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const bool has_locale = host::runner::use_utf8_locale();
    fuzz::require(has_locale, "the system has a UTF-8 locale");
    Input input(fuzz::text_of(data, size));
    const std::uint8_t choices = input.take_byte();
    const std::string dialog_result = answer(choices, input.take_field());
    Document document = Document::read(animation(input.take_field()));
    set_names_and_expressions(document, input);

    const std::string before = document.write();
    expect_readable(before);
    run(document.project(), dialog_result);
    expect_readable(document.write());
    document.project().undo().undo_all();
    fuzz::require(document.write() == before, "taking the run back gives the first project");
    return 0;
}
