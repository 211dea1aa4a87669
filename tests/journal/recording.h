// A plug-in's command recorded in the process of the test.
#pragma once

#include <string>
#include <vector>

#include "document/document.h"
#include "journal/journal.h"
#include "journal/replay.h"
#include "journal/writer.h"
#include "runner/plugin_module.h"
#include "runner/session.h"
#include "suites/fault_injector.h"

namespace test {

// What the plug-in does is chosen by the environment.
class Chosen {
  public:
    Chosen(const char* variable, const std::string& value);
    ~Chosen();
    Chosen(const Chosen&) = delete;

  private:
    const char* variable_;
};

class Recording {
  public:
    explicit Recording(const std::string& module);

    host::suites::FaultInjector faults;  // counts from the start of the command

    // Starts the plug-in and picks its command over the first layer of a small animation, pressing Ok in every dialog.
    host::runner::VisitResult run();

    const std::string& text() const { return text_; }
    std::vector<std::string> lines() const;
    // The number of the first line that begins like this; 0 if there is none.
    std::size_t line_of(const std::string& begin) const;
    host::journal::ReplayVerdict replay() const { return replay(text_); }
    host::journal::ReplayVerdict replay(const std::string& journal) const;

  private:
    host::runner::PluginModule module_;
    std::string text_;
};

// "same", "cut", "differs LINE: sentence" or "damaged LINE: sentence".
std::string words(const host::journal::ReplayVerdict& verdict);

}  // namespace test
