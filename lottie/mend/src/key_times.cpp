// Keyframes of a value moved to other times.
#include "key_times.h"

#include <vector>

#include "document/json_text.h"
#include "document/patch.h"

namespace lottie::mend {

using document::JsonKind;
using document::JsonNode;
using document::JsonTree;

std::string with_times(const JsonTree& tree, const JsonNode& value, TimeChange change) {
    document::Patch patch;
    std::vector<const JsonNode*> open;
    if (change.scale != 1 || change.shift != 0) open.push_back(&value);
    while (!open.empty()) {
        const JsonNode& node = *open.back();
        open.pop_back();
        for (const JsonNode* child = tree.first(node); child != nullptr; child = tree.next(*child)) {
            if (child->kind != JsonKind::object && (child->kind != JsonKind::array || child->is_numeric)) continue;
            open.push_back(child);
            if (child->kind != JsonKind::array || !tree.has_key(*child, "k")) continue;
            for (const JsonNode* key = tree.first(*child); key != nullptr; key = tree.next(*key)) {
                const JsonNode* time = tree.member(key, "t");
                if (time == nullptr || time->kind != JsonKind::number) continue;
                std::string spelling;
                document::append_number(spelling, tree.number(*time) * change.scale + change.shift);
                patch.replace(time->text, std::move(spelling));
            }
        }
    }
    document::OutputText out;
    patch.write(tree.whole_text(), value.text, out);
    return out.text();
}

}  // namespace lottie::mend
