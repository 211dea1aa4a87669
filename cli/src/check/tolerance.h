// Findings that are known or allowed, and so do not make a check fail.
#pragma once

#include <map>
#include <string>
#include <vector>

#include "check/checked_file.h"

namespace cli {

class Tolerance {
  public:
    // `baseline` is a file with what check_json() made, or empty. Throws Failure (bad input).
    Tolerance(const std::string& baseline, std::vector<lottie::looks::Reason> allowed);

    // Marks what is tolerated. What the baseline holds once is known once, so that a second one like it is told.
    void mark(CheckedFile& file) const;

  private:
    std::map<std::string, std::size_t> known_;  // how often, by all that identifies a finding
    std::vector<lottie::looks::Reason> allowed_;
};

}  // namespace cli
