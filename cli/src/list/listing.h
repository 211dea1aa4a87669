// The formats of `exflate list`.
#pragma once

#include <string>
#include <vector>

#include "cli/shared/failure.h"
#include "document/document.h"
#include "shared/json_writer.h"

namespace cli {

struct ListedAnimation {
    std::string id;  // in a .lottie file
    std::string label;
    lottie::document::Document document;
};

struct ListedFile {
    std::string name;
    bool is_collection = false;  // a .lottie file
    std::vector<ListedAnimation> animations;
};

// The tree for people. Each composition is shown once, inside the first nest that uses it; later ones refer to it.
std::string tree_text(const ListedFile& file);

// The same for programs, as one object, described in docs/list-json.md.
void add_tree(JsonWriter& json, const ListedFile& file);

// A file that cannot be listed.
void add_failure(JsonWriter& json, const std::string& file, const Failure& failure);

}  // namespace cli
