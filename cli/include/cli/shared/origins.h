// Where the layers of a stack changed by an un-nesting come from.
#pragma once

#include <cstddef>
#include <string>
#include <unordered_map>
#include <vector>

#include "looks/judge.h"
#include "model/comp.h"

namespace cli {

class Origins {
  public:
    // Before the run on these nests of the composition.
    Origins(const host::model::Comp& comp, const std::vector<host::model::Layer*>& nests);

    // After it, once; `id` is the composition's asset id.
    lottie::looks::StackChange change_to(const host::model::Comp& comp, std::string id);

  private:
    lottie::looks::Origin origin_of(const host::model::Layer& layer);

    std::vector<host::model::LayerId> before_;
    std::vector<std::size_t> nests_;
    std::unordered_map<host::model::LayerId, std::vector<lottie::looks::Origin>> originals_;
    std::unordered_map<host::model::LayerId, std::size_t> kept_;
    std::unordered_map<host::model::LayerId, std::size_t> copies_met_;
};

}  // namespace cli
