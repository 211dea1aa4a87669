// The compositions of an animation, each to be worked on alone and put back.
#pragma once

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "looks/judge.h"

namespace lottie::mend {

class Workbench {
  public:
    struct Nest {
        std::size_t place = 0;  // in the stack, 0 = top
        std::string name;
        std::size_t source = 0;  // a composition
        std::size_t origin = 0;  // the number of the nest of the file that it is, or that it was copied from
    };

    // The text must have been read or written as a project.
    explicit Workbench(std::string text);
    ~Workbench();

    // Compositions are told by numbers, 0 being the main one; an empty id means that one too.
    std::optional<std::size_t> find(std::string_view id) const;
    std::string id(std::size_t composition) const;  // of its asset
    // As people know it: its own, else that of the first nest that shows it, else its id.
    const std::string& name(std::size_t composition) const;
    std::size_t use_count(std::size_t composition) const;  // nests that show it now
    std::size_t layer_count(std::size_t composition) const;
    std::vector<std::string_view> file_layers(std::size_t composition) const;  // as they were, top to bottom
    std::size_t layer_bytes(std::size_t composition) const;
    // The nests that it holds now, top to bottom.
    const std::vector<Nest>& nests(std::size_t composition) const;
    // Why a composition must keep its layers: an expression somewhere asks for it by a name that it or a
    // nest of it has, or works out at run time which one it asks for. Empty if none does, or if only layers of the main
    // composition are asked for by name, which the judge looks at.
    std::string reason_to_stay(std::size_t composition, const looks::CompositionCalls& calls) const;
    // Those that can be seen, each behind all that it shows.
    std::vector<std::size_t> innermost_first() const;

    // An animation with this composition, under its id, and the ones that it shows; what lies deeper is there by its
    // id alone.
    std::string extract(std::size_t composition) const;
    // The composition has these layers from now on.
    void put_back(std::size_t composition, const looks::StackChange& change,
                  const std::vector<std::string_view>& layers);

    // How long text(false) is.
    std::size_t byte_count() const;
    // The whole animation as it stands; what was not worked on keeps its bytes. Without `keep_unused` the compositions
    // that nothing shows any more are left out; those that nothing showed before stay.
    std::string text(bool keep_unused) const;

  private:
    std::unique_ptr<struct Compositions> compositions_;
};

}  // namespace lottie::mend
