// What was written is read as what the model held, after any sequence of changes.
#include <gtest/gtest.h>

#include <random>

#include "animation_text.h"

namespace lottie::document::testing {
namespace {

std::string keys(const std::string& value0, const std::string& value1, bool spatial) {
    const std::string in = spatial ? R"({"x":0.667,"y":1})" : R"({"x":[0.667],"y":[1]})";
    const std::string out = spatial ? R"({"x":0.333,"y":0})" : R"({"x":[0.333],"y":[0]})";
    const std::string tangents = spatial ? R"(,"to":[3,1,0],"ti":[-2,0,0])" : "";
    return keyed(R"({"i":)" + in + R"(,"o":)" + out + R"(,"t":3,"s":)" + value0 + tangents + R"(},{"t":21,"s":)" +
                 value1 + R"(,"h":1},{"t":33.5,"s":)" + value0 + "}");
}

std::string example() {
    const std::string effect =
        R"([{"ty":5,"nm":"E","np":4,"mn":"M","ix":1,"en":1,"ef":[{"ty":10,"nm":"L","mn":"ADBE Layer Control-0001","ix":1,"v":{"a":0,"k":3,"ix":1}},)"
        R"({"ty":0,"nm":"S","mn":"M-2","ix":2,"v":)" +
        keys("[1]", "[2]", false) + R"(},{"ty":2,"nm":"C","mn":"M-3","ix":3,"v":{"a":0,"k":[1,0,0,1],"ix":3}}]}])";
    const auto inner = [&](int first) {
        return shape_layer(first, "matte", {{"td", "1"}}) + "," +
               shape_layer(first + 1, "user",
                           {{"tt", "1"}, {"ks", transform({{"p", keys("[1,2,0]", "[30,4,0]", true)}})}}) +
               "," +
               shape_layer(first + 2, "fx",
                           {{"parent", std::to_string(first + 1)},
                            {"st", "4.5"},
                            {"ef", effect},
                            {"ks", transform({{"r", keys("[1]", "[90]", false)}})}}) +
               "," +
               shape_layer(first + 3, "hidden",
                           {{"hd", "true"},
                            {"ks", transform({{"o", R"({"a":0,"k":50,"ix":11,"x":"thisComp.layer('fx').index"})"}})}});
    };
    return animation(
        nest_layer(1, "one", "n", {{"st", "7"}}) + "," + nest_layer(2, "two", "m", {{"parent", "1"}}) + "," +
            shape_layer(3, "shape"),
        nest_asset("n", inner(1)) + "," + nest_asset("m", inner(1) + "," + nest_layer(9, "inner nest", "n")));
}

class Changes {
  public:
    Changes(const Document& document, unsigned seed) : project_(document.project()), random_(seed) {}

    void make_one() {
        const std::vector<host::model::Comp*> comps = project_.comps();
        host::model::Comp& comp = *comps[below(comps.size())];
        if (comp.layer_count() == 0) {
            comp.create_null("first", {});
            return;
        }
        host::model::Layer& layer = any_layer(comp);
        switch (below(14)) {
            case 0:
                layer.rename("renamed " + std::to_string(below(100)));
                break;
            case 1:
                layer.move_to(static_cast<int>(below(static_cast<std::size_t>(comp.layer_count()))));
                break;
            case 2:
                layer.set_offset({4000 * (static_cast<std::int64_t>(below(40)) - 20)});
                break;
            case 3:
                layer.set_in_point_and_duration({4000 * static_cast<std::int64_t>(below(30))},
                                                {1000 * static_cast<std::int64_t>(1 + below(90))});
                break;
            case 4:
                layer.set_flag(host::model::kIs3D, below(2) == 0);
                break;
            case 5:
                if (layer.matte_users().empty()) layer.set_flag(host::model::kVideoActive, below(2) == 0);
                break;
            case 6:
                layer.set_flag(host::model::kCollapse, below(2) == 0);
                break;
            case 7:
                parent(comp, layer);
                break;
            case 8:
                comp.create_null("null " + std::to_string(below(100)), {}).set_offset({2000});
                break;
            case 9:
                copy(comps);
                break;
            case 10:
                if (below(3) == 0) layer.remove();
                break;
            case 11:
                change_stream(layer.stream(static_cast<int>(below(5))));
                break;
            case 12:
                change_effect(layer);
                break;
            default:
                layer.stream(static_cast<int>(below(5)))
                    .set_expression(below(2) == 0 ? "" : "value + " + std::to_string(below(9)));
                break;
        }
    }

  private:
    std::size_t below(std::size_t limit) { return std::uniform_int_distribution<std::size_t>(0, limit - 1)(random_); }
    double number() { return static_cast<double>(below(4000)) / 8 - 250; }
    host::model::Layer& any_layer(host::model::Comp& comp) {
        return comp.layer_at(static_cast<int>(below(static_cast<std::size_t>(comp.layer_count()))));
    }

    void parent(host::model::Comp& comp, host::model::Layer& layer) {
        host::model::Layer& other = any_layer(comp);
        for (host::model::Layer* above = &other; above != nullptr; above = above->parent()) {
            if (above == &layer) return;
        }
        layer.set_parent(
            &other, below(2) == 0 ? host::model::Parenting::keep_local_values : host::model::Parenting::keep_place);
    }

    void copy(const std::vector<host::model::Comp*>& comps) {
        host::model::Comp& from = *comps[below(comps.size())];
        host::model::Comp& to = *comps[below(comps.size())];
        if (from.layer_count() == 0) return;
        host::model::Layer& layer = any_layer(from);
        const bool is_round =
            layer.source() != nullptr && layer.source()->comp() != nullptr && layer.source()->comp()->contains(to);
        if (!is_round && to.layer_count() < 40) to.copy_layer_here(layer);
    }

    void change_stream(host::model::Stream& stream) {
        const auto dimensions = static_cast<std::size_t>(host::model::value_dimensions(stream.type()));
        host::model::Value value;
        for (std::size_t d = 0; d < dimensions; ++d) value.n[d] = number();
        if (!stream.owner().is_3d() && dimensions == 3) value.n[2] = stream.name() == "Scale" ? 100 : 0;
        if (below(2) == 0) {
            stream.add_keyframes({{{1000 * static_cast<std::int64_t>(below(200))}, value}});
        } else if (stream.keyframe_count() == 0) {
            stream.set_static_value(value);
        } else {
            host::model::Keyframe key = stream.keyframe(below(stream.keyframe_count()));
            key.value = value;
            key.out = below(2) == 0 ? host::model::Interpolation::bezier : host::model::Interpolation::hold;
            key.ease_out[0] = {number(), 0.25};
            for (std::size_t i = 0; i < stream.keyframe_count(); ++i) {
                if (stream.keyframe(i).time == key.time) stream.set_keyframe(i, key);
            }
        }
    }

    void change_effect(host::model::Layer& layer) {
        if (layer.effect_count() == 0) {
            if (project_.effect_kind(1) != nullptr) layer.apply_effect(1);
            return;
        }
        host::model::Effect& effect = layer.effect(below(layer.effect_count()));
        switch (below(3)) {
            case 0:
                effect.set_flags(host::model::kEffectActive, below(2) == 0 ? 0u : 1u);
                break;
            case 1:
                change_stream(effect.parameter(2));
                break;
            default:
                effect.parameter(1).set_static_value({{static_cast<double>(any_layer(layer.comp()).id()), 0, 0, 0}});
                break;
        }
    }

    host::model::Project& project_;
    std::mt19937 random_;
};

TEST(Reread, what_was_written_is_read_as_what_the_model_held) {
    const unsigned first_seed = std::random_device{}();
    RecordProperty("seed", std::to_string(first_seed));
    const std::string text = example();
    for (unsigned seed = first_seed; seed != first_seed + 150 && !HasFailure(); ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        const Document document = Document::read(text);
        // By position a layer may come to be a matte that is switched off in the file alone.
        document.project().rules().mattes_by_position = false;
        Changes changes(document, seed);
        document.project().undo().begin_group("changes");
        for (int i = 0; i < 40; ++i) changes.make_one();
        document.project().undo().end_group();
        const std::string written = document.write();
        const Document again = Document::read(written);
        expect_same_projects(again.project(), document.project());
        EXPECT_EQ(again.write(), written);
        document.project().undo().undo_all();
        EXPECT_EQ(document.write(), text);
    }
}

}  // namespace
}  // namespace lottie::document::testing
