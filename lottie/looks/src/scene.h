// Compositions of an animation, with the links between layers resolved as players do.
#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "glyphs.h"
#include "layer.h"
#include "looks/expressions.h"

namespace lottie::looks {

// Layers from top to bottom, 0 = top. Stacks share the layers that they have in common.
class Stack {
  public:
    std::string id;  // empty for the main composition
    std::string name;
    double width = 0;
    double height = 0;
    double first_frame = 0;  // at which anything of it can be seen
    double end_frame = 0;    // exclusive
    double frame_rate = 0;   // its own; 0 if the file does not say
    bool keeps_frame_rate = false;

    std::size_t size() const { return places_.size(); }
    const SceneLayer& layer(std::size_t place) const { return *places_[place].layer; }
    // Throws std::out_of_range.
    const std::shared_ptr<const SceneLayer>& shared_layer_at(std::size_t place) const {
        return places_.at(place).layer;
    }
    std::optional<std::size_t> parent(std::size_t place) const { return optional(places_[place].parent); }
    std::optional<std::size_t> matte(std::size_t place) const { return optional(places_[place].matte); }

    // All the rest of it.
    Stack without_layers() const;
    // Instead of those that it has.
    void set_layers(std::vector<std::shared_ptr<const SceneLayer>> layers);

  private:
    static constexpr std::uint32_t kNone = UINT32_MAX;
    struct Place {
        std::shared_ptr<const SceneLayer> layer;
        std::uint32_t parent = kNone;
        std::uint32_t matte = kNone;
    };
    static std::optional<std::size_t> optional(std::uint32_t place) {
        return place == kNone ? std::nullopt : std::optional<std::size_t>(place);
    }
    void link();
    void cut_parent_circles();

    std::vector<Place> places_;
};

struct ImageSize {
    double width = 0;
    double height = 0;
};

struct Scene {
    // Throws std::runtime_error for text that is no animation. The text must outlive the scene.
    explicit Scene(std::string_view text);

    const Stack& main() const { return *stacks.at(""); }
    const std::shared_ptr<const Stack>* find(std::string_view id) const;  // null if there is none
    ImageSize image_size(std::string_view id) const;
    const Glyphs& glyphs() const;
    const CompositionCalls& composition_calls() const {
        return composition_calls_;
    }  // of the text that it was read from

    // Puts a stack in the place of the one with its id.
    void replace(std::shared_ptr<const Stack> stack);
    void remove(const std::string& id);

    std::size_t byte_count;
    double frame_rate = 30;
    std::map<std::string, std::shared_ptr<const Stack>, std::less<>> stacks;
    std::unordered_map<std::string, std::size_t> uses;        // of compositions by nests, by id
    std::unordered_map<std::string, std::size_t> nest_names;  // how many nests have each

  private:
    void read_asset(TextReader& reader);
    std::unordered_map<std::string, double> find_earliest_layers() const;
    std::unordered_map<std::string, double> find_first_frames() const;
    void count_nests(const Stack& stack, bool are_added);

    std::shared_ptr<Arena> arena_ = std::make_shared<Arena>();
    CompositionCalls composition_calls_;
    std::string_view letters_, fonts_;      // their texts
    mutable std::optional<Glyphs> glyphs_;  // read when somebody asks for them
    std::map<std::string, ImageSize, std::less<>> images_;
};

}  // namespace lottie::looks
