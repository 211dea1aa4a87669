// Findings that do not make a check fail because they are known or allowed.
#pragma once

#include <map>
#include <string>
#include <vector>

#include "check/checked_file.h"

namespace cli {

class Tolerance {
  public:
    // `baseline` is a file with the output of check_json(), or empty. Throws Failure (bad input).
    Tolerance(const std::string& baseline, std::vector<lottie::looks::Reason> allowed);

    // Marks what is tolerated. What the baseline holds once is known once, so a second finding like it is reported.
    void mark(CheckedFile& file) const;

  private:
    std::map<std::string, std::size_t> known_;  // how often, by everything that identifies a finding
    std::vector<lottie::looks::Reason> allowed_;
};

}  // namespace cli
