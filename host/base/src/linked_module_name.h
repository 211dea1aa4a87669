// Which names of files mean modules that are part of the program.
#pragma once

#include <filesystem>

namespace host::base {

bool is_linked_module(const std::filesystem::path& file);

}  // namespace host::base
