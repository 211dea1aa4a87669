// Calls of the host into a plug-in as text.
#include "write/visits.h"

namespace host::journal {
namespace {

std::string own_text(HandleNamer& namer, const void* address, std::string_view word) {
    return address ? namer.own(raw(address), word) : "null";
}

}  // namespace

std::string arguments_text(HandleNamer& namer, const suites::PluginCall& call) {
    Encoder encoder(namer, Encoder::Direction::to_host);
    if (call.function == PluginFunction::entry_point) {
        encoder.add(call.plugin);
        encoder.add_word(quoted_bytes(call.plugin_name));
        encoder.add(call.major);
        encoder.add(call.minor);
        return encoder.text();
    }
    encoder.add_word(own_text(namer, call.hook, kFunctionWord));
    encoder.add(*call.global_refcon);
    encoder.add_word(own_text(namer, call.refcon, kRefconWord));
    if (call.function == PluginFunction::update_menu_hook) {
        encoder.add(call.window);
    } else if (call.function == PluginFunction::idle_hook) {
        encoder.add(*call.max_sleep);
    } else if (call.function == PluginFunction::command_hook) {
        encoder.add(call.command);
        encoder.add(call.priority);
        encoder.add(call.already_handled);
    }
    return encoder.text();
}

std::string results_text(HandleNamer& namer, const suites::PluginCall& call) {
    Encoder encoder(namer, Encoder::Direction::to_host);
    if (call.function == PluginFunction::entry_point) encoder.add(*call.global_refcon);
    if (call.function == PluginFunction::command_hook) encoder.add(*call.handled);
    if (call.function == PluginFunction::idle_hook) encoder.add(*call.max_sleep);
    return encoder.text();
}

}  // namespace host::journal
