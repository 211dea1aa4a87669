// One composition before a run and after it: what all findings look at.
#pragma once

#include <optional>
#include <set>
#include <string>
#include <unordered_map>
#include <vector>

#include "looks/judge.h"
#include "survey.h"
#include "visibility.h"

namespace lottie::looks {

// A layer that came out of a nest.
struct Copy {
    std::size_t inner;   // place in the nest's composition
    std::size_t result;  // place in the stack after
};

// What all nests of the run have in common.
class Comparison {
  public:
    // Everything must outlive it. Throws std::invalid_argument or std::out_of_range when the change does not fit the
    // animation.
    Comparison(Surveys& before, std::shared_ptr<const Stack> result, const StackChange& change,
               const RewrittenStack& rewritten, Work& work);

    void spend(std::size_t steps) { work_.spend(steps); }  // throws TooMuchWork
    Surveys& surveys() { return before_; }
    const Scene& before() const { return before_.scene(); }
    const StackChange& change() const { return change_; }
    const RewrittenStack& rewritten() const { return rewritten_; }
    const Stack& stack() const { return survey_.stack(); }   // with the nests in it
    const Stack& result() const { return result_.stack(); }  // the same composition after the run
    Survey& stack_survey() { return survey_; }
    Survey& result_survey() { return result_; }

    // Where a layer that stayed in the stack is after the run.
    std::optional<std::size_t> kept_at(std::size_t place_before) const { return kept_at_[place_before]; }
    bool is_unnested(std::size_t place_before) const { return is_unnested_[place_before]; }
    const std::vector<Copy>& copies(std::size_t nest) const;  // in the order of the stack after
    // Whether nobody touched a layer that stayed, nor those that it hangs on.
    bool lies_as_before(std::size_t place_before);

    // Whole frames at which the composition can be seen; all of them up to a bound, else evenly spread ones and those
    // where layers out of the nests begin and end.
    const std::vector<double>& frames() const { return frames_; }
    // Likewise between two frames, with the edges of one nest's layers.
    std::vector<double> frames_of_nest(std::size_t nest) const;

    // Whether players know a composition by that name: a nest has it, or it is the main composition's.
    bool is_composition_known(const std::string& name) const;
    bool is_composition_known_after(const std::string& name);
    // Whether players may know the composition that the run worked on by that name.
    bool is_name_of_this_composition(const std::string& name);

  private:
    std::vector<double> whole_frames(double from, double to, const std::vector<std::size_t>& nests) const;
    void add_edges(std::vector<double>& frames, const std::vector<std::size_t>& nests) const;

    Surveys& before_;
    const StackChange& change_;
    const RewrittenStack& rewritten_;
    Work& work_;
    Survey& survey_;
    Survey result_;
    std::vector<std::optional<std::size_t>> kept_at_;
    std::vector<bool> is_unnested_;
    std::unordered_map<std::size_t, std::vector<Copy>> copies_;
    enum class Answer : char { unknown, yes, no };
    std::vector<Answer> lies_as_before_;
    std::vector<double> frames_;
    // Made when somebody asks.
    std::optional<std::set<std::string>> names_;  // of a composition that is not the main one
    std::optional<std::unordered_map<std::string, std::ptrdiff_t>> more_nests_named_;  // after the run than before
};

}  // namespace lottie::looks
