// Where containers of a JSON text end.
#include "base/json_marks.h"

#include <gmock/gmock.h>

#include <string>
#include <vector>

namespace {

using namespace host::base;

std::size_t end_of(const std::string& text, std::vector<std::string>* strings = nullptr,
                   std::string_view letters = "") {
    const char* behind =
        behind_json_container(text.data(), text.data() + text.size(), letters, [strings](std::string_view inside) {
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

// Wherever blocks of characters end, and with an escape or a long string somewhere among them.
TEST(JsonMarks, strings_that_begin_with_a_wanted_letter_are_told_wherever_they_stand) {
    const std::string object = R"({"x":[[1],{"tr]}":"[{x"}],"k":{"xyz":"k]"},"":"kk"})";
    for (const std::string& between :
         {std::string(), std::string(R"("a\"","\u0078",)"), '"' + std::string(70, '[') + "\","}) {
        for (std::size_t blanks = 0; blanks < 130; ++blanks) {
            const std::string text = "[" + object + "," + std::string(blanks, ' ') + between + object + "]";
            for (const std::string& behind : {std::string(), R"(,"x":")" + std::string(80, 'x') + R"("}])"}) {
                std::vector<std::string> strings;
                EXPECT_EQ(end_of(text + behind, &strings, "xk"), text.size()) << between << blanks;
                EXPECT_EQ(end_of(text.substr(0, text.size() - 1)), std::string::npos) << between << blanks;
                std::erase_if(strings, [](const std::string& one) { return one.find_first_of("xk\\") != 0; });
                std::vector<std::string> wanted = {"x", "k", "xyz", "k]", "kk"};
                if (between.find('\\') != std::string::npos) wanted.emplace_back("\\u0078");
                for (const char* again : {"x", "k", "xyz", "k]", "kk"}) wanted.emplace_back(again);
                EXPECT_EQ(strings, wanted) << between << blanks;
            }
        }
    }
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
