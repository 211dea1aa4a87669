// The layers of one composition, written again after each change.
#include <gtest/gtest.h>

#include <iostream>
#include <random>

#include "animation_text.h"
#include "document/outline_reader.h"
#include "model/error.h"

namespace lottie::document::testing {
namespace {

using host::model::Layer;

constexpr int kAnimations = 40;
constexpr int kChanges = 60;

std::vector<std::string> layers_of_whole(const Document& document) {
    const std::string text = document.write();
    const DocumentOutline outline = read_outline(text);
    std::vector<std::string> layers;
    for (const ScannedLayer& layer : outline.comps.front().list) layers.emplace_back(layer.text.of(text));
    return layers;
}

void expect_as_in_whole(const Document& document) {
    const WrittenLayers written = document.write_layers(document.main_comp());
    EXPECT_EQ(std::vector<std::string>(written.layers.begin(), written.layers.end()), layers_of_whole(document));
    EXPECT_EQ(document.written_size(), document.write().size());
}

// Changes an animation in any way, and goes back now and then.
class Changes {
  public:
    explicit Changes(unsigned seed)
        : random_(seed),
          document_(Document::read(animation(own_layers(), nest_asset("c", inner_layers())))),
          inside_(*layer_of(document_, "Nest").source()->comp()) {}

    const Document& document() const { return document_; }

    void change() {
        try {
            change_layer();
        } catch (const host::model::Error&) {
            // refused
        }
    }

  private:
    static std::string own_layers() {
        return nest_layer(1, "Nest", "c") + "," + shape_layer(2, "A", {{"parent", "3"}}) + "," + shape_layer(3, "B") +
               "," + shape_layer(11, "11") + "," + shape_layer(0, "No number", {{"ind", ""}}) + "," +
               shape_layer(5, "No name", {{"nm", ""}});
    }
    static std::string inner_layers() {
        const std::string effect =
            R"([{"ty":5,"nm":"E","en":1,"ef":[{"ty":10,"nm":"Layer","v":{"a":0,"k":1}},{"ty":0,"nm":"S","v":{"a":0,"k":5}}]}])";
        return shape_layer(1, "C") + "," + shape_layer(2, "D", {{"tt", "1"}}) + "," +
               shape_layer(3, "E", {{"ef", effect}, {"parent", "1"}}) + "," + shape_layer(4, "No name", {{"nm", ""}});
    }

    int below(int n) { return std::uniform_int_distribution<int>(0, n - 1)(random_); }
    std::string name() { return std::string(1, static_cast<char>('A' + below(6))); }
    host::model::Time time() { return {below(40) * 4000 - 20000}; }
    Layer& any_of(host::model::Comp& comp) { return comp.layer_at(below(comp.layer_count())); }

    void change_layer() {
        host::model::Comp& main = document_.main_comp();
        host::model::UndoJournal& undo = document_.project().undo();
        if (main.layer_count() == 0) return undo.undo();
        Layer& layer = any_of(main);
        switch (below(14)) {
            case 0:
            case 1:
            case 2:
                main.select({&layer});
                main.copy_layer_here(any_of(inside_));
                return;
            case 3:
                return layer.move_to(below(main.layer_count()));
            case 4:
                return layer.rename(name());
            case 5:
                return layer.set_parent(below(3) == 0 ? nullptr : &any_of(main),
                                        host::model::Parenting::keep_local_values);
            case 6:
                return layer.set_offset(time());
            case 7:
                return layer.set_in_point_and_duration(time(), {40000});
            case 8:
                return layer.stream(host::model::kOpacity).set_static_value({{1.0 * below(100), 0, 0, 0}});
            case 9:
                return layer.stream(host::model::kOpacity).set_expression(below(2) == 0 ? "" : "time");
            case 10:
                return layer.remove();
            case 11:
                main.create_null(name(), {});
                return;
            case 12:
                return layer.set_flag(host::model::kVideoActive, below(2) == 0);
            default:
                for (int i = below(4); i > 0 && undo.can_undo(); --i) undo.undo();
        }
    }

    std::mt19937 random_;
    Document document_;
    host::model::Comp& inside_;
};

TEST(WrittenLayers, are_those_of_the_whole_however_often_they_were_written_before) {
    const unsigned first = std::random_device()();
    std::cout << "seed " << first << "\n";
    for (unsigned seed = first; seed < first + kAnimations; ++seed) {
        Changes changes(seed);
        for (int i = 0; i < kChanges && !HasFailure(); ++i) {
            changes.change();
            if (i % 3 != 0) expect_as_in_whole(changes.document());
        }
        ASSERT_FALSE(HasFailure()) << "seed " << seed;
    }
}

TEST(WrittenLayers, that_only_get_another_number_are_not_written_anew) {
    const Document document = Document::read(
        animation(shape_layer(1, "A") + "," + nest_layer(2, "N", "c"), nest_asset("c", shape_layer(1, "C"))));
    host::model::Comp& main = document.main_comp();
    host::model::Comp& inside = *layer_of(document, "N").source()->comp();
    std::size_t new_bytes = 0;
    for (int i = 0; i < 12; ++i) {  // each copy comes on top and gets the first number
        main.copy_layer_here(layer_of(inside, "C"));
        new_bytes = document.write_layers(main).new_bytes;
        expect_as_in_whole(document);
    }
    const std::size_t one = document.write_layers(main).layers.front().size();
    EXPECT_LE(new_bytes, 2 * one + 2) << "the new one, and the one whose number was never another";
    EXPECT_EQ(document.write_layers(main).new_bytes, 0U);
}

}  // namespace
}  // namespace lottie::document::testing
