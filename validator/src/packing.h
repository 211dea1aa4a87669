// Records as bytes, for the way from one process to another of the same program.
#pragma once

#include <cstring>
#include <map>
#include <stdexcept>
#include <string>
#include <type_traits>
#include <vector>

#include "validator/visit.h"

namespace validator {

class Packer {
  public:
    template <class... Fields>
    void operator()(const Fields&... fields) {
        (pack(fields), ...);
    }
    const std::string& bytes() const { return bytes_; }

  private:
    template <class T>
    void pack(const T& value);

    std::string bytes_;
};

// Throws std::runtime_error when the bytes end too soon.
class Unpacker {
  public:
    explicit Unpacker(std::string_view bytes) : bytes_(bytes) {}

    template <class... Fields>
    void operator()(Fields&... fields) {
        (unpack(fields), ...);
    }

  private:
    template <class T>
    void unpack(T& value);
    void take(void* to, std::size_t size) {
        if (size > bytes_.size()) throw std::runtime_error("the record of a visit is cut");
        std::memcpy(to, bytes_.data(), size);
        bytes_.remove_prefix(size);
    }

    std::string_view bytes_;
};

// The fields of each record, for both directions.
template <class Archive, class T>
concept Of = std::is_same_v<std::remove_const_t<Archive>, T>;

template <Of<MadeCall> R>
void fields(auto& archive, R& r) {
    archive(r.kind, r.made_in, r.number, r.accessor, r.function, r.arguments, r.result, r.injected, r.is_offered);
}
template <Of<Refusal> R>
void fields(auto& archive, R& r) {
    archive(r.function, r.code, r.sentence);
}
template <Of<Outcome> R>
void fields(auto& archive, R& r) {
    archive(r.calls, r.call_count, r.error, r.has_thrown, r.failed_in, r.is_enabled, r.is_handled, r.told, r.script_problems, r.undo_steps,
            r.groups_left_open, r.refusals, r.project, r.change, r.change_from_first);
}
template <Of<OfferedItem> R>
void fields(auto& archive, R& r) {
    archive(r.text, r.is_enabled);
}
template <Of<Registered> R>
void fields(auto& archive, R& r) {
    archive(r.items, r.command_hooks, r.update_menu_hooks, r.idle_hooks, r.death_hooks);
}
template <Of<host::suites::HandedOut> R>
void fields(auto& archive, R& r) {
    archive(r.kind, r.made_by_call, r.made_by, r.what);
}
template <Of<host::suites::Misuse> R>
void fields(auto& archive, R& r) {
    archive(r.kind, r.made_by_call, r.made_by, r.misused_by_call, r.misused_by);
}
template <Of<VisitRecord> R>
void fields(auto& archive, R& r) {
    archive(r.host_problem, r.load_problem, r.registered, r.start, r.outcomes, r.left, r.freed_while_locked,
            r.disposed_twice, r.used_after_disposal, r.held, r.dialog_problems, r.has_left_processes);
}

template <class T>
inline constexpr bool kIsVector = false;
template <class T>
inline constexpr bool kIsVector<std::vector<T>> = true;

template <class T>
void Packer::pack(const T& value) {
    if constexpr (std::is_same_v<T, std::string>) {
        pack(value.size());
        bytes_ += value;
    } else if constexpr (kIsVector<T>) {
        pack(value.size());
        for (const auto& element : value) pack(element);
    } else if constexpr (std::is_arithmetic_v<T> || std::is_enum_v<T>) {
        bytes_.append(reinterpret_cast<const char*>(&value), sizeof value);
    } else {
        fields(*this, value);
    }
}

template <class T>
void Unpacker::unpack(T& value) {
    if constexpr (std::is_same_v<T, std::string>) {
        std::size_t size = 0;
        unpack(size);
        if (size > bytes_.size()) throw std::runtime_error("the record of a visit is cut");
        value = bytes_.substr(0, size);
        bytes_.remove_prefix(size);
    } else if constexpr (kIsVector<T>) {
        std::size_t size = 0;
        unpack(size);
        if (size > bytes_.size()) throw std::runtime_error("the record of a visit is cut");
        value.resize(size);
        for (auto& element : value) unpack(element);
    } else if constexpr (std::is_arithmetic_v<T> || std::is_enum_v<T>) {
        take(&value, sizeof value);
    } else {
        fields(*this, value);
    }
}

}  // namespace validator
