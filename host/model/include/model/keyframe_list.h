// The keyframes of a stream, packed.
#pragma once

#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <iterator>
#include <vector>

#include "model/value.h"

namespace host::model {

// Stores keyframes without the numbers that have their default in all of them. Indices must be in range.
class KeyframeList {
  public:
    class Iterator {
      public:
        using iterator_category = std::input_iterator_tag;
        using value_type = Keyframe;
        using difference_type = std::ptrdiff_t;
        using pointer = void;
        using reference = Keyframe;

        Iterator(const KeyframeList& list, std::size_t index) : list_(&list), index_(index) {}
        Keyframe operator*() const { return (*list_)[index_]; }
        Iterator& operator++() { return ++index_, *this; }
        void operator++(int) { ++index_; }
        friend bool operator==(const Iterator& a, const Iterator& b) { return a.index_ == b.index_; }

      private:
        const KeyframeList* list_;
        std::size_t index_;
    };

    KeyframeList() = default;
    KeyframeList(const std::vector<Keyframe>& keyframes);
    KeyframeList(std::initializer_list<Keyframe> keyframes) : KeyframeList(std::vector<Keyframe>(keyframes)) {}
    std::vector<Keyframe> to_vector() const { return {begin(), end()}; }

    std::size_t size() const { return size_; }
    bool empty() const { return size_ == 0; }
    Keyframe operator[](std::size_t index) const;
    Keyframe front() const { return (*this)[0]; }
    Time time(std::size_t index) const;
    Iterator begin() const { return {*this, 0}; }
    Iterator end() const { return {*this, size_}; }

    // The number of keyframes before `t`, provided times ascend.
    std::size_t count_before(Time t) const;

    void set(std::size_t index, const Keyframe& keyframe);
    void insert(std::size_t index, const Keyframe& keyframe);
    // Calls change(Keyframe&) for each keyframe.
    template <class Change>
    void for_each(Change change) {
        if (empty()) return;
        std::vector<Keyframe> all = to_vector();
        for (Keyframe& keyframe : all) change(keyframe);
        *this = all;
    }

    friend bool operator==(const KeyframeList& a, const KeyframeList& b);

  private:
    using Word = std::uint64_t;

    // How many numbers of each kind are stored, from the first.
    struct Shape {
        std::uint8_t values = 0;
        std::uint8_t eases = 0;  // on each side
        std::uint8_t tangents = 0;

        std::size_t words() const { return 2u + values + 4u * eases + 2u * tangents; }
        friend bool operator==(const Shape&, const Shape&) = default;
    };

    static Shape shape_of(const Keyframe& keyframe);
    static Shape joined(const Shape& a, const Shape& b);
    Word* at(std::size_t index) { return words_.data() + index * shape_.words(); }
    const Word* at(std::size_t index) const { return words_.data() + index * shape_.words(); }
    void pack(const Keyframe& keyframe, Word* to) const;
    void make_room_for(const Keyframe& keyframe);

    std::vector<Word> words_;
    std::uint32_t size_ = 0;
    Shape shape_;
};

}  // namespace host::model
