// An undone run leaves exactly the bytes that were read.
#include <gmock/gmock.h>

#include <fstream>
#include <iterator>

#include "animations.h"
#include "cli/shared/dialog_operator.h"
#include "cli/shared/selection.h"
#include "cli/shared/unnest.h"
#include "document/document.h"
#include "runner/utf8_locale.h"

using cli::DialogAnswers;

namespace {

// Un-nests, undoes everything, and returns what is then written.
std::string run_and_take_back(const std::string& text, const DialogAnswers& answers, bool recursive) {
    host::runner::use_utf8_locale();
    auto document = lottie::document::Document::read(text);
    auto settings = host::script::Settings::in_memory();
    cli::DialogOperator dialogs(answers);
    const host::runner::PluginModule module(EXFLATE_MODULE);
    host::runner::Session session(document.project(), settings, dialogs);
    cli::UnnestRecord record;
    cli::start_plugin(session, module, record);
    lottie::looks::Work work;
    cli::unnest(session, document.main_comp(), cli::nests_of(document.main_comp()), recursive, work, record);
    EXPECT_NE(document.write(), text);
    document.project().undo().undo_all();
    return document.write();
}

void expect_restored(const std::string& text) {
    for (const bool copy : {true, false}) {
        for (const bool recursive : {false, true}) {
            for (const bool remove : {false, true}) {
                const DialogAnswers answers = {.copy_attributes = copy,
                                               .delete_source = remove,
                                               .keep_in_comp = false,
                                               .prefix = "x",
                                               .prepend_name = true,
                                               .fix_random = true};
                EXPECT_EQ(run_and_take_back(text, answers, recursive), text)
                    << "copy " << copy << ", recursive " << recursive << ", delete " << remove;
            }
        }
    }
    EXPECT_EQ(run_and_take_back(text, {.keep_in_comp = true, .prefix = ""}, false), text);
}

TEST(Undo, one_nest_comes_back) {
    expect_restored(test::one_nest());
}

TEST(Undo, nests_in_nests_and_shared_sources_come_back) {
    expect_restored(test::three_nests() + "\n");
}

TEST(Undo, the_demo_animation_comes_back) {
    std::ifstream file(DEMO_ANIMATION, std::ios::binary);
    const std::string text{std::istreambuf_iterator<char>(file), {}};
    ASSERT_GT(text.size(), 1000U);
    expect_restored(text);
}

}  // namespace
