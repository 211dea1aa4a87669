// What the cases of all reasons share.
#include "cases.h"

namespace test {

std::string nest(const Members& members) {
    Nesting nesting;
    nesting.nest = members;
    return animation(nesting);
}

std::string inside(const std::vector<std::string>& layers, const Members& nest) {
    Nesting nesting;
    nesting.nest = nest;
    nesting.inside = layers;
    return animation(nesting);
}

std::string red(const Members& members) {
    return solid(1, "red", 40, 40, "#ff0000", members);
}

std::string blue(const Members& members) {
    return solid(2, "blue", 40, 40, "#0000ff", members);
}

std::string moving_transform() {
    return transform({{"p", keyed({{0, "10,30,0"}, {19, "50,30,0"}})}});
}

cli::DialogAnswers discard() {
    cli::DialogAnswers answers;
    answers.copy_attributes = false;
    return answers;
}

cli::DialogAnswers prefix(const std::string& text) {
    cli::DialogAnswers answers;
    answers.prefix = text;
    return answers;
}

std::vector<Case> all_cases() {
    std::vector<Case> cases;
    for (const auto& some : {group_cases(), motion_cases(), expression_cases()}) {
        cases.insert(cases.end(), some.begin(), some.end());
    }
    return cases;
}

}  // namespace test
