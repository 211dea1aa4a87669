// Lines of a trace.
#include "suites/tracer.h"

namespace host::suites {

std::optional<A_Err> Tracer::before(const SuiteCall& call) {
    if (!call.is_basic()) {
        begun_.push_back(std::string(call.accessor()) + "." + std::string(call.function()) + "(" + call.arguments() +
                         ")");
    }
    return std::nullopt;
}

void Tracer::after(const SuiteCall& call) {
    if (call.is_basic()) return;
    std::string line = std::move(begun_.back()) + " = " + std::to_string(call.result());
    begun_.pop_back();
    if (call.is_injected()) line += " (injected)";
    if (!call.complaint().empty()) line += ": " + call.complaint();
    if (const std::string outputs = call.outputs(); !outputs.empty()) line += " -> " + outputs;
    if (sink_)
        sink_(line);
    else
        lines_.push_back(std::move(line));
}

}  // namespace host::suites
