// Undo steps and groups.
#include "model/undo.h"

#include <gtest/gtest.h>

#include <memory>

#include "model/host_rules.h"
#include "scene.h"

namespace host::model {
namespace {

using testing::error_of;
using Names = std::vector<std::string>;

// A number whose changes are noted.
struct Counter {
    UndoJournal& journal;
    int number = 0;
    void set(int next) {
        journal.note([this, old = number] { number = old; });
        number = next;
    }
};

TEST(UndoJournal, outside_a_group_every_change_is_a_step) {
    UndoJournal journal;
    Counter counter{journal};
    counter.set(1);
    counter.set(2);
    EXPECT_EQ(journal.step_names(), (Names{"", ""}));
    journal.undo();
    EXPECT_EQ(counter.number, 1);
    journal.undo();
    EXPECT_EQ(counter.number, 0);
    EXPECT_FALSE(journal.can_undo());
}

TEST(UndoJournal, a_group_is_one_step_and_inner_groups_join_it) {
    UndoJournal journal;
    Counter counter{journal};
    journal.begin_group("Outer");
    counter.set(1);
    journal.begin_group("Inner");
    counter.set(2);
    journal.end_group();
    counter.set(3);
    EXPECT_EQ(journal.open_groups(), 1);
    EXPECT_FALSE(journal.can_undo());
    journal.end_group();
    EXPECT_EQ(journal.step_names(), Names{"Outer"});
    journal.undo();
    EXPECT_EQ(counter.number, 0);
}

TEST(UndoJournal, a_group_without_changes_leaves_no_step_unless_the_rules_say_so) {
    HostRules rules;
    UndoJournal journal(&rules);
    journal.begin_group("Nothing");
    journal.end_group();
    EXPECT_FALSE(journal.can_undo());
    rules.empty_undo_group_makes_a_step = true;
    journal.begin_group("Nothing");
    journal.end_group();
    EXPECT_EQ(journal.step_names(), Names{"Nothing"});
    { const UndoScope scope(journal); }
    EXPECT_EQ(journal.step_names().size(), 1u);
}

TEST(UndoJournal, ending_a_group_that_nobody_began_is_an_error) {
    UndoJournal journal;
    EXPECT_EQ(error_of([&] { journal.end_group(); }), ErrorKind::not_allowed);
}

TEST(UndoJournal, undoing_waits_for_open_groups_and_needs_a_step) {
    UndoJournal journal;
    EXPECT_EQ(error_of([&] { journal.undo(); }), ErrorKind::not_allowed);
    Counter counter{journal};
    counter.set(1);
    journal.begin_group("Open");
    EXPECT_EQ(error_of([&] { journal.undo(); }), ErrorKind::not_allowed);
    EXPECT_EQ(error_of([&] { journal.clear(); }), ErrorKind::not_allowed);
    EXPECT_EQ(counter.number, 1);
}

TEST(UndoJournal, groups_left_open_close_as_one_step) {
    UndoJournal journal;
    Counter counter{journal};
    journal.begin_group("Outer");
    journal.begin_group("Inner");
    counter.set(5);
    EXPECT_EQ(journal.close_all_groups(), 2);
    EXPECT_EQ(journal.close_all_groups(), 0);
    EXPECT_EQ(journal.step_names(), Names{"Outer"});
    journal.undo_all();
    EXPECT_EQ(counter.number, 0);
}

TEST(UndoJournal, a_change_beside_the_steps_goes_back_with_the_step_before_it) {
    UndoJournal journal;
    Counter counter{journal};
    int beside = 0;
    const auto set_beside = [&](int next) {
        journal.note_beside([&beside, old = beside] { beside = old; });
        beside = next;
    };
    set_beside(1);  // there is no step yet
    counter.set(1);
    set_beside(2);
    journal.begin_group("Only that");
    set_beside(3);
    journal.end_group();
    EXPECT_EQ(journal.step_names(), Names{""});
    journal.undo_all();
    EXPECT_EQ(counter.number, 0);
    EXPECT_EQ(beside, 1);
}

TEST(UndoJournal, the_snapshot_number_is_the_same_all_through_a_group_and_never_again) {
    UndoJournal journal;
    const auto alone = journal.step_for_snapshot();
    EXPECT_NE(alone, 0u);
    EXPECT_NE(journal.step_for_snapshot(), alone);
    journal.begin_group("Group");
    const auto inside = journal.step_for_snapshot();
    journal.begin_group("Inner");
    EXPECT_EQ(journal.step_for_snapshot(), inside);
    journal.close_all_groups();
    EXPECT_NE(journal.step_for_snapshot(), inside);
}

TEST(UndoJournal, without_history_steps_are_named_as_before_and_nothing_is_kept) {
    const auto kept = std::make_shared<int>(0);
    UndoJournal journal;
    const auto change = [&] { journal.note([kept] { ++*kept; }); };
    change();
    EXPECT_EQ(kept.use_count(), 2);
    journal.keep_no_history();
    EXPECT_EQ(kept.use_count(), 1);
    change();
    journal.begin_group("Empty");
    journal.note_beside([kept] { ++*kept; });
    journal.end_group();
    journal.begin_group("Group");
    const std::uint64_t number = journal.step_for_snapshot();
    change();
    change();
    EXPECT_EQ(journal.step_for_snapshot(), number);
    journal.end_group();
    EXPECT_NE(journal.step_for_snapshot(), number);
    EXPECT_EQ(journal.step_names(), (Names{"", "", "Group"}));
    EXPECT_EQ(kept.use_count(), 1);
    EXPECT_FALSE(journal.can_undo());
    EXPECT_EQ(error_of([&] { journal.undo(); }), ErrorKind::not_allowed);
    journal.undo_all();
    EXPECT_EQ(*kept, 0);
}

TEST(UndoJournal, an_open_group_keeps_its_history) {
    UndoJournal journal;
    Counter counter{journal};
    journal.begin_group("Group");
    EXPECT_EQ(error_of([&] { journal.keep_no_history(); }), ErrorKind::not_allowed);
    counter.set(1);
    journal.end_group();
    journal.undo();
    EXPECT_EQ(counter.number, 0);
}

}  // namespace
}  // namespace host::model
