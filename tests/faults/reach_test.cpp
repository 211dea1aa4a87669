// The scenarios together reach every call of the plug-in, at every place where it stands.
#include <gmock/gmock.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <regex>
#include <set>
#include <sstream>

#include "visit.h"

namespace faults {
namespace {

using testing::ElementsAreArray;

std::string read(const std::filesystem::path& path) {
    std::ifstream in(path);
    EXPECT_TRUE(in) << path;
    return {std::istreambuf_iterator<char>(in), {}};
}

std::vector<std::filesystem::path> plugin_units() {
    std::vector<std::filesystem::path> units;
    for (const auto& entry : std::filesystem::directory_iterator(PLUGIN_SOURCES))
        if (entry.path().extension() == ".cpp") units.push_back(entry.path());
    std::sort(units.begin(), units.end());
    return units;
}

// The list: slots that a command, a menu or the entry point reaches; then, under a line of its own, those that only
// operations without a caller use.
struct Slots {
    std::set<std::string> reached;
    std::set<std::string> without_caller;
};

Slots listed_slots() {
    Slots slots;
    std::istringstream in(read(SLOT_LIST));
    bool has_caller = true;
    for (std::string line; std::getline(in, line);) {
        if (line.starts_with("# Without a caller")) has_caller = false;
        if (!line.empty() && line[0] != '#') (has_caller ? slots.reached : slots.without_caller).insert(line);
    }
    return slots;
}

std::set<std::string> slots_in_sources() {
    static const std::regex kCall(R"(suites\.(\w+)\(\)\s*->\s*(AEGP_\w+)\()");
    std::set<std::string> slots;
    for (const auto& unit : plugin_units()) {
        const std::string text = read(unit);
        for (std::sregex_iterator it(text.begin(), text.end(), kCall), end; it != end; ++it)
            slots.insert((*it)[1].str() + "." + (*it)[2].str());
    }
    return slots;
}

// Every scenario without a fault, and a start that fails: only then is there something to report.
std::vector<SweepVisit> visits(const char* module) {
    std::vector<SweepVisit> all;
    const auto visit_with = [&](const Scenario& scenario, const Fault& fault) {
        visit(module, scenario, {fault}, 60, [&](const Fault&, const SweepVisit& visited) { all.push_back(visited); });
    };
    for (const Scenario& scenario : scenarios()) visit_with(scenario, {});
    EXPECT_EQ(scenarios().front().door, VisitedDoor::entry_point);
    visit_with(scenarios().front(), {Fault::Kind::call_once, 1});
    return all;
}

TEST(Reach, the_list_of_slots_is_that_of_the_sources) {
    const Slots listed = listed_slots();
    std::set<std::string> all = listed.reached;
    all.insert(listed.without_caller.begin(), listed.without_caller.end());
    EXPECT_EQ(all.size(), listed.reached.size() + listed.without_caller.size());
    EXPECT_THAT(slots_in_sources(), ElementsAreArray(all));
}

TEST(Reach, the_scenarios_call_every_listed_slot_and_no_other) {
    std::set<std::string> called;
    for (const SweepVisit& visit : visits(PLUGIN_MODULE))
        for (const MadeCall& call : visit.calls)
            if (call.kind == MadeCall::Kind::suite) called.insert(call.words());
    EXPECT_THAT(called, ElementsAreArray(listed_slots().reached));
}

struct CallSite {
    std::string file;
    std::ptrdiff_t first_line;
    std::ptrdiff_t last_line;
    std::string text;  // without blanks
};

std::string without_blanks(std::string text) {
    std::erase_if(text, [](char c) { return c == ' ' || c == '\n'; });
    return text;
}

std::vector<CallSite> call_sites() {
    static const std::regex kChain(R"(\bERR2?\()");
    std::vector<CallSite> sites;
    for (const auto& unit : plugin_units()) {
        const std::string text = read(unit);
        for (std::sregex_iterator it(text.begin(), text.end(), kChain), last; it != last; ++it) {
            const auto begin = static_cast<std::size_t>(it->position() + it->length());
            std::size_t end = begin;
            for (int depth = 1; end < text.size(); ++end) {
                if (text[end] == '(') ++depth;
                if (text[end] == ')' && --depth == 0) break;
            }
            const std::string call = without_blanks(text.substr(begin, end - begin));
            if (!call.starts_with("suites.")) continue;
            const auto line_at = [&](std::size_t place) {
                return 1 + std::count(text.begin(), text.begin() + static_cast<std::ptrdiff_t>(place), '\n');
            };
            sites.push_back({unit.filename().string(), line_at(begin), line_at(end), call});
        }
    }
    return sites;
}

// Operations that no command reaches.
bool has_no_caller(const CallSite& site) {
    static const std::set<std::pair<std::string, std::string>> kTexts = {
        {"EX_Util_order.cpp", "suites.LayerSuite5()->AEGP_GetCompLayerByIndex(comp,index,&layer)"},
        {"EX_Util_order.cpp", "suites.LayerSuite5()->AEGP_ReorderLayer(layer,0)"},
        {"EX_Util_parents.cpp", "suites.LayerSuite4()->AEGP_GetLayerSourceItem(precompLayer,&item)"},
        {"EX_Util_parents.cpp", "suites.CompSuite11()->AEGP_GetCompFromItem(item,comp)"},
    };
    return site.file == "EX_Util_solid.cpp" || kTexts.contains({site.file, site.text});
}

struct NotedCall {
    std::string file;
    std::ptrdiff_t line;
    std::string text;
};

std::vector<NotedCall> noted_calls() {
    const std::string notes = testing::TempDir() + "noted_calls_" + std::to_string(getpid());
    setenv("NOTED_CALLS", notes.c_str(), 1);
    visits(NOTING_PLUGIN);
    std::set<std::string> lines;
    std::istringstream in(read(notes));
    for (std::string line; std::getline(in, line);) lines.insert(line);
    std::filesystem::remove(notes);
    std::vector<NotedCall> calls;
    for (const std::string& line : lines) {
        std::istringstream fields(line);
        std::string file, number, text;
        std::getline(fields, file, '\t');
        std::getline(fields, number, '\t');
        std::getline(fields, text);
        calls.push_back({std::filesystem::path(file).filename().string(), std::stol(number), without_blanks(text)});
    }
    return calls;
}

TEST(Reach, the_scenarios_reach_every_call_in_the_sources) {
    const std::vector<NotedCall> noted = noted_calls();
    const std::vector<CallSite> sites = call_sites();
    EXPECT_GT(sites.size(), 150U);
    for (const CallSite& site : sites) {
        // Compilers differ in which line they name for a call that spans several.
        const bool is_reached = std::any_of(noted.begin(), noted.end(), [&](const NotedCall& call) {
            return call.file == site.file && call.text == site.text && call.line >= site.first_line &&
                   call.line <= site.last_line;
        });
        EXPECT_NE(is_reached, has_no_caller(site)) << site.file << ":" << site.first_line << ": " << site.text;
    }
}

}  // namespace
}  // namespace faults
