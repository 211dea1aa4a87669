// Calls of the host into a plug-in as a journal tells them.
#include "visits.h"

namespace host::journal {
namespace {

std::string own_text(Namer& namer, const void* address, std::string_view word) {
    return address ? namer.own(raw(address), word) : "null";
}

}  // namespace

Door door_of(const suites::PluginCall& call) {
    switch (call.what) {
        case suites::PluginCall::What::update_menu_hook:
            return Door::update_menu_hook;
        case suites::PluginCall::What::command_hook:
            return Door::command_hook;
        case suites::PluginCall::What::entry_point:
            break;
    }
    return Door::entry_point;
}

std::string arguments_text(Namer& namer, const suites::PluginCall& call) {
    Encoder encoder(namer, Encoder::Direction::to_host);
    if (call.what == suites::PluginCall::What::entry_point) {
        encoder.add(call.plugin);
        encoder.add_word(quoted_bytes(call.plugin_name));
        encoder.add(call.major);
        encoder.add(call.minor);
        return encoder.text();
    }
    encoder.add_word(own_text(namer, call.function, kFunctionWord));
    encoder.add(*call.global_refcon);
    encoder.add_word(own_text(namer, call.refcon, kRefconWord));
    if (call.what == suites::PluginCall::What::update_menu_hook) {
        encoder.add(call.window);
    } else {
        encoder.add(call.command);
        encoder.add(call.priority);
        encoder.add(call.already_handled);
    }
    return encoder.text();
}

std::string results_text(Namer& namer, const suites::PluginCall& call) {
    Encoder encoder(namer, Encoder::Direction::to_host);
    if (call.what == suites::PluginCall::What::entry_point) encoder.add(*call.global_refcon);
    if (call.what == suites::PluginCall::What::command_hook) encoder.add(*call.handled);
    return encoder.text();
}

}  // namespace host::journal
