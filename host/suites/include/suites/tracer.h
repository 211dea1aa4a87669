// Logs every call as a line of text, but for acquisitions, releases and blocks.
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "suites/call.h"

namespace host::suites {

// LayerSuite5.AEGP_GetLayerIndex(layer 12 "Sky") = 0 -> 3
// LayerSuite5.AEGP_DeleteLayer(null) = 3: the layer handle is null
class Tracer : public Observer {
  public:
    using Sink = std::function<void(std::string_view line)>;

    Tracer() = default;                                     // collects lines
    explicit Tracer(Sink sink) : sink_(std::move(sink)) {}  // passes on each line when its call ends

    std::optional<A_Err> before(const SuiteCall& call) override;
    void after(const SuiteCall& call) override;

    const std::vector<std::string>& lines() const { return lines_; }
    void clear() { lines_.clear(); }

  private:
    Sink sink_;
    std::vector<std::string> begun_;  // calls nest when a script runs
    std::vector<std::string> lines_;
};

}  // namespace host::suites
