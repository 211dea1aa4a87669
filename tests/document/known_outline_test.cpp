// The outline of a known text is the one that reading every byte of it gives.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <sstream>

#include "animation_text.h"
#include "document/outline_reader.h"

namespace lottie::document::testing {
namespace {

std::ostream& operator<<(std::ostream& out, Slice slice) {
    return out << slice.begin << "-" << slice.end;
}

std::ostream& operator<<(std::ostream& out, const JsonToken& token) {
    return out << static_cast<int>(token.kind) << ":" << token.text;
}

template <class Number>
std::ostream& operator<<(std::ostream& out, const std::optional<Number>& number) {
    return number ? out << *number : out << "none";
}

std::string described(const DocumentOutline& outline) {
    std::ostringstream out;
    for (const JsonToken& token :
         {outline.version, outline.frame_rate, outline.in, outline.out, outline.width, outline.height, outline.name,
          outline.ddd, outline.assets_token, outline.layers_token, outline.slots})
        out << token << " ";
    out << outline.root << "\n";
    for (const ScannedAsset& asset : outline.assets) {
        out << "asset " << asset.text << " " << asset.id << " " << asset.name << " " << asset.path << " " << asset.width
            << " " << asset.height << " " << asset.comp << "\n";
    }
    for (const ScannedComp& comp : outline.comps) {
        out << "comp " << comp.layers << " " << comp.asset << "\n";
        for (const ScannedLayer& layer : comp.list) {
            out << layer.text << " " << layer.name << " " << layer.ref_id << " " << layer.color << " " << layer.ind
                << " " << layer.parent << " " << layer.matte << " " << layer.in << " " << layer.out << " "
                << layer.start << " " << layer.stretch << " " << layer.width << " " << layer.height << " "
                << layer.solid_width << " " << layer.solid_height << " " << layer.type << " " << layer.matte_type
                << layer.is_3d << layer.is_matte << layer.is_hidden << layer.auto_orients << layer.collapses
                << layer.blurs_motion << layer.remaps_time << layer.has_expressions << layer.has_layer_parameters
                << "\n";
        }
    }
    return out.str();
}

TEST(KnownOutline, is_the_one_of_reading_all) {
    for (const std::string& members : std::vector<std::string>{
             R"("nm":"A")", R"("ks":{"p":{"a":0,"k":[1,2],"x":"time"}})",
             R"("ks":{"p":{"a":0,"k":[1,2],"x":{"x":1}}},"nm":"\"x\":\"")", R"("ks":{"o":{"k":1,"\u0078" : "time"}})",
             R"("shapes":[{"ty":"gr","it":[{"ty":"fl","x" :"a"}]}])", R"("ef":[{"ty":5,"ef":[{"ty":10,"v":{"k":1}}]}])",
             R"("ef":[{"ty":5,"ef":[{"t\u0079" : 10 ,"v":{"k":1}}]}])",
             R"("ef":[{"ty":100,"x":1},{"ty":"10"},{"nm":"ty"}])",
             R"("shapes":[{"ty":10}],"hd":true,"td":1,"tt":2,"bm":null,"tm":{"k":0},"sr":2,"nm":"q\"]}")"}) {
        const std::string layer = R"( {"ty" : 4,"ind":1 ,"ip":0,"op":60,"st":0,)" + members + " } ";
        const std::string text =
            animation(layer + "," + layer, nest_asset("c0", layer) + R"(,{"id":"i","p":"a[.png"})");
        EXPECT_EQ(described(read_known_outline(text)), described(read_outline(text))) << members;
        const std::string marked = "\xEF\xBB\xBF" + text;
        EXPECT_EQ(described(read_known_outline(marked)), described(read_outline(marked))) << members;
    }
}

TEST(KnownOutline, of_real_animations_is_the_one_of_reading_all) {
    std::error_code absent;
    for (const auto& entry : std::filesystem::directory_iterator(REAL_ANIMATIONS, absent)) {
        if (entry.path().extension() != ".json") continue;
        std::ostringstream text;
        text << std::ifstream(entry.path(), std::ios::binary).rdbuf();
        EXPECT_EQ(described(read_known_outline(text.str())), described(read_outline(text.str()))) << entry.path();
    }
}

TEST(KnownOutline, of_a_text_that_ends_early_is_refused) {
    const std::string text = animation(shape_layer(1, "A \\\" [", {{"ef", R"([{"ty":5,"ef":[{"ty":10}]}])"}}));
    for (std::size_t end = 1; end < text.size(); ++end) {
        if (text[end - 1] == '}' && text.find('}', end) == std::string::npos) continue;
        EXPECT_THROW(read_known_outline(text.substr(0, end)), InputError) << end;
    }
}

}  // namespace
}  // namespace lottie::document::testing
