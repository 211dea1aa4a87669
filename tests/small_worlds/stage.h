// A small world in the real host with the real plug-in, compared with the promise.
#pragma once

#include <string>
#include <vector>

#include "document/document.h"
#include "promise.h"
#include "runner/session.h"
#include "script/settings.h"
#include "scriptui/dialog_driver.h"
#include "state.h"
#include "world.h"

namespace small_worlds {

// Gives the dialog exactly the chosen values, even combinations that a person could not choose.
class Answerer : public host::scriptui::DialogDriver {
  public:
    void set_choices(Choices choices) { choices_ = std::move(choices); }
    void drive(host::scriptui::Window& window) override;

  private:
    Choices choices_;
};

class Stage {
  public:
    explicit Stage(const World& world);

    // Runs the command on the layers at these places of "Main", in this order; compares what is there then, and what is
    // there once the run is undone, with what should be. False after the first difference, which has become a failure
    // of the test that names the world.
    bool keeps_promise(const std::vector<int>& selected_places, const Choices& choices, const std::string& world_name);

    // Whether the command is disabled for these layers, and changes nothing when it is asked all the same.
    bool refuses(const std::vector<int>& selected_places);

    // Worlds compared in this process.
    static int count();

  private:
    State observe() const;
    std::vector<int> select(const std::vector<int>& places);  // their ids
    host::runner::VisitResult run_command() { return session_.run_command(session_.menu_items().at(0).command); }
    std::string difference(const std::vector<int>& selected_places, const Choices& choices);

    const std::string text_;
    lottie::document::Document document_;
    host::script::Settings settings_ = host::script::Settings::in_memory();
    Answerer answerer_;
    host::runner::Session session_;
};

// Prints how many worlds a test has compared, when it ends.
class WorldCount {
  public:
    WorldCount();
    ~WorldCount();
    WorldCount(const WorldCount&) = delete;
    WorldCount& operator=(const WorldCount&) = delete;

  private:
    int before_;
};

std::string shown(const Choices& choices);

}  // namespace small_worlds
