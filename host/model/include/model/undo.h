// Undo as a journal of inverse steps, so the cost depends on the change, not on the project.
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
    // The rules say whether an empty group counts as a step; without rules it does not.
    explicit UndoJournal(const HostRules* rules = nullptr) : rules_(rules) {}
    UndoJournal(const UndoJournal&) = delete;

    // Groups nest; an inner group becomes part of the outer one, and its name is ignored.
    void begin_group(std::string name);
    void end_group();  // throws not_allowed when none is open
    int open_groups() const { return depth_; }
    // Closes all open groups and returns how many there were. Their changes remain, as one step.
    int close_all_groups();

    // Records how to undo a change. Outside a group each record is a step. Ignored while undoing.
    template <class Inverse>
    void note(Inverse inverse) {
        if (undoing_) return;
        note_change();
        if (keeps_history_) keep(std::move(inverse));
    }

    // The same for a change that does not make a step: outside a group, or in an otherwise empty one, it joins the
    // newest step, if there is one.
    template <class Inverse>
    void note_beside(Inverse inverse) {
        if (undoing_ || (depth_ == 0 && steps_.empty())) return;
        if (keeps_history_) keep(std::move(inverse));
    }

    // A number that changes with every new step, so that an object records its old state once per step. Never 0.
    // Outside groups it changes with every call.
    std::uint64_t step_for_snapshot();

    const std::vector<std::string>& step_names() const { return names_; }  // oldest first; "" for single edits
    bool can_undo() const { return !steps_.empty(); }
    void undo();  // undoes the newest step; throws not_allowed if there is none or a group is open
    void undo_all();
    // Drops all steps. For readers, once a project is built. Throws not_allowed while a group is open.
    void clear();
    // For callers that never undo: drops all steps, and from now on keeps only the names of steps. Throws not_allowed
    // while a group is open.
    void keep_no_history();

  private:
    friend class UndoScope;
    using Step = std::vector<std::function<void()>>;

    void open(std::string name);
    void close(bool keep_if_empty);
    void note_change();
    void keep(std::function<void()> inverse);  // in the open step, or the newest

    const HostRules* rules_;
    int depth_ = 0;
    bool undoing_ = false;
    bool keeps_history_ = true;
    std::uint64_t step_number_ = 1;
    std::string open_name_;
    Step open_;
    bool open_has_changes_ = false;  // not only ones that make no step
    std::vector<std::string> names_;
    std::vector<Step> steps_;  // as many as names, or none without history
};

// Combines everything that one operation records into one step, or into the open group. Makes no step if nothing was
// recorded.
class UndoScope {
  public:
    explicit UndoScope(UndoJournal& journal) : journal_(journal) { journal_.open({}); }
    ~UndoScope() { journal_.close(false); }
    UndoScope(const UndoScope&) = delete;

  private:
    UndoJournal& journal_;
};

}  // namespace host::model
