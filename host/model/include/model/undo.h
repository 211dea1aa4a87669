// Undo as a journal of inverse steps: cost follows the change, not the project.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace host::model {

struct HostRules;

class UndoJournal {
  public:
    // The rules say whether a group without changes counts as a step; without rules it does not.
    explicit UndoJournal(const HostRules* rules = nullptr) : rules_(rules) {}
    UndoJournal(const UndoJournal&) = delete;

    // Groups nest; an inner group joins the outer one and its name is ignored.
    void begin_group(std::string name);
    void end_group();  // throws not_allowed when none is open
    int open_groups() const { return depth_; }
    // Closes every open group; returns how many there were. The edits stay, as one step.
    int close_all_groups();

    // Notes how to take a change back. Outside a group each note is a step of its own. Ignored while undoing.
    template <class Inverse>
    void note(Inverse inverse) {
        if (undoing_) return;
        note_change();
        if (keeps_history_) keep(std::move(inverse));
    }

    // The same for a change that makes no step: outside a group, or in one that has nothing else, it joins the newest
    // step, and is forgotten when there is none.
    template <class Inverse>
    void note_beside(Inverse inverse) {
        if (undoing_ || (depth_ == 0 && steps_.empty())) return;
        if (keeps_history_) keep(std::move(inverse));
    }

    // A number that changes whenever a new undoable step begins: who has noted its whole old state under this number
    // need not do so again. Never 0. Outside groups it changes with every call.
    std::uint64_t step_for_snapshot();

    const std::vector<std::string>& step_names() const { return names_; }  // oldest first; "" for single edits
    bool can_undo() const { return !steps_.empty(); }
    void undo();  // takes the newest step back; throws not_allowed when there is none or a group is open
    void undo_all();
    // Forgets every step: what stands now is the beginning. For readers, once a project is built. Throws not_allowed
    // while a group is open.
    void clear();
    // For who will never go back: from now on steps are only named, and what they noted is not kept, nor are the steps
    // so far. Throws not_allowed while a group is open.
    void keep_no_history();

  private:
    friend class UndoScope;
    using Step = std::vector<std::function<void()>>;

    void open(std::string name);
    void close(bool keep_if_empty);
    void note_change();
    void keep(std::function<void()> inverse);  // in the open step, else in the newest

    const HostRules* rules_;
    int depth_ = 0;
    bool undoing_ = false;
    bool keeps_history_ = true;
    std::uint64_t step_number_ = 1;
    std::string open_name_;
    Step open_;
    bool open_has_changes_ = false;  // of its own, not only beside
    std::vector<std::string> names_;
    std::vector<Step> steps_;  // as many as names, or none without history
};

// Makes one step of all that a single operation notes; inside a group it joins that group. Leaves no step if nothing
// was noted.
class UndoScope {
  public:
    explicit UndoScope(UndoJournal& journal) : journal_(journal) { journal_.open({}); }
    ~UndoScope() { journal_.close(false); }
    UndoScope(const UndoScope&) = delete;

  private:
    UndoJournal& journal_;
};

}  // namespace host::model
