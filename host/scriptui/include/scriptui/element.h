// A control or container of a dialog.
#pragma once

#include <array>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace host::scriptui {

class Window;

enum class ElementType { window, group, panel, static_text, edit_text, button, checkbox, radio_button };

// As in scripts, in lower case.
std::string_view type_name(ElementType type);
// Ignores case; nullopt for unknown names.
std::optional<ElementType> element_type(std::string_view name);

enum class Orientation { row, column, stack };
enum class Align { left, center, right, fill, top, bottom };

// `first` alone applies across the container's orientation; with `second`, they are horizontal and vertical.
struct Alignment {
    Align first = Align::center;
    std::optional<Align> second;
    friend bool operator==(const Alignment&, const Alignment&) = default;
};

// Layout settings from scripts. Lengths are in pixels. What is unset is computed.
struct Layout {
    static constexpr double kUnlimited = 1e6;
    std::optional<Alignment> alignment;            // of this element in its container
    std::array<double, 2> preferred_size{-1, -1};  // width, height; -1: computed
    std::array<double, 2> minimum_size{0, 0};
    std::array<double, 2> maximum_size{kUnlimited, kUnlimited};
    std::optional<std::array<double, 2>> size;      // width, height
    std::optional<std::array<double, 2>> location;  // left, top
    // Containers
    Orientation orientation = Orientation::column;
    Alignment align_children;
    double spacing = 10;
    std::array<double, 4> margins{};  // left, top, right, bottom
};

// Position and size after layout, in whole pixels: relative to the parent; for the window, its content on the screen.
struct Frame {
    double left = 0;
    double top = 0;
    double width = 0;
    double height = 0;
    friend bool operator==(const Frame&, const Frame&) = default;
};

class Element {
  public:
    Element(ElementType type, Window& window, Element* parent);
    virtual ~Element();
    Element(const Element&) = delete;
    Element& operator=(const Element&) = delete;

    ElementType type() const { return type_; }
    bool is_container() const { return type_ <= ElementType::panel; }
    bool has_value() const { return type_ == ElementType::checkbox || type_ == ElementType::radio_button; }
    Window& window() const { return window_; }
    Element* parent() const { return parent_; }  // null for the window
    const std::vector<std::unique_ptr<Element>>& children() const { return children_; }
    Element& add_child(ElementType type);

    // Searches depth first, in order of creation, without this element; null if none. Names are those given at
    // creation.
    Element* find_named(std::string_view name) const;
    Element* find_with_text(std::string_view text) const;
    void for_each(const std::function<void(const Element&)>& visit) const;  // including this element

    // Properties. Setting them fires no events; a driver shows changes after the current event.
    const std::string& name() const { return name_; }
    void set_name(std::string name) { name_ = std::move(name); }
    const std::string& text() const { return text_; }
    void set_text(std::string text) { text_ = std::move(text); }
    bool value() const { return value_; }
    void set_value(bool value);  // true clears the group's other radio buttons
    bool is_enabled() const { return enabled_; }
    void set_enabled(bool enabled) { enabled_ = enabled; }
    bool is_visible() const { return visible_; }
    void set_visible(bool visible) { visible_ = visible; }
    bool is_multiline() const { return multiline_; }
    void set_multiline(bool multiline) { multiline_ = multiline; }
    bool is_read_only() const { return read_only_; }
    void set_read_only(bool read_only) { read_only_ = read_only; }
    const std::string& help_tip() const { return help_tip_; }
    void set_help_tip(std::string text) { help_tip_ = std::move(text); }
    // Width of an edit field in characters; 0: that of its text.
    int characters() const { return characters_; }
    void set_characters(int characters) { characters_ = characters; }
    Align justification() const { return justification_; }  // of text: left, center or right
    void set_justification(Align justification) { justification_ = justification; }
    Layout& layout() { return layout_; }
    const Layout& layout() const { return layout_; }
    // Empty before the first layout; an element without a frame is not shown.
    const std::optional<Frame>& frame() const { return frame_; }
    void set_frame(const Frame& frame) { frame_ = frame; }

    // Whether it and all its ancestors are enabled and visible.
    bool takes_input() const;

    // Consecutive radio buttons of a container form a group, which includes this one.
    std::vector<Element*> radio_group() const;

  private:
    const ElementType type_;
    Window& window_;
    Element* const parent_;
    std::vector<std::unique_ptr<Element>> children_;
    std::string name_;
    std::string text_;
    bool value_ = false;
    bool enabled_ = true;
    bool visible_ = true;
    bool multiline_ = false;
    bool read_only_ = false;
    std::string help_tip_;
    int characters_ = 0;
    Align justification_ = Align::left;
    Layout layout_;
    std::optional<Frame> frame_;
};

}  // namespace host::scriptui
