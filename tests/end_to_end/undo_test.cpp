// Undoing runs on real animations: every nest of every composition, after which the project must be as it was.
#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

#include "whole_run.h"

namespace {

using end_to_end::click;

std::vector<std::string> animations() {
    std::vector<std::string> files;
    for (const auto& entry : std::filesystem::directory_iterator(ANIMATIONS)) {
        if (entry.path().extension() == ".json") files.push_back(entry.path().string());
    }
    return files;
}

class Undo : public testing::TestWithParam<std::string> {};

TEST_P(Undo, taking_a_run_back_gives_the_bytes_of_the_file) {
    const std::string before = end_to_end::read_file(GetParam());
    end_to_end::WholeRun whole(before);
    ASSERT_EQ(whole.document().write(), before);

    host::model::Project& project = whole.document().project();
    int runs = 0;
    for (host::model::Comp* comp : project.comps()) {
        for (int index = 0; index < comp->layer_count(); ++index) {
            host::model::Layer& layer = comp->layer_at(index);
            if (layer.source() == nullptr || layer.source()->comp() == nullptr) continue;
            for (const char* choice : {"Copy pre-comp attributes to layers", "Discard pre-comp attributes"}) {
                const std::string what = comp->name() + " #" + std::to_string(index + 1) + ", " + choice;
                const auto outcome = whole.run(*comp, {index},
                                               {click(choice), click("Prepend pre-comp name to extracted layers"),
                                                click("Delete source after exflating"), click("Ok")});
                ASSERT_FALSE(outcome.has_failed()) << what << (outcome.log.empty() ? "" : ": " + outcome.log[0]);
                ASSERT_EQ(outcome.undo_steps, std::vector<std::string>{"Exflate"}) << what;
                ASSERT_NE(whole.document().write(), before) << what;
                project.undo().undo();
                ASSERT_EQ(whole.document().write(), before) << what;
                ++runs;
            }
        }
    }
    RecordProperty("runs", runs);
}

INSTANTIATE_TEST_SUITE_P(RealAnimations, Undo, testing::ValuesIn(animations()),
                         [](const auto& file) { return std::filesystem::path(file.param).stem().string(); });

}  // namespace
