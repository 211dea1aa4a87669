// The choices of the plug-in's options dialog, with the dialog's own defaults.
#pragma once

#include <string>

namespace cli {

struct DialogAnswers {
    bool copy_attributes = true;
    bool delete_source = false;
    bool keep_in_comp = false;  // excludes delete_source
    std::string prefix;
    bool prepend_name = false;
    bool fix_random = false;
};

}  // namespace cli
