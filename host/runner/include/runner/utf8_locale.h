// The process's locale, in which plug-ins read narrow text.
#pragma once

namespace host::runner {

// Makes UTF-8 the encoding of narrow text for the whole process; the rest of the locale stays "C". Call it once, before
// any plug-in. False if the system has no UTF-8 locale.
bool use_utf8_locale();

}  // namespace host::runner
