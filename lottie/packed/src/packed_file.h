// What the two forms of archives have in common.
#pragma once

#include <map>
#include <string>
#include <vector>

#include "packed/archive.h"

namespace lottie::packed {

struct PackedFile {
    virtual ~PackedFile() = default;
    virtual Form form() const = 0;
    // `texts` are one for each animation, and not all as they were.
    virtual std::string write(const std::vector<std::string>& texts,
                              const std::map<std::string, std::string>& layer_names) const = 0;

    std::string bytes;
    std::vector<PackedAnimation> animations;
    References references;
};

}  // namespace lottie::packed
