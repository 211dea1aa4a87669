// Judging what runs do to the look of an animation, one composition at a time.
#pragma once

#include <cstddef>
#include <memory>
#include <set>
#include <string>
#include <string_view>
#include <tuple>
#include <vector>

#include "looks/evaluation.h"
#include "looks/expressions.h"
#include "looks/finding.h"
#include "looks/work.h"

namespace lottie::looks {

// Where a layer of the stack after the run comes from.
struct Origin {
    enum class Kind {
        kept,    // it was in this stack before
        copied,  // out of a nest
        made,    // by the run, such as a null that stands in for a nest
    };
    Kind kind = Kind::made;
    std::size_t layer = 0;  // its place before: in this stack (kept), in the nest's composition (copied); 0 = top
    std::size_t nest = 0;   // copied: the nest's place in this stack before
};

// What a run did to the stack of one composition.
struct StackChange {
    std::string composition;         // asset id; empty for the main one
    std::vector<std::size_t> nests;  // the un-nested layers' places in the stack before
    std::vector<Origin> after;       // of every layer of the stack after, top to bottom
};

// How the file would say it.
struct RewrittenStack {
    std::vector<std::string_view> layers;  // the text of each layer of the stack after, top to bottom
    std::vector<std::string> deleted;      // asset ids of the compositions that went with the run
    std::size_t byte_count = 0;            // of the whole file
};

struct NestReport {
    std::size_t nest = 0;  // place in the stack before
    std::string name;
    Verdict verdict = Verdict::exact;
    std::vector<Finding> findings;  // in the order of Reason
    // Whether it changes by what it was as a group or holds, and a run that un-nests it alone would be told the same.
    bool stands_alone = false;
    // How much of what may differ unseen in one picture does: several nests together look equal as long as this adds up
    // to no more than 1.
    double unseen = 0;
};

// A nest of the animation that the judge was given.
struct NestOfFile {
    std::string composition;  // asset id; empty for the main one
    std::size_t place = 0;    // in its stack, 0 = top

    bool operator==(const NestOfFile&) const = default;
    // Not by default: the library that WebAssembly is built with has no three-way comparison of strings.
    bool operator<(const NestOfFile& other) const {
        return std::tie(composition, place) < std::tie(other.composition, other.place);
    }
};

// A layer that lies or is seen otherwise than in the file, though it looked equal after each step.
struct Deviation {
    Finding finding;
    std::set<NestOfFile> nests;  // whose steps are to blame
};

// Knows an animation as it stands, and what it would look like otherwise. Each composition is read and worked out once,
// however many nests show it; of a changed one only what changed is read. It goes like this:
//
//     Judge judge(text);
//     for each composition, those inside of it first:
//         run the command on it, write its layers
//         if (all verdicts of judge.compare(change, rewritten) are good enough)
//             judge.accept();
//         else
//             undo the run
//
// A composition that was accepted is never looked at again but through the nests that show it, so a whole file costs
// what its text and its changes cost. Who only asks what would happen never accepts.
class Judge {
  public:
    // The text must be an animation that has been read or written as a project before; anything else throws
    // std::runtime_error. It is read here by another reader, so that a bug of the project's cannot hide from the judge,
    // and must outlive the judge. `work` is what the file may still make.
    explicit Judge(std::string_view text, std::shared_ptr<Work> work = std::make_shared<Work>());
    ~Judge();
    Judge(Judge&&) noexcept;
    Judge& operator=(Judge&&) noexcept;

    // The animation as it stands against the animation with that stack. One report per un-nested layer, in the order of
    // `change.nests`. What happened to layers that belong to no nest is reported for each nest that the run un-nested:
    // one run alone can tell which of them did it. The texts are not needed afterwards. Throws std::invalid_argument
    // or std::out_of_range when the change does not fit the animation, std::runtime_error for texts that cannot be
    // read, TooMuchWork.
    std::vector<NestReport> compare(const StackChange& change, const RewrittenStack& after);

    // The same for who has the whole animation after the run.
    std::vector<NestReport> compare(const StackChange& change, std::string_view animation_after);

    // From now on the animation stands as in the newest comparison.
    void accept();

    // All that was accepted so far against the animation as it was given: what no eye sees of single steps adds up from
    // nest to nest, and grows with what enlarges them. Looks only at layers that came out of `slight` nests, those of
    // which something differed. Throws TooMuchWork.
    std::vector<Deviation> compare_whole(const std::set<NestOfFile>& slight);

    // What was accepted, in its order. To be asked for once, at the end.
    std::vector<StackChange> take_steps();

    const CompositionCalls& composition_calls() const;  // of the animation that it was given

    // Of the animation as it stands.
    std::size_t byte_count() const;
    Evaluation evaluation();  // the judge must outlive it

  private:
    struct State;
    std::unique_ptr<State> state_;
};

}  // namespace lottie::looks
