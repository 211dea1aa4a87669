// Plays the host to a plug-in from a journal alone.
#pragma once

#include <cstddef>
#include <string>

#include "AE_GeneralPlug.h"
#include "journal/journal.h"

namespace host::journal {

struct ReplayVerdict {
    enum class Kind {
        same,         // from the first line to the last
        same_to_cut,  // as far as the journal goes
        differs,      // the plug-in did something else
        damaged,      // a line cannot be played
    };

    Kind kind;
    std::size_t line;      // of the difference or the damage, else the last one played
    std::string sentence;  // one, without its end
};

// Enters the plug-in as often as the journal says, answers its calls as they were answered then, and compares all it
// does. The plug-in runs in a child process that ends with the first difference: what it does to itself, crashes
// included, stays there. Throws std::runtime_error if there can be no child.
ReplayVerdict replay(const Journal& journal, AEGP_PluginInitFunc entry_point);

}  // namespace host::journal
