// Looks up objects by id.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace host::model {

// For ids that count up from 1 with few gaps. Does not own the objects.
template <class T>
class ById {
  public:
    void add(T& object) {
        const auto place = static_cast<std::size_t>(object.id());
        if (objects_.size() <= place) objects_.resize(place + 1);
        objects_[place] = &object;
    }
    // Null for an unused id.
    T* find(std::int32_t id) const {
        return id > 0 && static_cast<std::size_t>(id) < objects_.size() ? objects_[static_cast<std::size_t>(id)]
                                                                        : nullptr;
    }

  private:
    std::vector<T*> objects_;
};

}  // namespace host::model
