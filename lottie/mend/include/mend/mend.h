// Mending what an un-nesting loses, where a flat file can hold it.
#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "document/outline.h"
#include "looks/judge.h"
#include "looks/work.h"

namespace lottie::mend {

// An animation before its runs, in which each thing is read once for all mending.
class BeforeRuns {
  public:
    // The text must have been read or written as a project, and the judge, which must outlive it, know its layers as
    // they are there until the last mending. What the nests inside of nests that are un-nested show need not be in the
    // text.
    BeforeRuns(std::string text, looks::Judge& judge);
    BeforeRuns(std::string text, document::DocumentOutline outline, looks::Judge& judge);  // its own
    ~BeforeRuns();

  private:
    friend class Mending;
    std::unique_ptr<struct Before> before_;
};

// One un-nesting of nests of one composition, and what is done to its result so that the look is kept. Layers that are
// not mended keep their bytes.
class Mending {
  public:
    // What the run did, and the layers of its composition after it, top to bottom, which are copied. `before` and
    // `work`, what the file may still make, must outlive it.
    Mending(const BeforeRuns& before, const std::vector<std::string_view>& after, looks::StackChange change,
            looks::Work& work);
    ~Mending();

    enum class Scope { changes, changes_and_clips, all };
    // Applies to each nest the remedies for the reasons found that change the look. False when there is no further
    // remedy for any of them: then nothing was done. To be called again with reports on the mended result, for one
    // remedy can bring to light what another one is for. Differences too small to see are mended as well where they
    // add up: clips where a composition is shown several times, everything over several steps. Throws TooMuchWork;
    // the mending is of no use then.
    bool apply_remedies(const std::vector<looks::NestReport>& reports, Scope scope = Scope::changes);

    // The layers of the mended composition, top to bottom.
    std::vector<std::string> layers() const;
    // The same as the run's, with the layers that mending made.
    looks::StackChange change() const;
    // The reasons that a nest was mended for so far, in their order; the nest by its place in the stack before.
    std::vector<looks::Reason> mended(std::size_t nest) const;

  private:
    std::unique_ptr<struct Progress> progress_;
};

}  // namespace lottie::mend
