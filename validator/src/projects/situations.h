// The situations in which every plug-in is visited, one named function each.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "dialogs.h"
#include "projects/stages.h"
#include "validator/situation.h"

namespace validator {

// In all of them dialogs are answered so.
using Answers = std::vector<Answer>;

// Nothing to work on.
std::vector<Situation> empty_situations(const Answers& answers);
// What people have every day.
std::vector<Situation> typical_situations(const Answers& answers, Sources sources = Sources::pictures);
// Throws std::out_of_range if there is none of that name.
const Situation& situation_named(const std::vector<Situation>& situations, const std::string& name);
// Names, times and numbers that nobody has thought of.
std::vector<Situation> hostile_situations(const Answers& answers, Sources sources = Sources::pictures);
// One composition with so many layers, all selected.
Situation many_layers(int count, const Answers& answers, Sources sources = Sources::pictures);
// A project made at random; the same for the same seed, on every system.
Situation random_situation(std::uint64_t seed, const Answers& answers);

// An animation of somebody. `layers`: names, or "#3" for the third of the stack; none: all.
Situation file_situation(const std::string& text, const std::vector<std::string>& layers, const Answers& answers);

}  // namespace validator
