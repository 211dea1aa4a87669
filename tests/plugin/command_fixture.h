// What the tests of the command share: a dialog that answers itself, and a script that copies layers.
#pragma once

#include <algorithm>

#include "Exflate.h"
#include "embedded_jsx.h"
#include "operation_test.h"

inline const char* const kCopyAndKeepNothing = "[true,false,false,\"\",false,false]";
inline const char* const kDiscard = "[false,false,false,\"\",false,false]";

class Command : public OperationTest {
  protected:
    Command() {
        sP = host.basic();
        S_my_id = 7;
        S_Exflate_cmd = 77;
        host.script_labels = {{find_embedded_file("mainPanel.jsx", nullptr), "DIALOG"},
                              {find_embedded_file("prefixTooLong.jsx", nullptr), "TOO LONG"}};
        host.on_script = [this](const std::string& script) {
            if (script == find_embedded_file("mainPanel.jsx", nullptr)) return answer;
            if (script.find("copyToComp") != std::string::npos) copy_in(script);
            return std::string();
        };
    }

    // Copies stand above the topmost selected layer. The script's first item number is that of the pre-comp.
    void copy_in(const std::string& script) {
        const std::string address = "app.project.item(";
        const int number = std::stoi(script.substr(script.find(address) + address.size()));
        std::size_t place = 0;
        const auto is_selected = [this](fake::Layer* layer) {
            return std::find(main->selection.begin(), main->selection.end(), layer) != main->selection.end();
        };
        while (!is_selected(main->layers[place])) ++place;
        for (fake::Layer* layer : host.items[static_cast<std::size_t>(number)]->comp->layers) {
            fake::Layer* copy = host.add_layer(main, layer->label + "'", layer->source);
            main->layers.pop_back();
            main->layers.insert(main->layers.begin() + static_cast<std::ptrdiff_t>(place++), copy);
        }
    }

    A_Err run(A_Boolean already_handled = false, AEGP_Command command = 77) {
        handled = 9;
        return CommandHook(nullptr, nullptr, command, AEGP_HP_BeforeAE, already_handled, &handled);
    }

    std::string answer = kCopyAndKeepNothing;
    A_Boolean handled = 9;
};

inline std::string script_call(const std::string& script) {
    return "Utility6.ExecuteScript(7, " + script + ", false, null, null)";
}
