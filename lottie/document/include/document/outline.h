// The outline of a document: where its compositions, assets and layers stand, and the plain members of the layers.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "document/slice.h"

namespace lottie::document {

enum class JsonKind : std::uint8_t { none, object, array, string, number, yes, no, null };

struct JsonToken {
    JsonKind kind = JsonKind::none;
    Slice text;
};

struct ScannedLayer {
    Slice text;
    Slice name;  // literals with their quotes; empty when missing
    Slice ref_id;
    Slice color;
    Slice shapes;  // empty when missing
    std::optional<std::int64_t> ind;
    std::optional<std::int64_t> parent;
    std::optional<std::int64_t> matte;
    std::optional<double> in;  // frames
    std::optional<double> out;
    double start = 0;
    double stretch = 1;
    double width = 0;
    double height = 0;
    double solid_width = 0;
    double solid_height = 0;
    int type = 0;
    int matte_type = 0;
    bool is_3d = false;
    bool is_matte = false;
    bool is_hidden = false;
    bool auto_orients = false;
    bool collapses = false;
    bool blurs_motion = false;
    bool remaps_time = false;
    bool has_expressions = false;
    bool has_layer_parameters = false;
};

struct ScannedComp {
    Slice layers;  // the array
    std::vector<ScannedLayer> list;
    int asset = -1;  // -1 for the main composition
};

struct ScannedAsset {
    Slice text;
    JsonToken id;
    JsonToken name;
    JsonToken path;
    JsonToken width;
    JsonToken height;
    int comp = -1;  // in DocumentOutline::comps; -1 for footage
};

struct DocumentOutline {
    Slice root;
    JsonToken version;
    JsonToken frame_rate;
    JsonToken in;
    JsonToken out;
    JsonToken width;
    JsonToken height;
    JsonToken name;
    JsonToken ddd;
    JsonToken assets_token;
    JsonToken layers_token;
    JsonToken slots;
    std::vector<ScannedComp> comps;  // the main one first, then in the order of the assets
    std::vector<ScannedAsset> assets;

    // JSON pointers.
    std::string asset_pointer(int asset) const;
    std::string layers_pointer(const ScannedComp& comp) const;
    std::string layer_pointer(const ScannedComp& comp, std::size_t layer) const;
};

}  // namespace lottie::document
