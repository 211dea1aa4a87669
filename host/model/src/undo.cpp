// The undo journal.
#include "model/undo.h"

#include "model/error.h"
#include "model/host_rules.h"

namespace host::model {

void UndoJournal::open(std::string name) {
    if (depth_++ > 0) return;
    ++step_number_;
    open_name_ = std::move(name);
}

void UndoJournal::close(bool keep_if_empty) {
    if (--depth_ > 0) return;
    if (open_has_changes_ || keep_if_empty) {
        names_.push_back(std::move(open_name_));
        if (keeps_history_) steps_.push_back(std::move(open_));
    } else if (!steps_.empty()) {
        for (auto& inverse : open_) steps_.back().push_back(std::move(inverse));
    }
    open_ = {};
    open_has_changes_ = false;
    open_name_.clear();
}

void UndoJournal::begin_group(std::string name) {
    open(std::move(name));
}

void UndoJournal::end_group() {
    if (depth_ == 0) throw Error(ErrorKind::not_allowed, "No undo group is open.");
    close(rules_ != nullptr && rules_->empty_undo_group_makes_a_step);
}

int UndoJournal::close_all_groups() {
    const int count = depth_;
    while (depth_ > 0) end_group();
    return count;
}

void UndoJournal::note_change() {
    if (depth_ > 0) {
        open_has_changes_ = true;
        return;
    }
    names_.emplace_back();
    if (keeps_history_) steps_.emplace_back();
}

void UndoJournal::keep(std::function<void()> inverse) {
    (depth_ > 0 ? open_ : steps_.back()).push_back(std::move(inverse));
}

std::uint64_t UndoJournal::step_for_snapshot() {
    if (depth_ == 0) ++step_number_;
    return step_number_;
}

void UndoJournal::undo() {
    if (depth_ > 0) throw Error(ErrorKind::not_allowed, "Undo has to wait until the open undo group is closed.");
    if (steps_.empty()) throw Error(ErrorKind::not_allowed, "There is nothing to undo.");
    Step step = std::move(steps_.back());
    steps_.pop_back();
    names_.pop_back();
    undoing_ = true;
    for (auto inverse = step.rbegin(); inverse != step.rend(); ++inverse) (*inverse)();
    undoing_ = false;
}

void UndoJournal::undo_all() {
    while (can_undo()) undo();
}

void UndoJournal::clear() {
    if (depth_ > 0) throw Error(ErrorKind::not_allowed, "An undo group is open.");
    names_.clear();
    steps_.clear();
}

void UndoJournal::keep_no_history() {
    if (depth_ > 0) throw Error(ErrorKind::not_allowed, "An undo group is open.");
    keeps_history_ = false;
    steps_.clear();
}

}  // namespace host::model
