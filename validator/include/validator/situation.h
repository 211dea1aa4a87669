// Situations in which a plug-in is visited: a project, what is open and selected, what is answered in dialogs.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "model/project.h"
#include "scriptui/dialog_driver.h"

namespace validator {

// A project as one visit finds it.
class Stage {
  public:
    virtual ~Stage() = default;
    virtual host::model::Project& project() = 0;
    // The file as it would be saved now; empty for a project that is no file.
    virtual std::string saved() { return {}; }
};

struct Situation {
    std::string name;      // letters, digits and hyphens
    std::string sentence;  // "two layers are selected"
    std::function<std::unique_ptr<Stage>()> build;
    // Who works the dialogs; made anew for each visit.
    std::function<std::unique_ptr<host::scriptui::DialogDriver>()> dialogs;
    // After the menus were updated once, before the command is picked.
    std::function<void(host::model::Project&)> change_before_command = {};
};

}  // namespace validator
