// The processes that this one has started: none of them outlives it, however it ends.
#pragma once

#include <sys/types.h>

#include <cstddef>

namespace host::base {

// fork(), for which the child is sent SIGKILL when this thread ends. While children live, a signal that ends the
// program ends them first: each may complete what it has in hand that blocks the signal, but is not left behind.
// `entry` is for forget_child().
pid_t fork_child(std::size_t& entry);

// It has been waited for.
void forget_child(std::size_t entry);

// Orphans of its descendants become children of this process.
void take_in_orphans();

// Ends them. Whatever else this process has started, it was started by fork_child().
void end_orphans();

// In a child: its parent's other children are not its own.
void forget_all_children();

}  // namespace host::base
