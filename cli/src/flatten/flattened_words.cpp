// What is said of an animation made flat.
#include "cli/flatten/flattening.h"
#include "cli/shared/console.h"
#include "cli/shared/trial.h"

namespace cli {
namespace {

std::string reasons(const std::vector<lottie::looks::Reason>& mended) {
    std::string list;
    for (const auto reason : mended) list += (list.empty() ? "" : ", ") + std::string(code(reason));
    return list;
}

constexpr std::size_t kMostNamed = 20;  // in one line

// The nests for which it holds, each with its reason.
template <class IsSo, class Reason>
std::string listed(const std::vector<FlattenedNest>& nests, IsSo is_so, Reason reason) {
    std::string list;
    std::size_t count = 0;
    for (const FlattenedNest& nest : nests) {
        if (!is_so(nest) || ++count > kMostNamed) continue;
        list += (list.empty() ? ": " : ", ") + in_quotes(nest.name) + " (" + reason(nest) + ")";
    }
    if (count <= kMostNamed) return list;
    return list + " and " + std::to_string(count - kMostNamed) + " more, which --verbose names";
}

}  // namespace

std::string nest_line(const FlattenedNest& nest) {
    const std::string place = nest.composition.empty() ? "" : " in composition " + in_quotes(nest.composition_name);
    std::string line = "nest #" + std::to_string(nest.number) + " " + in_quotes(nest.name) + place;
    if (nest.is_kept()) return line + " stays: " + nest.kept_because;
    line += " un-nested: " + std::string(name(nest.verdict));
    return nest.mended.empty() ? line : line + "; mended: " + reasons(nest.mended);
}

std::string last_line(const Flattened& flattened) {
    const auto& nests = flattened.nests;
    const std::string changing = listed(
        nests, [](const auto& nest) { return nest.changes(); },
        [](const auto& nest) { return main_reason(nest.findings); });
    const std::string left =
        counted(flattened.nests_left, "pre-comp") + " left" +
        listed(
            nests, [](const auto& nest) { return nest.is_kept(); }, [](const auto& nest) { return nest.kept_because; });
    if (flattened.succeeded()) return left + ", look kept";
    return changing.empty() ? left : left + "; look changed" + changing;
}

FileTotals totals_of(const Flattened& flattened) {
    FileTotals totals;
    totals.nests = flattened.nests.size();
    totals.left = flattened.nests_left;
    for (const FlattenedNest& nest : flattened.nests) {
        ++(nest.is_kept() ? totals.kept : totals.unnested);
        totals.mended += nest.is_kept() || nest.mended.empty() ? 0U : 1U;
    }
    return totals;
}

}  // namespace cli
