// What was found, for people and for programs.
#pragma once

#include <string>

#include "arguments/options.h"
#include "validator/examine.h"

namespace validator {

// One line, and indented ones below it where a test failed.
std::string text_of(const TestResult& result, const CheckOptions& options);

struct Totals {
    const Examination& examination;
    double seconds;

    std::size_t bad() const;
    // "aegp-check: FAIL (3 of 47)"
    std::string last_line() const;
};

// What comes after the results, the last line apart.
std::string text_summary(const Totals& totals);
std::string json_report(const Totals& totals, const CheckOptions& options);
std::string junit_report(const Totals& totals, const CheckOptions& options);

// The command line that makes the test again alone.
std::string repeating(const TestResult& result, const CheckOptions& options);

}  // namespace validator
