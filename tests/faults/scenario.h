// One situation in which a plug-in is visited: a project, what is selected, what is chosen in the dialog.
#pragma once

#include <functional>
#include <ostream>
#include <string>
#include <vector>

#include "model/host_rules.h"
#include "scene.h"
#include "scriptui/dialog_driver.h"

namespace faults {

using host::model::testing::Scene;

enum class VisitedDoor { entry_point, menu_update, command };

// What a person chooses in the options dialog.
struct DialogChoices {
    bool cancel = false;
    bool copy_attributes = true;
    bool delete_source = false;
    bool keep_in_comp = false;
    std::string prefix = {};
    bool prepend_name = false;
    bool fix_random = false;

    bool start_a_run() const { return !cancel && prefix.size() <= 50; }
    std::vector<host::scriptui::Action> actions() const;
};

struct Scenario {
    std::string name;  // letters, digits and "_": names the test as well
    VisitedDoor door = VisitedDoor::command;
    std::function<void(Scene&)> build;
    DialogChoices choices = {};
    host::model::HostRules rules = {};
    // After the menus were updated once, before the command is picked.
    std::function<void(host::model::Project&)> change_before_visit = {};

    friend std::ostream& operator<<(std::ostream& out, const Scenario& scenario) { return out << scenario.name; }
};

// Those for this plug-in. Together they reach every call that its entry point, its menu hook and its command make.
const std::vector<Scenario>& scenarios();

}  // namespace faults
