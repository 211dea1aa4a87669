// Un-nests with the real command in memory, judges the result and compares pictures.
#pragma once

#include <optional>
#include <string>

#include "cli/shared/dialog_answers.h"
#include "looks/judge.h"

namespace test {

// All that is told of it.
std::string in_words(const lottie::looks::Finding& finding);

struct Judged {
    std::string before, after;
    lottie::looks::NestReport report;

    const lottie::looks::Finding* find(lottie::looks::Reason reason) const;  // null if it is not reported
    std::string text() const;                                                // of all findings, for messages
    bool looks_equal() const;                                                // by the pictures, at every frame
};

// Un-nests layer "Nest" of the main composition.
Judged judged(const std::string& animation, const cli::DialogAnswers& answers = {});

}  // namespace test
