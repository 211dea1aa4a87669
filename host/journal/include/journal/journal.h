// Reads a journal: lines checked for syntax and order, values parsed on demand.
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
        session,  // a new project: every plug-in starts again; values: its name
        enter,    // the host is about to call the plug-in; values: arguments
        leave,    // the plug-in returned; values: results
        call,     // the plug-in calls the host; values: arguments
        done,     // the host answers; values: results
        memory,   // what the plug-in sees when it locks memory; values: handle, content
        wrote,    // what the plug-in left in memory, before the call that gives it back; values: handle, content
        end,      // the journal is complete
    };

    Kind kind = Kind::end;
    PluginFunction function = PluginFunction::entry_point;  // enter and leave
    bool is_injected = false;                               // done: an observer refused the call
    bool has_thrown = false;                                // leave: with an exception
    std::int32_t slot = -1;                                 // call: see slot_named()
    std::int32_t code = 0;                                  // done and leave
    std::uint64_t call_number = 0;                          // call and done: counts from 1 in each session
    std::size_t line_number = 0;                            // from 1
    std::string_view values_text;                           // inside the bytes that were read

    std::vector<JournalValue> values() const;
};

// The number of "LayerSuite5.AEGP_GetLayerName" among all slots of all suites, followed by the basic suite's functions
// ("SPBasicSuite.AcquireSuite"); -1 if there is no such function.
std::int32_t slot_named(std::string_view full_name);

struct Journal {
    std::vector<JournalLine> lines;
    bool is_complete = false;   // false: cut short, by a crash or in transfer
    std::size_t last_line = 0;  // the last complete one
};

// Why these bytes are not a journal.
struct Damage {
    std::size_t line;  // from 1
    std::string sentence;
};

// Drops a last line without its newline and counts the journal as cut; any other malformed line is damage. Time and
// memory are proportional to the size, whatever the bytes. They must outlive the journal.
std::variant<Journal, Damage> read(std::string_view bytes);

}  // namespace host::journal
