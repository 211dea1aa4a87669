// Writes arguments and results of C calls as a journal's text.
#pragma once

#include <cstring>
#include <string>
#include <string_view>
#include <type_traits>

#include "fields.h"
#include "journal/value_text.h"
#include "kinds.h"
#include "value_member.h"

namespace host::journal {

// Names handles and addresses. Never called for null, which is written as such.
class HandleNamer {
  public:
    virtual ~HandleNamer() = default;
    // A handle that the plug-in passes to the host.
    virtual std::string used(std::uint64_t handle) = 0;
    // A handle that the host passes to the plug-in; `word` names a new one.
    virtual std::string given(std::uint64_t handle, std::string_view word) = 0;
    // An address of the plug-in's own.
    virtual std::string own(std::uint64_t address, std::string_view word) = 0;
    // Which member of the union holds the value in the call's n-th argument, from 0. `handle` is of what the value
    // belongs to.
    virtual ValueMember member(const void* handle, std::size_t argument) = 0;
};

class Encoder {
  public:
    enum class Direction { to_host, to_plugin };

    Encoder(HandleNamer& namer, Direction direction) : namer_(namer), direction_(direction) {}

    // Adds a value. `member` matters only for stream values.
    template <class T>
    void add(const T& value, ValueMember member = ValueMember::none) {
        separate();
        member_ = member;
        put(value);
    }
    void add_word(std::string_view word) {
        separate();
        text_ += word;
    }
    HandleNamer& namer() { return namer_; }
    const std::string& text() const { return text_; }

    // Adds a field of the record being written.
    template <class T>
    void operator()(std::string_view field, const T& value) {
        if (!text_.ends_with('{')) text_ += ", ";
        text_ += field;
        text_ += ": ";
        put(value);
    }

  private:
    void separate() {
        if (!text_.empty()) text_ += ", ";
    }

    void put_handle(std::uint64_t handle, std::string_view word) {
        if (handle == 0)
            text_ += "null";
        else
            text_ += direction_ == Direction::to_host ? namer_.used(handle) : namer_.given(handle, word);
    }

    void put_own(std::uint64_t address, std::string_view word) {
        text_ += address == 0 ? "null" : namer_.own(address, word);
    }

    template <class T>
    void put(const T& value) {
        if constexpr (std::is_floating_point_v<T>) {
            text_ += real_text(value);
        } else if constexpr (std::is_arithmetic_v<T>) {
            text_ += std::to_string(value);
        } else if constexpr (is_handle<T>) {
            put_handle(raw(value), handle_word<T>);
        } else if constexpr (is_refcon<T>) {
            put_own(raw(value), kRefconWord);
        } else if constexpr (is_function<T>) {
            put_own(raw(value), kFunctionWord);
        } else if constexpr (std::is_same_v<T, const A_char*>) {
            text_ += value ? quoted_bytes(value) : "null";
        } else if constexpr (std::is_same_v<T, const A_UTF16Char*>) {
            text_ += value ? quoted_units(bytes_of(value)) : "null";
        } else if constexpr (std::is_pointer_v<T>) {
            text_ += value ? "pointer" : "null";
        } else if constexpr (std::is_array_v<T> && std::is_same_v<std::remove_extent_t<T>, A_char>) {
            text_ += quoted_bytes({value, strnlen(value, sizeof(T))});
        } else if constexpr (std::is_array_v<T>) {
            text_ += '[';
            for (const auto& part : value) {
                if (&part != &value[0]) text_ += ", ";
                put(part);
            }
            text_ += ']';
        } else if constexpr (std::is_same_v<T, AEGP_StreamValue2>) {
            text_ += "{value: ";
            put_handle(raw(value.streamH), kValueWord);
            visit_member(*this, value.val, member_);
            text_ += '}';
        } else if constexpr (std::is_same_v<T, AEGP_StreamVal2>) {
            text_ += '{';
            visit_member(*this, value, member_);
            text_ += '}';
        } else {
            text_ += '{';
            visit_fields(*this, value);
            text_ += '}';
        }
    }

    static std::string_view bytes_of(const A_UTF16Char* units) {
        std::size_t count = 0;
        while (units[count] != 0) ++count;
        return {reinterpret_cast<const char*>(units), count * sizeof *units};
    }

    HandleNamer& namer_;
    Direction direction_;
    ValueMember member_ = ValueMember::none;
    std::string text_;
};

}  // namespace host::journal
