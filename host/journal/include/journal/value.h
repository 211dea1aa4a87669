// One value in a journal: an argument, a result or a field of a record.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace host::journal {

struct JournalValue {
    enum class Kind {
        word,    // null, out, table, pointer
        number,  // integer or real, as written
        bytes,   // "..."
        units,   // L"...": UTF-16
        name,    // layer#12
        list,    // [1, 2.5]
        record,  // {num: 1, den: 2}
    };

    Kind kind = Kind::word;
    std::string text;                 // the word or number; bytes; UTF-16 units as little-endian bytes; a name's word
    std::uint64_t number = 0;         // of a name; of bytes or units: how many zero bytes follow
    std::string field;                // its name in the enclosing record; empty outside records
    std::vector<JournalValue> parts;  // of a list or record

    bool operator==(const JournalValue&) const = default;
    bool is_word(std::string_view word) const { return kind == Kind::word && text == word; }
};

}  // namespace host::journal
