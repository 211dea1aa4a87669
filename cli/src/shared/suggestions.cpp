// What a mistyped name may have meant.
#include "cli/shared/suggestions.h"

#include <algorithm>
#include <numeric>
#include <set>
#include <utility>

#include "cli/shared/console.h"

namespace cli {
namespace {

constexpr std::size_t kMaxSuggestions = 3;

char lower(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

}  // namespace

std::size_t edit_distance(std::string_view a, std::string_view b) {
    // Three rows of the table: the one being filled and the two above it.
    std::vector<std::size_t> before_last(b.size() + 1);
    std::vector<std::size_t> last(b.size() + 1);
    std::vector<std::size_t> row(b.size() + 1);
    std::iota(last.begin(), last.end(), std::size_t{0});
    for (std::size_t i = 1; i <= a.size(); ++i) {
        row[0] = i;
        for (std::size_t j = 1; j <= b.size(); ++j) {
            const bool equal = lower(a[i - 1]) == lower(b[j - 1]);
            row[j] = std::min({last[j] + 1, row[j - 1] + 1, last[j - 1] + (equal ? 0U : 1U)});
            const bool swapped =
                i > 1 && j > 1 && lower(a[i - 1]) == lower(b[j - 2]) && lower(a[i - 2]) == lower(b[j - 1]);
            if (swapped) row[j] = std::min(row[j], before_last[j - 2] + 1);
        }
        std::swap(before_last, last);
        std::swap(last, row);
    }
    return last[b.size()];
}

std::vector<std::string> suggestions(std::string_view typed, const std::vector<std::string>& names) {
    const std::size_t reach = std::max<std::size_t>(2, typed.size() / 3);
    std::set<std::pair<std::size_t, std::string>> near;
    for (const std::string& name : names) {
        const std::size_t longer = std::max(name.size(), typed.size());
        const std::size_t shorter = std::min(name.size(), typed.size());
        if (longer - shorter > reach) continue;
        const std::size_t distance = edit_distance(typed, name);
        // A name with nothing in common is not similar.
        if (distance <= reach && distance < longer) near.emplace(distance, name);
    }
    std::vector<std::string> result;
    for (const auto& [distance, name] : near) {
        if (result.size() == kMaxSuggestions) break;
        result.push_back(name);
    }
    return result;
}

std::string did_you_mean(std::string_view typed, const std::vector<std::string>& names) {
    const std::vector<std::string> near = suggestions(typed, names);
    if (near.empty()) return "";
    std::string text = "; did you mean ";
    for (std::size_t i = 0; i < near.size(); ++i) {
        if (i > 0) text += i + 1 == near.size() ? " or " : ", ";
        text += in_quotes(near[i]);
    }
    return text + '?';
}

}  // namespace cli
