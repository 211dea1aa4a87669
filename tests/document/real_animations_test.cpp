// Real exported animations come back byte for byte, read again after changes, and keep the bytes of what did not
// change.
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>

#include "animation_text.h"

namespace lottie::document::testing {
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
            for (host::model::Comp* comp : document.project().comps()) {
                for (int i = 0; i < comp->layer_count(); ++i) {
                    host::model::Layer& layer = comp->layer_at(i);
                    layer.set_offset(layer.offset() +
                                     host::model::from_seconds(static_cast<double>(frames) / comp->frame_rate()));
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

// Copies keyframes as a host does that makes a null move like a layer.
void copy_transform(host::model::Layer& from, host::model::Layer& to) {
    to.set_flag(host::model::kIs3D, from.is_3d());
    for (int number = host::model::kAnchorPoint; number <= host::model::kOpacity; ++number) {
        const host::model::Stream& stream = from.stream(number);
        for (std::size_t i = 0; i < stream.keyframe_count(); ++i) {
            host::model::Keyframe key = stream.keyframe(i);
            key.time += from.offset();
            const std::size_t index = to.stream(number).insert_keyframe(key.time);
            to.stream(number).set_keyframe(index, key);
        }
    }
}

void expect_same_keyframes(const host::model::Stream& original, const host::model::Stream& copy,
                           host::model::Time offset) {
    ASSERT_EQ(copy.keyframe_count(), original.keyframe_count() == 1 ? 0 : original.keyframe_count());
    for (std::size_t i = 0; i < copy.keyframe_count(); ++i) {
        const host::model::Keyframe& a = original.keyframe(i);
        const host::model::Keyframe& b = copy.keyframe(i);
        EXPECT_LE(std::abs((a.time + offset).ticks - b.time.ticks), 3);
        EXPECT_EQ(a.value, b.value);
        EXPECT_EQ(a.out, b.out);
        EXPECT_EQ(a.tangent_out, b.tangent_out);
        for (std::size_t d = 0; d < static_cast<std::size_t>(host::model::temporal_dimensions(original.type())); ++d) {
            EXPECT_NEAR(a.ease_in[d].influence, b.ease_in[d].influence, 1e-12);
            EXPECT_NEAR(a.ease_out[d].influence, b.ease_out[d].influence, 1e-12);
        }
    }
}

TEST_F(RealAnimations, give_their_motion_to_nulls_without_loss) {
    for (const auto& file : files_) {
        SCOPED_TRACE(file.filename());
        const Document document = Document::read(content(file));
        for (host::model::Comp* comp : document.project().comps()) {
            for (host::model::Layer* layer : comp->stack().to_vector())
                copy_transform(*layer, comp->create_null("copy", {}));
        }
        const Document again = Document::read(document.write());
        const std::vector<host::model::Comp*> comps = again.project().comps();
        for (std::size_t c = 0; c < comps.size(); ++c) {
            const int originals = comps[c]->layer_count() / 2;  // each null was put on top of all before it
            for (int i = 0; i < originals && !HasFailure(); ++i) {
                host::model::Layer& original = comps[c]->layer_at(originals + i);
                host::model::Layer& copy = comps[c]->layer_at(originals - 1 - i);
                for (int number = host::model::kAnchorPoint; number <= host::model::kOpacity; ++number) {
                    expect_same_keyframes(original.stream(number), copy.stream(number), original.offset());
                }
            }
        }
    }
}

}  // namespace
}  // namespace lottie::document::testing
