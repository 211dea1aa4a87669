// A plug-in's command recorded in the process of the test.
#include "recording.h"

#include <cstdlib>
#include <sstream>
#include <stdexcept>

#include "runner/utf8_locale.h"
#include "scriptui/dialog_driver.h"

namespace test {
namespace {

namespace journal = host::journal;

// A nest over a layer; the nest has two layers, one of them with an expression.
constexpr const char* kAnimation =
    R"({"v":"5.7.4","fr":25,"ip":0,"op":50,"w":100,"h":80,"nm":"Main","ddd":0,"assets":[{"id":"a","nm":"Inner","layers":[)"
    R"({"ddd":0,"ind":1,"ty":4,"nm":"dot","sr":1,"ks":{"o":{"a":0,"k":100},"r":{"a":0,"k":5,"x":"var $bm_rt;\n$bm_rt = 3;"},)"
    R"("p":{"a":0,"k":[1,2,0]},"a":{"a":0,"k":[0,0,0]},"s":{"a":0,"k":[100,100,100]}},"ao":0,"shapes":[],"ip":0,"op":50,)"
    R"("st":0,"bm":0},{"ddd":0,"ind":2,"ty":4,"nm":"line","parent":1,"sr":1,"ks":{},"ao":0,"shapes":[],"ip":0,"op":50,)"
    R"("st":0,"bm":0}]}],"layers":[{"ddd":0,"ind":1,"ty":0,"nm":"Nest","refId":"a","sr":1,"ks":{"o":{"a":0,"k":80},)"
    R"("r":{"a":0,"k":0},"p":{"a":1,"k":[{"t":0,"s":[0,0,0],"i":{"x":0.6,"y":1},"o":{"x":0.3,"y":0}},{"t":25,)"
    R"("s":[50,20,0]}]},"a":{"a":0,"k":[0,0,0]},"s":{"a":0,"k":[100,100,100]}},"ao":0,"w":100,"h":80,"ip":0,"op":50,)"
    R"("st":0,"bm":0},{"ddd":0,"ind":2,"ty":4,"nm":"Back","sr":1,"ks":{},"ao":0,"shapes":[],"ip":0,"op":50,"st":0,)"
    R"("bm":0}],"markers":[]})";

struct PressesOk : host::scriptui::DialogDriver {
    void drive(host::scriptui::Window& window) override { window.click(window.control("Ok")); }
};

}  // namespace

Chosen::Chosen(const char* variable, const std::string& value) : variable_(variable) {
    setenv(variable, value.c_str(), 1);
}
Chosen::~Chosen() {
    unsetenv(variable_);
}

Recording::Recording(const std::string& module) : module_(module) {
    host::runner::use_utf8_locale();
}

host::runner::VisitResult Recording::run() {
    text_.clear();
    lottie::document::Document document = lottie::document::Document::read(kAnimation);
    host::script::Settings settings = host::script::Settings::in_memory();
    PressesOk dialogs;
    journal::JournalWriter writer([this](std::string_view line) { text_ += line; });
    writer.begin_session("small.json");
    host::runner::Session session(document.project(), settings, dialogs);
    session.suites().add_observer(faults);
    session.suites().add_observer(writer);
    session.start(module_);
    host::model::Comp& comp = document.main_comp();
    document.project().set_active_panel(host::model::ActivePanel::timeline);
    document.project().open_comp(&comp);
    comp.select({&comp.layer_at(0)});
    host::runner::VisitResult outcome;
    if (!session.menu_items().empty()) outcome = session.run_command(session.menu_items().front().command);
    session.idle();
    session.quit();
    writer.finish();
    return outcome;
}

std::vector<std::string> Recording::lines() const {
    std::vector<std::string> lines;
    std::istringstream stream(text_);
    for (std::string line; std::getline(stream, line);) lines.push_back(line);
    return lines;
}

std::size_t Recording::line_of(const std::string& begin) const {
    const std::vector<std::string> all = lines();
    for (std::size_t i = 0; i < all.size(); ++i)
        if (all[i].find(begin) != std::string::npos) return i + 1;
    return 0;
}

journal::ReplayVerdict Recording::replay(const std::string& text) const {
    const auto result = journal::read(text);
    if (const auto* damage = std::get_if<journal::Damage>(&result))
        return {journal::ReplayVerdict::Kind::damaged, damage->line, damage->sentence};
    return journal::replay(std::get<journal::Journal>(result), module_.entry_point());
}

std::string words(const journal::ReplayVerdict& verdict) {
    const std::string rest = ' ' + std::to_string(verdict.line) + ": " + verdict.sentence;
    switch (verdict.kind) {
        case journal::ReplayVerdict::Kind::same:
            return "same";
        case journal::ReplayVerdict::Kind::same_to_cut:
            return "cut" + rest;
        case journal::ReplayVerdict::Kind::differs:
            return "differs" + rest;
        case journal::ReplayVerdict::Kind::damaged:
            return "damaged" + rest;
    }
    return "";
}

}  // namespace test
