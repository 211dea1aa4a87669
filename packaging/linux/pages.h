// What is made of the command's tables: the manual page, and what shells offer.
#pragma once

#include <string>

// The template with each line {{name}} replaced by what the tables say.
std::string manual_page(const std::string& page);

std::string bash_completions();
std::string fish_completions();
std::string zsh_completions();
