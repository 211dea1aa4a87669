// Which calls of the error chain were reached.
#include <set>
#include <string>

#include "AE_Macros.h"
#include "entry.h"

namespace {

std::set<std::string>& calls() {
    static std::set<std::string> all;
    return all;
}

}  // namespace

void note_call(const char* file, int line, const char* text) {
    calls().insert(std::string(file) + "\t" + std::to_string(line) + "\t" + text);
}

// One line for each: file, line and text, with tabs between them. Stays valid until it is called again.
extern "C" DllExport const char* noted_calls() {
    static std::string text;
    text.clear();
    for (const std::string& call : calls()) text += call + "\n";
    return text.c_str();
}
