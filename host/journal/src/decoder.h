// Turns a journal's values into results of C calls.
#pragma once

#include <algorithm>
#include <charconv>
#include <cstring>
#include <limits>
#include <string>
#include <string_view>
#include <type_traits>

#include "fields.h"
#include "journal/value_text.h"
#include "kinds.h"
#include "names.h"

namespace host::journal {

// Resolves the names in a journal.
class HandleResolver {
  public:
    virtual ~HandleResolver() = default;
    // The handle with this name.
    virtual std::uint64_t handle_of(const HandleName& name) = 0;
    // The address of the memory with this name.
    virtual void* memory_of(const HandleName& name) = 0;
};

// All members throw BadValue for a value that does not fit.
class Decoder {
  public:
    explicit Decoder(HandleResolver& giver) : giver_(giver) {}

    template <class T>
    void read(const JournalValue& value, T& into) {
        if constexpr (std::is_floating_point_v<T>) {
            into = real_from(value);
        } else if constexpr (std::is_arithmetic_v<T>) {
            into = whole<T>(value);
        } else if constexpr (is_handle<T>) {
            into = from_raw<T>(handle(value));
        } else if constexpr (std::is_pointer_v<T>) {
            into = nullptr;  // an address that means nothing in this process
        } else if constexpr (std::is_array_v<T> && std::is_same_v<std::remove_extent_t<T>, A_char>) {
            read_text(value, into, sizeof(T));
        } else if constexpr (std::is_array_v<T>) {
            const auto& parts = composed(value, JournalValue::Kind::list);
            if (parts.size() != std::extent_v<T>) throw BadValue("a list has another length");
            for (std::size_t i = 0; i < parts.size(); ++i) read(parts[i], into[i]);
        } else {
            Fields fields{*this, composed(value, JournalValue::Kind::record)};
            std::memset(&into, 0, sizeof into);
            if constexpr (std::is_same_v<T, AEGP_StreamValue2>) {
                fields("value", into.streamH);
                visit_member(fields, into.val, member_of(value));
            } else if constexpr (std::is_same_v<T, AEGP_StreamVal2>) {
                visit_member(fields, into, member_of(value));
            } else {
                visit_fields(fields, into);
            }
            fields.require_end();
        }
    }

    // Copies text and its terminator into a buffer of `room` bytes.
    static void read_text(const JournalValue& value, A_char* into, std::size_t room) {
        if (value.kind != JournalValue::Kind::bytes || value.number != 0) throw BadValue("a text is expected");
        if (value.text.size() >= room) throw BadValue("a text is longer than its room");
        if (value.text.find('\0') != std::string::npos) throw BadValue("a text has a zero in it");
        std::copy(value.text.begin(), value.text.end(), into);
        into[value.text.size()] = '\0';
    }

    void read_address(const JournalValue& value, void*& into) {
        into = value.kind == JournalValue::Kind::name ? giver_.memory_of({value.text, value.number}) : nullptr;
    }

  private:
    struct Fields {
        Decoder& decoder;
        const std::vector<JournalValue>& parts;
        std::size_t next = 0;

        template <class T>
        void operator()(std::string_view field, T& into) {
            if (next == parts.size() || parts[next].field != field)
                throw BadValue("the field " + std::string(field) + " is missing");
            decoder.read(parts[next++], into);
        }
        void require_end() const {
            if (next != parts.size()) throw BadValue("the field " + parts[next].field + " is not known");
        }
    };

    static const std::vector<JournalValue>& composed(const JournalValue& value, JournalValue::Kind kind) {
        if (value.kind != kind)
            throw BadValue(kind == JournalValue::Kind::list ? "a list is expected" : "a record is expected");
        return value.parts;
    }

    template <class T>
    static T whole(const JournalValue& value) {
        std::int64_t number = 0;
        const char* end = value.text.data() + value.text.size();
        const auto [stop, error] = std::from_chars(value.text.data(), end, number);
        if (value.kind != JournalValue::Kind::number || error != std::errc() || stop != end)
            throw BadValue("a whole number is expected");
        if (number < static_cast<std::int64_t>(std::numeric_limits<T>::min()) ||
            number > static_cast<std::int64_t>(std::numeric_limits<T>::max()))
            throw BadValue("a number is too large for its place");
        return static_cast<T>(number);
    }

    std::uint64_t handle(const JournalValue& value) {
        if (value.is_word("null")) return 0;
        if (value.kind != JournalValue::Kind::name) throw BadValue("a handle is expected");
        return giver_.handle_of({value.text, value.number});
    }

    HandleResolver& giver_;
};

}  // namespace host::journal
