// The balanced sequence against a plain vector.
#include <gtest/gtest.h>

#include <algorithm>
#include <iostream>
#include <memory>
#include <random>
#include <vector>

#include "model/sequence.h"

namespace host::model {
namespace {

struct Entry {
    Sequence<Entry>::Node* node = nullptr;
    bool marked = false;
};

class Both {
  public:
    void insert(int index) {
        entries_.push_back(std::make_unique<Entry>());
        Entry* entry = entries_.back().get();
        entry->node = sequence_.insert(index, entry);
        plain_.insert(plain_.begin() + index, entry);
    }
    void erase(int index) {
        Entry* entry = plain_[static_cast<std::size_t>(index)];
        sequence_.erase(entry->node);
        plain_.erase(plain_.begin() + index);
    }
    void move(int from, int to) {
        Entry* entry = plain_[static_cast<std::size_t>(from)];
        sequence_.move(entry->node, to);
        plain_.erase(plain_.begin() + from);
        plain_.insert(plain_.begin() + to, entry);
    }
    void mark(int index, bool marked) {
        Entry* entry = plain_[static_cast<std::size_t>(index)];
        sequence_.mark(entry->node, marked);
        entry->marked = marked;
    }
    int size() const { return static_cast<int>(plain_.size()); }

    void expect_same() const {
        ASSERT_EQ(sequence_.size(), size());
        ASSERT_EQ(sequence_.to_vector(), plain_);
        for (int i = 0; i < size(); ++i) {
            Entry* entry = plain_[static_cast<std::size_t>(i)];
            ASSERT_EQ(sequence_.at(i), entry);
            ASSERT_EQ(Sequence<Entry>::index_of(entry->node), i);
            Entry* after = i + 1 < size() ? plain_[static_cast<std::size_t>(i) + 1] : nullptr;
            ASSERT_EQ(Sequence<Entry>::next(entry->node), after);
        }
        const auto first = std::find_if(plain_.begin(), plain_.end(), [](const Entry* entry) { return entry->marked; });
        ASSERT_EQ(sequence_.first_marked(), first != plain_.end() ? *first : nullptr);
    }

  private:
    std::vector<std::unique_ptr<Entry>> entries_;
    Sequence<Entry> sequence_;
    std::vector<Entry*> plain_;
};

TEST(LayerStack, an_empty_one_has_nothing_marked) {
    const Sequence<Entry> sequence;
    EXPECT_EQ(sequence.size(), 0);
    EXPECT_EQ(sequence.first_marked(), nullptr);
    EXPECT_TRUE(sequence.to_vector().empty());
}

TEST(LayerStack, moving_a_layer_down_shifts_those_between_up) {
    Both both;
    for (int i = 0; i < 5; ++i) both.insert(i);
    both.move(1, 3);
    both.expect_same();
}

TEST(LayerStack, random_changes_give_what_they_give_in_a_plain_list) {
    const unsigned seed = std::random_device{}();
    std::cout << "seed " << seed << "\n";
    std::mt19937 random(seed);
    const auto below = [&random](int n) { return std::uniform_int_distribution<int>(0, n - 1)(random); };
    Both both;
    for (int i = 0; i < 3000; ++i) {
        const int size = both.size();
        const int what = below(10);
        if (size == 0 || (what < 4 && size < 150)) {
            both.insert(below(size + 1));
        } else if (what < 6) {
            both.erase(below(size));
        } else if (what < 8) {
            both.move(below(size), below(size));
        } else {
            both.mark(below(size), below(2) == 0);
        }
        if (i % 10 == 0 || size < 8) both.expect_same();
        if (::testing::Test::HasFatalFailure()) return;
    }
}

}  // namespace
}  // namespace host::model
