// Real exported animations come back byte for byte, read again after changes, and keep the bytes of what did not
// change.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <sstream>

#include "animation_text.h"

namespace host::lottie::testing {
namespace {

std::vector<std::filesystem::path> real_animations() {
    std::vector<std::filesystem::path> files;
    std::error_code absent;
    for (const auto& entry : std::filesystem::directory_iterator(REAL_ANIMATIONS, absent)) {
        if (entry.path().extension() == ".json") files.push_back(entry.path());
    }
    return files;
}

std::string content(const std::filesystem::path& file) {
    std::ostringstream text;
    text << std::ifstream(file, std::ios::binary).rdbuf();
    return text.str();
}

class RealAnimations : public ::testing::Test {
  protected:
    void SetUp() override {
        files_ = real_animations();
        if (files_.empty()) GTEST_SKIP() << "npm ci in tests/ fetches the animations";
    }
    std::vector<std::filesystem::path> files_;
};

TEST_F(RealAnimations, come_back_byte_for_byte_with_everything_loaded) {
    for (const auto& file : files_) {
        const std::string text = content(file);
        const Document document = Document::read(text);
        describe(document.project());
        EXPECT_TRUE(document.write() == text) << file.filename();
    }
}

TEST_F(RealAnimations, with_every_layer_moved_and_back_again_come_back_byte_for_byte) {
    for (const auto& file : files_) {
        const std::string text = content(file);
        const Document document = Document::read(text);
        const auto move_all = [&document](std::int64_t frames) {
            for (model::Comp* comp : document.project().comps()) {
                for (int i = 0; i < comp->layer_count(); ++i) {
                    model::Layer& layer = comp->layer_at(i);
                    layer.set_offset(layer.offset() +
                                     model::from_seconds(static_cast<double>(frames) / comp->frame_rate()));
                }
            }
        };
        move_all(7);
        const std::string moved = document.write();
        EXPECT_FALSE(moved == text);
        EXPECT_TRUE(Document::read(moved).write() == moved) << file.filename();
        document.project().undo().undo_all();
        EXPECT_TRUE(document.write() == text) << file.filename();
    }
}

}  // namespace
}  // namespace host::lottie::testing
