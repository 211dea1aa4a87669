// Any bytes as what the options dialog gives the plug-in: the command ends with a code and holds no suite.
#include <algorithm>

#include "Exflate.h"
#include "embedded_jsx.h"
#include "fake_host/fake_host.h"
#include "harness.h"

namespace {

// "main" holds "nest", which shows "inner" with one layer. No script does anything.
void build(fake::Host& host) {
    fake::Item* footage = host.add_item("footage", AEGP_ItemType_FOOTAGE);
    fake::Comp* inner = host.add_comp("inner");
    fake::Comp* main = host.add_comp("main");
    host.add_layer(inner, "a", footage);
    main->selection = {host.add_layer(main, "nest", inner->item)};
    host.active_item = main->item;
}

// A call's arguments may hold anything, its beginning may not.
auto calls_of(const fake::Host& host, std::string_view function) {
    return std::ranges::count_if(host.calls, [&](const std::string& line) { return line.starts_with(function); });
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string answer(fuzz::text_of(data, size));
    fake::Host host;
    build(host);
    const std::string dialog = find_embedded_file("mainPanel.jsx", nullptr);
    host.script_labels = {{dialog, "DIALOG"}};
    host.on_script = [&](const std::string& script) { return script == dialog ? answer : std::string(); };
    sP = host.basic();
    S_my_id = 7;
    S_Exflate_cmd = 77;

    A_Boolean handled = 0;
    const A_Err error = CommandHook(nullptr, nullptr, S_Exflate_cmd, AEGP_HP_BeforeAE, 0, &handled);
    fuzz::require(handled == 1, "the command is handled whatever the dialog gives");
    fuzz::require(error == A_Err_NONE, "no answer of the dialog is an error of the host");
    fuzz::require(host.held == 0, "every suite is released");
    fuzz::require(calls_of(host, "Utility6.StartUndoGroup(") == calls_of(host, "Utility6.EndUndoGroup("),
                  "every undo group is closed");
    return 0;
}
