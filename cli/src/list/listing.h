// The forms in which `exflate list` shows an animation.
#pragma once

#include <string>
#include <vector>

#include "document/document.h"

namespace cli {

// The tree for people. Each composition is shown once, inside the first nest that uses it; later ones refer to it.
std::string tree_text(const std::string& file, const lottie::document::Document& document);

// The same for programs; docs/list-json.md tells the form.
std::string tree_json(const std::string& file, const lottie::document::Document& document);

// One animation of a .lottie file.
struct ListedAnimation {
    std::string id;
    std::string label;
    lottie::document::Document document;
};

// All of them for programs.
std::string trees_json(const std::string& file, const std::vector<ListedAnimation>& animations);

}  // namespace cli
