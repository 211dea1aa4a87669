// Counts the allocations of the whole test program.
#pragma once

#include <cstddef>

// How often operator new has run so far.
std::size_t allocations_so_far();
