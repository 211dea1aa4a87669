// A layer as text, with members that can be read and set.
#pragma once

#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "document/json_tree.h"
#include "document/patch.h"

namespace lottie::mend {

class LayerText {
  public:
    // `where` is the layer's object in `text`, which must outlive this.
    LayerText(const std::string& text, document::Slice where) : text_(text), where_(where) {}
    // A layer that nobody else holds.
    explicit LayerText(std::string own);
    LayerText(const LayerText&) = delete;

    // As it is now; empty if there is none.
    std::string_view member(std::string_view key) const;
    std::optional<double> number(std::string_view key) const;
    double number(std::string_view key, double missing) const { return number(key).value_or(missing); }
    bool is_set(std::string_view key) const;  // true, or a number other than 0

    // `value` is JSON.
    void set(std::string_view key, std::string value);
    void set_number(std::string_view key, double value);
    void remove(std::string_view key);
    // As `other` has it, which may be not at all.
    void take(std::string_view key, const LayerText& other);

    // Sets a member of the object that is its member `key`.
    void set_inside(std::string_view key, std::string_view inner, std::string value);

    // Its expressions as they are now, in the order of the text; `rewrite` gives what is to stand in the place of one,
    // nothing where it stays.
    void rewrite_expressions(const std::function<std::optional<std::string>(const std::string&)>& rewrite);

    // As it was, for looking deeper, though not into shapes and text.
    const document::JsonTree& tree() const;
    // As it was, with nothing inside of its members.
    const document::JsonTree& members() const;

    bool is_changed() const { return !changes_.empty(); }
    document::Slice where() const { return where_; }
    std::string text() const;

  private:
    std::vector<std::string> keys() const;

    std::string own_;
    const std::string& text_;
    document::Slice where_;
    mutable std::optional<document::JsonTree> tree_;  // made when somebody looks inside
    mutable std::optional<document::JsonTree> members_;
    std::map<std::string, std::optional<std::string>, std::less<>> changes_;
};

}  // namespace lottie::mend
