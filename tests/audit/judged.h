// Un-nesting by the real command in memory, judged and looked at.
#pragma once

#include <optional>
#include <string>

#include "audit/audit.h"
#include "cli/dialog_answers.h"

namespace test {

struct Judged {
    std::string before, after;
    host::audit::NestReport report;

    const host::audit::Finding* find(host::audit::Reason reason) const;  // null if it is not reported
    std::string text() const;                                            // of all findings, for messages
    bool looks_equal() const;  // by the pictures, at every frame
};

// Un-nests layer "Nest" of the main composition.
Judged judged(const std::string& animation, const cli::DialogAnswers& answers = {});

}  // namespace test
