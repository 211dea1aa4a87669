// One value of a journal's line: an argument, a result, a record's field.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace host::journal {

struct JournalValue {
    enum class Kind {
        word,    // null, out, table, pointer
        number,  // whole or not; as it was written
        bytes,   // "..."
        units,   // L"...": UTF-16
        name,    // layer#12
        list,    // [1, 2.5]
        record,  // {num: 1, den: 2}
    };

    Kind kind = Kind::word;
    std::string text;                 // the word or number; bytes; UTF-16 units as bytes, low byte first; a name's word
    std::uint64_t number = 0;         // of a name; how many zero bytes follow bytes or units
    std::string field;                // what the record around it calls it; empty outside of records
    std::vector<JournalValue> parts;  // of a list or record

    bool operator==(const JournalValue&) const = default;
    bool is_word(std::string_view word) const { return kind == Kind::word && text == word; }
};

}  // namespace host::journal
