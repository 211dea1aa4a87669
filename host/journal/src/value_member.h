// Which member of a stream value's union a journal tells.
#pragma once

#include "journal/value.h"
#include "suites/value_member.h"

namespace host::journal {

using suites::ValueMember;

// Told by the names of its fields.
ValueMember member_of(const JournalValue& value);

}  // namespace host::journal
