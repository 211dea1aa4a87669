// The listing as a tree for people.
#include <deque>
#include <unordered_set>

#include "cli/shared/console.h"
#include "cli/shared/selection.h"
#include "list/listing.h"
#include "shared/layer_facts.h"

namespace cli {
namespace {

using host::model::Comp;
using host::model::Layer;

// Deeper nests are listed on their own instead of further to the right.
constexpr int kDeepestIndent = 16;

class TreeListing {
  public:
    explicit TreeListing(const lottie::document::Document& document) : document_(document) {}

    // Empty for a composition that was already shown.
    void add(const Comp& comp) {
        add_root(comp);
        for (; !below_.empty(); below_.pop_front()) add_root(*below_.front());
    }

    std::string text() && { return std::move(text_); }

  private:
    void add_root(const Comp& comp) {
        if (!shown_.insert(&comp).second) return;
        text_ += "composition " + name_and_id(comp) + ", " + std::to_string(comp.width()) + " x " +
                 std::to_string(comp.height()) + ", " + rounded_text(comp.frame_rate()) + " frames a second, " +
                 counted(static_cast<std::size_t>(comp.layer_count()), "layer") + "\n";
        add_layers(comp, 1);
    }

    std::string name_and_id(const Comp& comp) const {
        const std::string id = document_.comp_id(comp);
        return in_quotes(comp.name()) + (id.empty() ? "" : " [" + printable(id) + "]");
    }

    void add_layers(const Comp& comp, int depth) {
        int number = 0;
        for (const Layer* layer : comp.stack().to_vector()) add_layer(*layer, ++number, depth);
    }

    void add_layer(const Layer& layer, int number, int depth) {
        const Comp& comp = layer.comp();
        text_.append(static_cast<std::size_t>(depth) * 4, ' ');
        text_ += '#' + std::to_string(number) + ' ' + type_of(document_, layer) + ' ' +
                 in_quotes(layer.display_name()) + ' ' + rounded_text(frames(comp, layer.in_point())) + " to " +
                 rounded_text(frames(comp, layer.in_point() + layer.duration()));
        if (!is_nest(layer)) {
            text_ += '\n';
            return;
        }
        const Comp& inner = *layer.source()->comp();
        text_ += " of composition " + name_and_id(inner);
        if (shown_.contains(&inner)) {
            text_ += ", shown above\n";
        } else if (depth == kDeepestIndent) {
            text_ += ", shown below\n";
            below_.push_back(&inner);
        } else {
            shown_.insert(&inner);
            text_ += '\n';
            add_layers(inner, depth + 1);
        }
    }

    const lottie::document::Document& document_;
    std::unordered_set<const Comp*> shown_;
    std::deque<const Comp*> below_;
    std::string text_;
};

}  // namespace

std::string tree_text(const ListedFile& file) {
    std::string text;
    for (const ListedAnimation& animation : file.animations) {
        TreeListing tree(animation.document);
        tree.add(animation.document.main_comp());
        // What the main composition does not reach.
        for (const Comp* comp : animation.document.project().comps()) tree.add(*comp);
        text += printable(animation.label) + "\n" + std::move(tree).text();
    }
    return printable_lines(text);
}

}  // namespace cli
