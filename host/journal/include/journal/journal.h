// A journal as it stands in its file: lines checked for form and order, their values read when they are asked for.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "journal/value.h"
#include "suites/plugin_function.h"

namespace host::journal {

using suites::PluginFunction;

// One line.
struct JournalLine {
    enum class Kind : std::uint8_t {
        session,  // a new project: every plug-in is entered anew; values: its name
        enter,    // the host is about to call the plug-in; values: arguments
        leave,    // the plug-in came back; values: results
        call,     // the plug-in calls the host; values: arguments
        done,     // the host answers; values: results
        memory,   // what the plug-in sees when it locks memory; values: its handle, the content
        wrote,    // what the plug-in left in memory, told before the call that gives it back; values: likewise
        end,      // nothing is missing
    };

    Kind kind = Kind::end;
    PluginFunction function = PluginFunction::entry_point;  // enter and leave
    bool is_injected = false;                               // done: an observer refused the call
    bool has_thrown = false;                                // leave: by an exception
    std::int32_t slot = -1;                                 // call: see slot_named()
    std::int32_t code = 0;                                  // done and leave
    std::uint64_t call_number = 0;                          // call and done: counts from 1 in each session
    std::size_t line_number = 0;                            // from 1
    std::string_view values_text;                           // inside the bytes that were read

    std::vector<JournalValue> values() const;
};

// Where a function stands among all slots of all suites, the basic suite's functions following them; -1 if there is
// none. "LayerSuite5.AEGP_GetLayerName", "SPBasicSuite.AcquireSuite"
std::int32_t slot_named(std::string_view full_name);

struct Journal {
    std::vector<JournalLine> lines;
    bool is_complete = false;   // false: cut, by a crash or on its way here
    std::size_t last_line = 0;  // the last whole one
};

// Why bytes are no journal.
struct Damage {
    std::size_t line;  // from 1
    std::string sentence;
};

// A last line without its end is left out and makes the journal a cut one; any other line that is none is damage.
// Whatever the bytes are, time and memory stay in proportion to them. They must outlive the journal.
std::variant<Journal, Damage> read(std::string_view bytes);

}  // namespace host::journal
