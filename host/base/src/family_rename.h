// Renaming in a family of processes: the one at its head renames for all of them. Once it has ended, by whatever, no
// file of theirs takes another's place any more; a rename of a child's own could still be under way then.
#pragma once

#include <string>

namespace host::base {

// In a child: from now on its parent is asked, through this end of a socket of sequenced packets.
void ask_parent_to_rename(int socket);

// In a parent: does what the child at the other end asks for next. False if it will ask for nothing more.
bool rename_for_child(int socket);

// rename(), over whatever has the other name; false with errno set. EINTR if a signal that waits to end this process
// came before the parent's answer.
bool rename_in_family(const std::string& from, const std::string& to);

}  // namespace host::base
