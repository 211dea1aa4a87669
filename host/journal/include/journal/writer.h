// Writes a journal while a plug-in runs.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "suites/call.h"

namespace host::journal {

// To be added to the observers of each session's host. Each line goes to the sink, with its end, before what it tells
// of can bring the program down: a call before it runs, its answer before the plug-in sees it.
class JournalWriter : public suites::Observer {
  public:
    using Sink = std::function<void(std::string_view line)>;

    // Writes the first line. The sink must not throw.
    explicit JournalWriter(Sink sink);
    ~JournalWriter() override;

    // A new project: plug-ins are entered anew. The name is for people.
    void begin_session(std::string_view name);
    // The last line: nothing is missing.
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
