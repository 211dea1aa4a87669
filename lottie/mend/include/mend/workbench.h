// The compositions of an animation, each to be worked on alone and put back.
#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace lottie::mend {

class Workbench {
  public:
    struct Nest {
        std::size_t place = 0;  // in the stack, 0 = top
        std::string name;
        std::size_t source = 0;  // a composition
    };

    // Throws document::InputError when the text is no animation.
    explicit Workbench(std::string text);
    ~Workbench();

    // Compositions are told by numbers, 0 being the main one.
    std::string id(std::size_t composition) const;  // of its asset; empty for the main one
    // As people know it: its own, else that of the first nest that shows it, else its id.
    std::string name(std::size_t composition) const;
    std::size_t use_count(std::size_t composition) const;  // nests that show it now
    // The nests that it holds now, top to bottom.
    const std::vector<Nest>& nests(std::size_t composition) const;
    // Why the layers of a composition must stay as they are: an expression somewhere asks for it by a name that it or a
    // nest of it has, or works out at run time which one it asks for. Empty if none does.
    std::string asked_for(std::size_t composition) const;
    // Those that can be seen, each behind all that it shows.
    std::vector<std::size_t> innermost_first() const;

    // An animation with this composition, under its id, and with everything that it shows; of the rest as little as
    // there must be.
    std::string alone(std::size_t composition) const;
    // Takes over the composition from such an animation that was worked on.
    void put_back(std::size_t composition, const std::string& alone);

    // The whole animation as it stands; what was not worked on keeps its bytes. Without `keep_unused` the compositions
    // that nothing shows any more are left out; those that nothing showed before stay.
    std::string text(bool keep_unused) const;

  private:
    std::unique_ptr<struct Compositions> compositions_;
};

}  // namespace lottie::mend
