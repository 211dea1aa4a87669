// Damaged input is refused or read, never worse.
#include <gtest/gtest.h>

#include <random>

#include "animation_text.h"
#include "model/error.h"

namespace lottie::document::testing {
namespace {

std::string example() {
    const std::string keys =
        R"({"a":1,"k":[{"t":0,"s":[1,2,0],"o":{"x":0.3,"y":0},"i":{"x":0.7,"y":1},"to":[1,0,0],"ti":[0,1,0]},{"t":30.5,"s":[3,4,0]}],"ix":2,"x":"time"})";
    const std::string effect =
        R"([{"ty":5,"nm":"E","mn":"M","ix":1,"en":1,"ef":[{"ty":10,"nm":"L","mn":"ADBE Layer Control-0001","v":{"a":0,"k":1}},{"ty":3,"nm":"P","v":{"a":0,"k":[1,2]}}]}])";
    return animation(
        shape_layer(1, "A", {{"ks", transform({{"p", keys}})}, {"ef", effect}}) + "," +
            nest_layer(2, "B\\u00e4", "n", {{"parent", "1"}, {"tt", "1"}, {"st", "2.5"}}),
        nest_asset("n",
                   shape_layer(1, "C",
                               {{"td", "1"},
                                {"ks", transform({{"p", R"({"s":true,"x":)" + keys + R"(,"y":{"a":0,"k":1}})"}})}})) +
            R"(,{"id":"i","w":1,"h":1,"p":"i.png"})");
}

// Everything that reading, looking and writing does; may refuse, must not break.
void work_on(const std::string& text) {
    try {
        const Document document = Document::read(text);
        describe(document.project());
        const std::string same = document.write();
        ASSERT_EQ(same, text);
        host::model::Comp& comp = document.main_comp();
        for (int i = 0; i < comp.layer_count(); ++i) {
            comp.layer_at(i).set_offset({4000 * i - 77});
            comp.layer_at(i).set_flag(host::model::kIs3D, !comp.layer_at(i).has_flag(host::model::kIs3D));
            comp.layer_at(i).stream(host::model::kPosition).set_expression("1");
        }
        if (comp.layer_count() > 0) comp.copy_layer_here(comp.layer_at(0));
        Document::read(document.write());
    } catch (const InputError& error) {
        ASSERT_NE(std::string(error.what()), "");
    } catch (const host::model::Error& error) {
        ASSERT_NE(std::string(error.what()), "");
    }
}

TEST(HostileInput, an_animation_cut_off_anywhere_is_refused) {
    const std::string text = example();
    for (std::size_t length = 0; length < text.size(); ++length) {
        EXPECT_THROW(Document::read(text.substr(0, length)), InputError) << length;
    }
    EXPECT_NO_THROW(Document::read(text));
}

TEST(HostileInput, a_text_that_ends_inside_a_character_is_not_read_beyond_its_end) {
    for (const char* start : {"\xC3", "\xE2", "\xE2\x82", "\xF0", "\xF0\x9F", "\xF0\x9F\x98", "\xF0\xFF"}) {
        std::string text = "{\"v\":\"a text that is not kept in place\",\"" + std::string(start);
        text.shrink_to_fit();  // what lies behind it is not ours
        EXPECT_THROW(Document::read(text), InputError) << start;
    }
}

TEST(HostileInput, damaged_bytes_never_break_anything) {
    const unsigned seed = std::random_device{}();
    RecordProperty("seed", std::to_string(seed));
    std::mt19937 random(seed);
    const std::string text = example();
    const std::string useful = "{}[]\",:0123456789-.eEtfn\\x \xFF";
    const auto below = [&random](std::size_t limit) {
        return std::uniform_int_distribution<std::size_t>(0, limit - 1)(random);
    };
    for (int round = 0; round < 4000 && !HasFatalFailure(); ++round) {
        std::string damaged = text;
        for (std::size_t times = 1 + below(3); times > 0; --times) {
            const std::size_t at = below(damaged.size());
            switch (below(4)) {
                case 0:
                    damaged[at] = static_cast<char>(below(256));
                    break;
                case 1:
                    damaged[at] = useful[below(useful.size())];
                    break;
                case 2:
                    damaged.erase(at, 1 + below(12));
                    break;
                default:
                    damaged.insert(at, damaged.substr(below(damaged.size()), below(30)));
                    break;
            }
        }
        SCOPED_TRACE("seed " + std::to_string(seed) + " round " + std::to_string(round));
        work_on(damaged);
    }
}

TEST(HostileInput, values_of_every_wrong_kind_never_break_anything) {
    const std::string text = example();
    const std::string values[] = {"null", "true", "-1",   "1e300", "0.5",         "\"x\"",
                                  "[]",   "{}",   "[{}]", "[[1]]", "[{\"t\":1}]", "{\"a\":1,\"k\":[]}"};
    // Each value that is a number or text is replaced by each of those.
    for (std::size_t at = text.find(':'); at != std::string::npos && !HasFatalFailure(); at = text.find(':', at + 1)) {
        std::size_t end = at + 1;
        if (text[end] == '[' || text[end] == '{') {
            int depth = 0;
            do {
                if (text[end] == '[' || text[end] == '{') ++depth;
                if (text[end] == ']' || text[end] == '}') --depth;
                ++end;
            } while (depth > 0);
        } else {
            end = text.find_first_of(",]}", end);
        }
        for (const std::string& value : values) {
            std::string damaged = text;
            damaged.replace(at + 1, end - at - 1, value);
            SCOPED_TRACE(damaged.substr(at > 30 ? at - 30 : 0, 80));
            work_on(damaged);
        }
    }
}

}  // namespace
}  // namespace lottie::document::testing
