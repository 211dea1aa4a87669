// Where containers of a JSON text end.
#include "base/json_marks.h"

#include <gmock/gmock.h>

#include <string>
#include <vector>

namespace {

using namespace host::base;

std::size_t end_of(const std::string& text, std::vector<std::string>* strings = nullptr) {
    const char* behind =
        behind_json_container(text.data(), text.data() + text.size(), [strings](std::string_view inside) {
            if (strings != nullptr) strings->emplace_back(inside);
        });
    return behind == nullptr ? std::string::npos : static_cast<std::size_t>(behind - text.data());
}

std::size_t end_of_numbers(const std::string& text) {
    const char* behind = behind_number_array(text.data(), text.data() + text.size());
    return behind == nullptr ? std::string::npos : static_cast<std::size_t>(behind - text.data());
}

TEST(JsonMarks, a_container_ends_with_its_own_bracket_wherever_it_stands) {
    const std::string inside = R"({"a":[1,{"]":"}\"]"},[[]]],"b\\":{},"c":"\\\\"})";
    for (std::size_t blanks = 0; blanks < 40; ++blanks) {
        const std::string text = "[" + std::string(blanks, ' ') + inside + "]";
        EXPECT_EQ(end_of(text), text.size()) << blanks;
        EXPECT_EQ(end_of(text + ",[1]}"), text.size()) << blanks;
        for (std::size_t end = 1; end < text.size(); ++end)
            EXPECT_EQ(end_of(text.substr(0, end)), std::string::npos) << blanks << " " << end;
    }
}

TEST(JsonMarks, strings_are_told_as_they_are_spelled) {
    std::vector<std::string> strings;
    end_of(R"({"a":"","\"":"[{a long one \\\" with brackets}]\\","é":[1]})", &strings);
    EXPECT_THAT(strings, testing::ElementsAre("a", "", "\\\"", R"([{a long one \\\" with brackets}]\\)", "é"));
}

TEST(JsonMarks, arrays_of_numbers_and_of_such_arrays_are_told_from_others) {
    for (std::size_t blanks = 0; blanks < 40; ++blanks) {
        const std::string begin = "[" + std::string(blanks, ' ');
        for (const char* rest : {"]", "1]", "[1.5,-2e+7],\n[3E-1,[]]]"}) {
            EXPECT_EQ(end_of_numbers(begin + rest), begin.size() + std::string_view(rest).size()) << blanks << rest;
            EXPECT_EQ(end_of_numbers(begin + rest + ",\"a\"]"), begin.size() + std::string_view(rest).size());
        }
        for (const char* rest : {"1,true]", "null]", "[1,2],\"1\"]", "[[{}]]]", "false]", "1", "[1]"})
            EXPECT_EQ(end_of_numbers(begin + rest), std::string::npos) << blanks << rest;
    }
}

}  // namespace
