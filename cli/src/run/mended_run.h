// Mends what un-nesting lost, where a flat file can hold it.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "looks/judge.h"

namespace cli {

struct MendedRun {
    std::string text;     // the animation
    std::string summary;  // what was mended, and how many looks still change
    lottie::looks::StackChange change;
    std::vector<std::string> layers;  // of the changed stack
};

// The animation before and after one run, and what the run did. Throws std::runtime_error for texts that cannot be
// read, TooMuchWork.
MendedRun mend_run(const std::string& before, const std::string& after, const lottie::looks::StackChange& change,
                   const std::shared_ptr<lottie::looks::Work>& work);

}  // namespace cli
