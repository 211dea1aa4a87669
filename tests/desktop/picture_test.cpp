// `exflate dialog --picture`: what is drawn, and that nothing is remembered.
#include <gmock/gmock.h>

#include <QFontDatabase>
#include <QImage>

#include "../cli/animations.h"
#include "../cli/sandbox.h"
#include "stage.h"

namespace dialog_test {
namespace {

using test::Finished;
using test::Sandbox;
using testing::HasSubstr;

QSize size_of_dialog() {
    QSize size;
    Stage stage;
    stage.run(options_dialog(), {[&](QDialog& dialog) {
                  size = dialog.size();
                  press(Qt::Key_Escape);
              }});
    return size;
}

QImage picture(const Sandbox& sandbox, std::vector<std::string> arguments) {
    arguments.insert(arguments.begin(), {"dialog", "--picture", "p.png"});
    const Finished finished = test::exflate(sandbox, arguments);
    EXPECT_EQ(finished.exit_code, 0) << finished.err;
    EXPECT_EQ(finished.out + finished.err, "");
    return QImage(QString::fromStdString(sandbox.path("p.png")));
}

std::string problem(const std::vector<std::string>& arguments) {
    const Sandbox sandbox;
    const Finished finished = test::exflate(sandbox, arguments);
    EXPECT_NE(finished.exit_code, 0);
    return finished.err;
}

TEST(Picture, has_the_size_of_the_dialog_times_the_scale) {
    const Sandbox sandbox;
    const QSize size = size_of_dialog();
    EXPECT_EQ(picture(sandbox, {}).size(), size);
    EXPECT_EQ(picture(sandbox, {"--scale", "2"}).size(), 2 * size);
    EXPECT_EQ(picture(sandbox, {"--scale=1.5"}).size(), QSize((3 * size.width() + 1) / 2, (3 * size.height() + 1) / 2));
}

TEST(Picture, is_the_same_each_time) {
    const Sandbox sandbox;
    EXPECT_EQ(picture(sandbox, {"--first-use"}), picture(sandbox, {"--first-use"}));
}

TEST(Picture, is_dark_and_has_light_texts_inside_its_margins) {
    const Sandbox sandbox;
    const QImage image = picture(sandbox, {});
    int light = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            const bool is_margin = x < 15 || y < 15 || x >= image.width() - 15 || y >= image.height() - 15;
            if (is_margin) {
                ASSERT_EQ(image.pixelColor(x, y), QColor(0x23, 0x23, 0x23)) << x << ", " << y;
            }
            if (image.pixelColor(x, y).lightness() > 150) ++light;
        }
    }
    EXPECT_GT(light, 1000);
}

TEST(Picture, shows_what_was_done_before_and_nothing_of_it_is_remembered) {
    const Sandbox sandbox;
    const QImage fresh = picture(sandbox, {});
    const QImage ticked = picture(sandbox, {"--click", "Delete source after exflating", "--type", "prefixInput=fx"});
    EXPECT_NE(ticked, fresh);
    EXPECT_EQ(picture(sandbox, {}), fresh);
    const QImage alert = picture(sandbox, {"--type", "prefixInput=" + std::string(51, 'p'), "--click", "Ok"});
    EXPECT_LT(alert.height(), fresh.height());
    EXPECT_EQ(picture(sandbox, {}), fresh);
}

TEST(Picture, actions_are_done_in_their_order) {
    const Sandbox sandbox;
    const auto after = [&](const char* first, const char* second) {
        return picture(sandbox, {"--type", first, "--click", "Prepend pre-comp name to extracted layers", "--type",
                                 second, "--click", "Discard pre-comp attributes"});
    };
    EXPECT_EQ(after("prefixInput=a", "prefixInput=b"), after("prefixInput=c", "prefixInput=b"));
    EXPECT_NE(after("prefixInput=a", "prefixInput=b"), after("prefixInput=b", "prefixInput=a"));
}

TEST(Picture, shows_what_the_dialog_remembers_unless_told_otherwise) {
    const Sandbox sandbox;
    const QImage fresh = picture(sandbox, {});
    sandbox.write("a.json", test::one_nest());
    ASSERT_EQ(test::exflate(sandbox, {"a.json", "--prefix", "kept", "--keep-in-comp"}).exit_code, 0);
    EXPECT_NE(picture(sandbox, {}), fresh);
    EXPECT_EQ(picture(sandbox, {"--first-use"}), fresh);
}

// Two characters of each script: the boxes drawn for characters that no font has would look the same.
TEST(Picture, shows_every_script_that_a_font_is_installed_for) {
    size_of_dialog();  // fonts are known once there has been a window
    const auto has = [](QFontDatabase::WritingSystem script) { return !QFontDatabase::families(script).isEmpty(); };
    const bool has_emoji = QFontDatabase::hasFamily("Noto Color Emoji");
    const struct {
        bool is_installed;
        const char *first, *second;
    } pairs[] = {{has(QFontDatabase::Latin), "é", "ñ"},
                 {has(QFontDatabase::Greek), "λ", "ω"},
                 {has(QFontDatabase::Cyrillic), "Ж", "я"},
                 {has(QFontDatabase::SimplifiedChinese), "漢", "字"},
                 {has(QFontDatabase::Japanese), "か", "な"},
                 {has(QFontDatabase::Korean), "한", "글"},
                 {has_emoji, "😀", "🚀"}};
    EXPECT_TRUE(pairs[0].is_installed);
    const Sandbox sandbox;
    for (const auto& [is_installed, first, second] : pairs) {
        if (!is_installed) continue;
        EXPECT_NE(picture(sandbox, {"--type", std::string("prefixInput=") + first}),
                  picture(sandbox, {"--type", std::string("prefixInput=") + second}))
            << first << second;
    }
    if (!has_emoji) return;
    // The one picture in the dialog that is yellow.
    const QImage image = picture(sandbox, {"--type", "prefixInput=😀"});
    int yellow = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            const QColor color = image.pixelColor(x, y);
            if (color.red() > 200 && color.green() > 130 && color.blue() < 120) ++yellow;
        }
    }
    EXPECT_GT(yellow, 20);
}

TEST(Picture, what_cannot_be_done_is_reported_in_one_sentence) {
    EXPECT_EQ(problem({"dialog", "--picture", "p.png", "--click", "Nobody"}),
              "exflate: The dialog \"Exflate\" has no control \"Nobody\".\n");
    EXPECT_EQ(problem({"dialog", "--picture", "p.png", "--click", "Cancel"}),
              "exflate: no dialog stands open after these actions\n");
    EXPECT_THAT(problem({"dialog", "--picture", "nowhere/p.png"}), HasSubstr("cannot write 'nowhere/p.png'"));
    EXPECT_THAT(problem({"dialog"}), HasSubstr("--picture"));
    EXPECT_THAT(problem({"dialog", "--picture", "p.png", "--scale", "9"}), HasSubstr("--scale"));
    EXPECT_THAT(problem({"dialog", "--picture", "p.png", "--type", "prefixInput"}), HasSubstr("CONTROL=TEXT"));
    EXPECT_THAT(problem({"run", "--dialog", "--prefix", "x", "a.json"}), HasSubstr("--prefix"));
}

}  // namespace
}  // namespace dialog_test
