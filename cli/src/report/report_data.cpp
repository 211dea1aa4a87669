// What the report's page shows, as JSON for the page's program.
#include <algorithm>

#include "check/check_json.h"
#include "cli/version.h"
#include "report/report_page.h"
#include "shared/layer_facts.h"

namespace cli {
namespace {

constexpr std::size_t kMaxNests = 500;           // of a flat file; those that stay come first
constexpr std::size_t kMaxPictures = 1'000'000;  // bytes in the page; beyond that, later nests get none

std::string base64(std::string_view bytes) {
    constexpr const char* kDigits = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    std::string text;
    for (std::size_t i = 0; i < bytes.size(); i += 3) {
        const std::size_t count = std::min<std::size_t>(3, bytes.size() - i);
        std::uint32_t three = 0;
        for (std::size_t j = 0; j < 3; ++j) {
            three = three << 8 | (j < count ? static_cast<unsigned char>(bytes[i + j]) : 0U);
        }
        for (std::size_t j = 0; j < 4; ++j) text += j <= count ? kDigits[three >> (18 - 6 * j) & 63] : '=';
    }
    return text;
}

// "0:12.5 20:30".
std::string span_text(const std::vector<Span>& spans) {
    std::string text;
    for (const auto& [from, to] : spans)
        text += (text.empty() ? "" : " ") + rounded_text(from) + ":" + rounded_text(to);
    return text;
}

class ReportData {
  public:
    std::string write(const Report& report, const AnimationPlayer& player) {
        json_.begin_object();
        json_.add("version", kVersion);
        json_.add("file", report.file);
        json_.add("command", report.command);
        add_composition(report);
        json_.add("bytes_before", report.bytes_before);
        json_.add("bytes_after", report.bytes_after);
        json_.add("verdict", lottie::looks::name(report.verdict()));
        add_pictures(json_, report.proof, report.proof_problem);
        add_worst(report.worst);
        if (report.flat) add_flat(*report.flat);
        add_nests(report);
        add_layers("layers_before", report.layers_before);
        add_layers("layers_after", report.layers_after);
        json_.key("messages");
        json_.begin_array();
        for (const std::string& message : report.messages) json_.add_element(message);
        json_.end_array();
        json_.add("licence", player.licence);
        json_.end_object();
        return json_.text();
    }

  private:
    void add_composition(const Report& report) {
        json_.key("composition");
        json_.begin_object();
        json_.add("id", report.composition);
        json_.add("name", report.composition_name);
        json_.add("width", report.width);
        json_.add("height", report.height);
        json_.add("frame_rate", report.frame_rate);
        json_.add("first_frame", report.first_frame);
        json_.end_object();
    }

    void add_flat(const FlatSum& flat) {
        json_.key("flat");
        json_.begin_object();
        json_.add("as_asked", flat.succeeded);
        json_.add("nests", flat.totals.nests);
        json_.add("un_nested", flat.totals.unnested);
        json_.add("mended", flat.totals.mended);
        json_.add("kept", flat.totals.kept);
        json_.add("left", flat.totals.left);
        json_.end_object();
    }

    void add_nests(const Report& report) {
        std::vector<const ReportedNest*> nests;
        for (const ReportedNest& nest : report.nests) nests.push_back(&nest);
        if (report.flat) {
            std::stable_partition(nests.begin(), nests.end(), [](const auto* nest) { return nest->checked.is_kept(); });
            nests.resize(std::min(nests.size(), kMaxNests));
        }
        json_.key("nests");
        json_.begin_array();
        for (const ReportedNest* nest : nests) add_reported_nest(*nest);
        json_.end_array();
    }

    void add_reported_nest(const ReportedNest& nest) {
        json_.begin_object();
        add_nest(json_, nest.checked);
        add_worst(nest.worst);
        json_.end_object();
    }

    void add_worst(const std::optional<WorstFrame>& worst) {
        if (!worst) return;
        picture_bytes_ += (worst->before.size() + worst->after.size() + worst->difference.size()) / 3 * 4;
        if (picture_bytes_ > kMaxPictures) return;
        json_.key("worst");
        json_.begin_object();
        json_.add("before", "data:image/png;base64," + base64(worst->before));
        json_.add("after", "data:image/png;base64," + base64(worst->after));
        json_.add("difference", "data:image/png;base64," + base64(worst->difference));
        json_.end_object();
    }

    void add_layers(const char* name, const std::vector<TreeLayer>& layers) {
        json_.key(name);
        json_.begin_array();
        for (const TreeLayer& layer : layers) add_layer(layer);
        json_.end_array();
    }

    void add_layer(const TreeLayer& layer) {
        json_.begin_object();
        json_.add("name", layer.name);
        json_.add("type", layer.type);
        json_.add("in", layer.in);
        json_.add("out", layer.out);
        json_.add("shown", span_text(layer.shown));
        if (!layer.is_placed) json_.add("unplaced", true);
        if (layer.is_off) json_.add("off", true);
        if (!layer.from.empty()) json_.add("from", layer.from);
        if (!layer.layers.empty()) add_layers("layers", layer.layers);
        if (layer.left_out > 0) json_.add("left_out", layer.left_out);
        json_.end_object();
    }

    JsonWriter json_;
    std::size_t picture_bytes_ = 0;
};

}  // namespace

std::string report_data(const Report& report, const AnimationPlayer& player) {
    return ReportData().write(report, player);
}

}  // namespace cli
