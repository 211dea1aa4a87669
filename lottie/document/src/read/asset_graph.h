// Which composition uses which asset.
#pragma once

#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "document/outline.h"

namespace lottie::document {

// Made from a whole outline. Throws InputError for compositions that contain themselves.
class AssetGraph {
  public:
    AssetGraph(const std::string& text, const DocumentOutline& outline);

    int asset_of(const std::string& id) const;  // -1 if there is none; the first of several
    // The asset whose composition the layer shows; -1 if it shows none, or one that does not exist.
    int comp_shown_by(const ScannedLayer& layer) const;
    // The layer that uses the composition first: the main one's layers count first, then the assets' in their order.
    const ScannedLayer* first_user(int asset) const { return first_users_[static_cast<std::size_t>(asset)]; }
    // How long any layer wants to see of it, in frames.
    double longest_use(int asset) const { return longest_uses_[static_cast<std::size_t>(asset)]; }

  private:
    void check_cycles() const;
    [[noreturn]] void refuse_cycle(const std::vector<std::size_t>& path, std::size_t comp, std::size_t layer) const;
    std::string name_of(std::size_t comp) const;

    const std::string& text_;
    const DocumentOutline& outline_;
    std::unordered_map<std::string, int> assets_;
    std::vector<const ScannedLayer*> first_users_;
    std::vector<double> longest_uses_;
};

}  // namespace lottie::document
