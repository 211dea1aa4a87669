// What the JavaScript around a WebAssembly program does for it: web/src/system.mjs. Texts are UTF-8 with their length.
// What can fail answers 1, or 0 with the reason as the answer, a few words.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace host::base {

#define IMPORTED(name) __attribute__((import_module("host"), import_name(#name)))
extern "C" {
IMPORTED(answer_size) std::size_t web_answer_size(void);
IMPORTED(take_answer) void web_take_answer(char* to);
IMPORTED(program_file) void web_program_file(void);
IMPORTED(kind_of_file) int web_kind_of_file(const char* file, std::size_t length);  // a FileKind
IMPORTED(entries_of) int web_entries_of(const char* folder, std::size_t length);  // each a digit, its name, a zero byte
IMPORTED(real_path) int web_real_path(const char* file, std::size_t length);
IMPORTED(identity) int web_identity(const char* file, std::size_t length);  // "DEVICE NUMBER HARD_LINKS"
IMPORTED(read_file) int web_read_file(const char* file, std::size_t length, double limit, int only_regular);
IMPORTED(read_standard_input) int web_read_standard_input(double limit);
IMPORTED(write_standard_output) int web_write_standard_output(const char* bytes, std::size_t length);
IMPORTED(make_folder) int web_make_folder(const char* folder, std::size_t length);
IMPORTED(move_file) int web_move_file(const char* file, std::size_t length, const char* to, std::size_t to_length);
IMPORTED(replace_file)
int web_replace_file(const char* file, std::size_t length, const char* bytes, std::size_t size, const char* prefix,
                     std::size_t prefix_length, int even_if_read_only);
IMPORTED(output_is_terminal) int web_output_is_terminal(void);
IMPORTED(error_is_terminal) int web_error_is_terminal(void);
IMPORTED(shortest_digits) std::size_t web_shortest_digits(double number, char* to);  // "-1.25e-7", at most 32
}
#undef IMPORTED

inline std::string web_answer() {
    std::string answer(web_answer_size(), '\0');
    web_take_answer(answer.data());
    return answer;
}

}  // namespace host::base
