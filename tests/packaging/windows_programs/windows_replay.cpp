// Plays a journal to a plug-in module on Windows: windows_replay MODULE JOURNAL. Prints the verdict's sentence; ends
// with the exit codes of `exflate replay`.
#include <windows.h>

#include <atomic>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <string>
#include <variant>

#include "journal/journal.h"
#include "replay/replay_host.h"

namespace {

using host::journal::ReplayVerdict;

[[noreturn]] void end_with(int code, const std::string& sentence) {
    std::puts(sentence.c_str());
    std::fflush(stdout);
    std::_Exit(code);
}

[[noreturn]] void tell(const ReplayVerdict& verdict) {
    const std::string place = "line " + std::to_string(verdict.line) + ": " + verdict.sentence;
    switch (verdict.kind) {
        case ReplayVerdict::Kind::same:
        case ReplayVerdict::Kind::same_to_cut:
            end_with(0, verdict.sentence);
        case ReplayVerdict::Kind::differs:
            end_with(1, place);
        case ReplayVerdict::Kind::damaged:
            break;
    }
    end_with(3, place);
}

AEGP_PluginInitFunc entry_point_of(const char* file) {
    const HMODULE module = LoadLibraryA(file);
    if (module == nullptr) end_with(4, "the module cannot be loaded: error " + std::to_string(GetLastError()));
    const FARPROC function = GetProcAddress(module, "EntryPointFunc");
    if (function == nullptr) end_with(4, "the module has no entry point");
    return reinterpret_cast<AEGP_PluginInitFunc>(reinterpret_cast<void*>(function));
}

}  // namespace

int main(int count, char** arguments) {
    if (count != 3) end_with(2, "usage: windows_replay MODULE JOURNAL");
    std::ifstream stream(arguments[2], std::ios::binary);
    if (!stream) end_with(3, "the journal cannot be read");
    const std::string bytes(std::istreambuf_iterator<char>(stream), {});
    const auto result = host::journal::read(bytes);
    if (const auto* damage = std::get_if<host::journal::Damage>(&result)) end_with(3, damage->sentence);
    const auto& journal = std::get<host::journal::Journal>(result);
    std::atomic<std::size_t> place = 0;
    host::journal::ReplayHost(journal, entry_point_of(arguments[1]), place, tell).play();
}
