// Which calls of the error chain were reached: a line for each in the file that the environment variable NOTED_CALLS
// names.
#include <cstdio>
#include <cstdlib>
#include <set>
#include <string>

#include "AE_Macros.h"

void note_call(const char* file, int line, const char* text) {
    static std::set<std::string> noted;
    const std::string note = std::string(file) + "\t" + std::to_string(line) + "\t" + text + "\n";
    if (!noted.insert(note).second) return;
    std::FILE* notes = std::fopen(std::getenv("NOTED_CALLS"), "a");
    std::fputs(note.c_str(), notes);
    std::fclose(notes);
}
