// One run of the real plug-in over an animation, in the process of the test.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "document/document.h"
#include "runner/plugin_module.h"
#include "runner/session.h"
#include "script/settings.h"
#include "scriptui/dialog_driver.h"
#include "suites/tracer.h"

namespace end_to_end {

class WholeRun {
  public:
    explicit WholeRun(std::string animation, host::model::HostRules rules = {});

    lottie::document::Document& document() { return document_; }
    host::runner::Session& session() { return session_; }
    host::script::Settings& settings() { return settings_; }  // in memory
    // Lines of the entry point, the menu update and the command, in the order of the calls.
    const std::vector<std::string>& trace() const { return tracer_.lines(); }

    // What a person does: selects these layers of the composition (positions from the top, 0 first), picks the command
    // and works its dialog.
    host::runner::VisitResult run(host::model::Comp& comp, const std::vector<int>& selected,
                                  const std::vector<host::scriptui::Action>& actions);

  private:
    lottie::document::Document document_;
    host::script::Settings settings_ = host::script::Settings::in_memory();
    host::scriptui::ScriptedDriver driver_;
    host::runner::PluginModule module_;
    host::suites::Tracer tracer_;
    host::runner::Session session_;
};

// Clicks the control of that name or text.
host::scriptui::Action click(std::string control);
host::scriptui::Action type(std::string control, std::string text);

std::string read_file(const std::string& path);

}  // namespace end_to_end
