// Writes a journal while a plug-in runs.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "suites/call.h"

namespace host::journal {

// Add it as an observer to each session's host. The sink gets each line, with its newline, before the event can crash
// the program: a call before it runs, its answer before the plug-in sees it.
class JournalWriter : public suites::Observer {
  public:
    using Sink = std::function<void(std::string_view line)>;

    // Writes the first line. The sink must not throw.
    explicit JournalWriter(Sink sink);
    ~JournalWriter() override;

    // A new project, in which every plug-in starts again. The name is for readers.
    void begin_session(std::string_view name);
    // Writes the last line, which says that the journal is complete.
    void finish();

    void entering(const suites::PluginCall& call) override;
    void left(const suites::PluginCall& call, A_Err result, bool has_thrown) override;
    std::optional<A_Err> before(const suites::SuiteCall& call) override;
    void after(const suites::SuiteCall& call) override;

  private:
    class Scribe;
    std::unique_ptr<Scribe> scribe_;
};

}  // namespace host::journal
