// Undo as a journal of inverse steps: cost follows the change, not the project.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace host::model {

class UndoJournal {
  public:
    // Groups nest; an inner group joins the outer one and its name is ignored.
    void begin_group(std::string name);
    void end_group();  // throws not_allowed when none is open
    int open_groups() const { return depth_; }
    // Closes every open group; returns how many there were. The edits stay, as one step.
    int close_all_groups();

    // Notes how to take a change back. Outside a group each note is a step of its own.
    void note(std::function<void()> inverse);

    // A number that changes whenever a new undoable step begins: who has noted its whole old state under this number need
    // not do so again. Never 0. Outside groups it changes with every call.
    std::uint64_t step_for_snapshot();

    const std::vector<std::string>& step_names() const { return names_; }  // oldest first; "" for single edits
    bool can_undo() const { return !names_.empty(); }
    void undo();  // takes the newest step back; throws not_allowed when there is none or a group is open
    void undo_all();

  private:
    struct Step;
    int depth_ = 0;
    bool undoing_ = false;
    std::uint64_t step_number_ = 1;
    std::string open_name_;
    std::vector<std::function<void()>> open_;
    std::vector<std::string> names_;
    std::vector<std::vector<std::function<void()>>> steps_;
};

}  // namespace host::model
