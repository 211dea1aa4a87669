// Replays a journal against a plug-in.
#pragma once

#include <chrono>
#include <cstddef>
#include <string>

#include "AE_GeneralPlug.h"
#include "journal/journal.h"

namespace host::journal {

struct ReplayVerdict {
    enum class Kind {
        same,         // from the first line to the last
        same_to_cut,  // as far as the journal goes, which was cut short
        differs,      // the plug-in did something else
        damaged,      // a line cannot be replayed
    };

    Kind kind;
    std::size_t line;      // of the difference or the damage, else the last one replayed
    std::string sentence;  // one, without its full stop
};

// Calls the plug-in as the journal says, answers its calls as they were answered then, and compares everything it does.
// The plug-in runs in a child process that ends at the first difference, so its crashes stay there; it may use the
// processor for `longest`, and three times as long by the clock. Throws std::runtime_error if the child cannot be
// started.
ReplayVerdict replay(const Journal& journal, AEGP_PluginInitFunc entry_point,
                     std::chrono::seconds longest = std::chrono::minutes(10));

}  // namespace host::journal
