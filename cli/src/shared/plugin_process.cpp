// Runs somebody else's plug-in in a process of its own, so that the command ends properly whatever it does.
#include "shared/plugin_process.h"

#include <algorithm>

#include "base/child_process.h"
#include "shared/installed_parts.h"

namespace cli {
namespace {

using host::base::ProcessEnd;

// Several times what scripts may take, for all files together; pictures are drawn in other processes.
host::base::ProcessLimits limits_for(const Options& options) {
    const auto files = std::max<std::size_t>(1, options.files.size());
    const std::chrono::duration<double> each(4 * options.script_time);
    host::base::ProcessLimits limits;
    limits.processor_time = std::chrono::ceil<std::chrono::seconds>(files * each);
    // People may take their time over a dialog.
    if (!options.dialog) limits.time = 2 * *limits.processor_time + 3 * files * options.picture_time;
    return limits;
}

}  // namespace

ExitCode keep_plugin_apart(const Options& options, const Console& console, const std::function<ExitCode()>& work) {
    if (!is_plugin_chosen() || !host::base::ChildProcess::can_start()) return work();
    host::base::ChildProcess process([&](const auto&) { return static_cast<int>(work()); }, limits_for(options));
    const ProcessEnd& end = process.wait();
    if (end.kind == ProcessEnd::Kind::finished) return static_cast<ExitCode>(end.number);
    print_failure(console, find_plugin().string(), Failure(ExitCode::failed, "the plug-in " + in_words(end)));
    return ExitCode::failed;
}

}  // namespace cli
