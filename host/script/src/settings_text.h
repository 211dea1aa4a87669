// The format of settings files: a header line per section, a line per value, every name and value in quotes.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "script/settings.h"

namespace host::script {

std::string write_settings(const Settings::Sections& sections);

struct ReadSettings {
    Settings::Sections sections;
    int damaged_line = 0;  // the first that cannot be parsed; 0 for none
};
ReadSettings read_settings(std::string_view text);

}  // namespace host::script
