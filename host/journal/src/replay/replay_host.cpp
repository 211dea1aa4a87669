// Plays the host from a journal: calls into the plug-in, and what stops a replay.
#include "replay/replay_host.h"

#include <cstdlib>
#include <utility>

#include "replay/difference.h"
#include "replay/tables.h"

namespace host::journal {
namespace {

ReplayHost* active_host = nullptr;

template <class Number>
Number number_from(Decoder& decoder, const JournalValue& value) {
    Number number = 0;
    decoder.read(value, number);
    return number;
}

std::string counted(std::size_t count, const std::string& noun) {
    return std::to_string(count) + ' ' + noun + (count == 1 ? "" : "s");
}

}  // namespace

ReplayHost::ReplayHost(const Journal& journal, AEGP_PluginInitFunc entry_point, std::atomic<std::size_t>& place,
                       Stop stop)
    : journal_(journal), entry_point_(entry_point), place_(place), stop_(std::move(stop)) {
    active_host = this;
}

ReplayHost::~ReplayHost() {
    active_host = nullptr;
}

ReplayHost* ReplayHost::active() {
    return active_host;
}

void ReplayHost::stop(ReplayVerdict::Kind kind, std::size_t line, std::string sentence) {
    stop_({kind, line, std::move(sentence)});
    std::abort();  // not reached
}

void ReplayHost::stop_at_cut() {
    stop(ReplayVerdict::Kind::same_to_cut, journal_.last_line,
         "the journal is cut after line " + std::to_string(journal_.last_line) +
             "; up to there the plug-in did the same");
}

void ReplayHost::differ(const std::string& sentence) {
    stop(ReplayVerdict::Kind::differs, here().line_number, sentence);
}

void ReplayHost::play() {
    std::size_t calls = 0;
    std::size_t visits = 0;
    for (const JournalLine& line : journal_.lines) {
        if (line.kind == JournalLine::Kind::call) ++calls;
        if (line.kind == JournalLine::Kind::enter) ++visits;
    }
    try {
        while (!is_over()) {
            if (here().kind == JournalLine::Kind::enter)
                visit();
            else
                go_on();
        }
    } catch (const std::exception& problem) {
        stop(ReplayVerdict::Kind::damaged, is_over() ? journal_.last_line : here().line_number, problem.what());
    }
    if (!journal_.is_complete) stop_at_cut();
    stop(ReplayVerdict::Kind::same, journal_.last_line,
         "the plug-in did the same: " + counted(calls, "call") + " in " + counted(visits, "visit"));
}

template <class Pointer>
Pointer ReplayHost::own_pointer(const JournalValue& value) const {
    if (value.is_word("null")) return nullptr;
    const auto known = value.kind == JournalValue::Kind::name ? own_.raw_of({value.text, value.number}) : std::nullopt;
    if (!known) throw BadValue(text_of(value) + " is nothing that the plug-in ever gave");
    return from_raw<Pointer>(*known);
}

void ReplayHost::visit() {
    const PluginFunction function = here().function;
    const std::vector<JournalValue> arguments = here().values();
    constexpr std::size_t kArguments[suites::kPluginFunctionCount] = {4, 4, 6, 4, 3};
    if (arguments.size() != kArguments[static_cast<std::size_t>(function)])
        throw BadValue("a visit has more or fewer arguments than this one");
    Results results;
    A_Err error = A_Err_NONE;
    bool has_thrown = false;
    try {
        error = enter(function, arguments, results);
    } catch (const BadValue&) {
        throw;  // ours: the plug-in was not called
    } catch (...) {
        has_thrown = true;
    }
    check_return(function, error, has_thrown, results);
}

A_Err ReplayHost::enter(PluginFunction function, const std::vector<JournalValue>& arguments, Results& results) {
    Decoder decoder(*this);
    if (function == PluginFunction::entry_point) {
        if (!plugin_name_.empty() && plugin_name_ != arguments[1].text)
            throw BadValue("a second plug-in is entered; a replay has one");
        plugin_name_ = arguments[1].text;
        const auto id = number_from<AEGP_PluginID>(decoder, arguments[0]);
        const auto major = number_from<A_long>(decoder, arguments[2]);
        const auto minor = number_from<A_long>(decoder, arguments[3]);
        go_on();
        return entry_point_(replay_basic_suite(), major, minor, id, &results.refcon);
    }
    const auto refcon = results.refcon = own_pointer<AEGP_GlobalRefcon>(arguments[1]);
    if (function == PluginFunction::update_menu_hook) {
        const auto hook = own_pointer<AEGP_UpdateMenuHook>(arguments[0]);
        const auto hook_refcon = own_pointer<AEGP_UpdateMenuRefcon>(arguments[2]);
        const auto window = number_from<AEGP_WindowType>(decoder, arguments[3]);
        if (!hook) throw BadValue("there is no hook to call");
        go_on();
        return hook(refcon, hook_refcon, window);
    }
    if (function == PluginFunction::idle_hook) {
        const auto hook = own_pointer<AEGP_IdleHook>(arguments[0]);
        const auto hook_refcon = own_pointer<AEGP_IdleRefcon>(arguments[2]);
        results.max_sleep = number_from<A_long>(decoder, arguments[3]);
        if (!hook) throw BadValue("there is no hook to call");
        go_on();
        return hook(refcon, hook_refcon, &results.max_sleep);
    }
    if (function == PluginFunction::death_hook) {
        const auto hook = own_pointer<AEGP_DeathHook>(arguments[0]);
        const auto hook_refcon = own_pointer<AEGP_DeathRefcon>(arguments[2]);
        if (!hook) throw BadValue("there is no hook to call");
        go_on();
        return hook(refcon, hook_refcon);
    }
    const auto hook = own_pointer<AEGP_CommandHook>(arguments[0]);
    const auto hook_refcon = own_pointer<AEGP_CommandRefcon>(arguments[2]);
    const auto command = number_from<AEGP_Command>(decoder, arguments[3]);
    const auto priority = number_from<AEGP_HookPriority>(decoder, arguments[4]);
    const auto already_handled = number_from<A_Boolean>(decoder, arguments[5]);
    if (!hook) throw BadValue("there is no hook to call");
    go_on();
    return hook(refcon, hook_refcon, command, priority, already_handled, &results.handled);
}

void ReplayHost::check_return(PluginFunction function, A_Err error, bool has_thrown, const Results& results) {
    need_line();
    Encoder encoder(*this, Encoder::Direction::to_host);
    if (function == PluginFunction::entry_point) encoder.add(results.refcon);
    if (function == PluginFunction::command_hook) encoder.add(results.handled);
    if (function == PluginFunction::idle_hook) encoder.add(results.max_sleep);
    const bool is_leaving = here().kind == JournalLine::Kind::leave;
    // After an exception the code is the host's, not the plug-in's.
    if (is_leaving && here().has_thrown == has_thrown && (has_thrown || here().code == error) &&
        here().values() == parse_values(encoder.text())) {
        go_on();
        return;
    }
    const std::string got = is_leaving ? "" : std::string(name_of(function)) + " coming back with ";
    const std::string code = has_thrown ? "an exception" : std::to_string(error);
    differ(expected_got(in_words(here()), got + code + " (" + encoder.text() + ')'));
}

}  // namespace host::journal
