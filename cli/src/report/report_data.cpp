// What the report's page shows, as JSON for the page's program.
#include "check/check_json.h"
#include "cli/version.h"
#include "report/report_page.h"

namespace cli {
namespace {

using lottie::looks::Origin;

constexpr std::size_t kMaxPictures = 1'000'000;  // bytes in the page; those of later nests are left out

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
        add_pictures(report.proof, report.worst, report.proof_problem);
        json_.key("nests");
        json_.begin_array();
        for (const ReportedNest& nest : report.nests) add_reported_nest(nest);
        json_.end_array();
        add_stack("stack_before", report.stack_before, false);
        add_stack("stack_after", report.stack_after, true);
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

    void add_pictures(const std::optional<Proof>& proof, const std::optional<WorstFrame>& worst,
                      const std::string& problem) {
        if (proof) add_proof(json_, *proof);
        if (!problem.empty()) json_.add("pictures_problem", problem);
        add_worst(worst);
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

    void add_stack(const char* name, const std::vector<StackLayer>& layers, bool with_origin) {
        json_.key(name);
        json_.begin_array();
        for (const StackLayer& layer : layers) {
            json_.begin_object();
            json_.add("name", layer.name);
            json_.add("type", layer.type);
            json_.add("in", layer.in);
            json_.add("out", layer.out);
            if (layer.is_off) json_.add("off", true);
            if (with_origin) add_origin(layer.origin);
            json_.end_object();
        }
        json_.end_array();
    }

    // Numbers of layers count from 1.
    void add_origin(const Origin& origin) {
        constexpr const char* kKinds[] = {"kept", "copied", "made"};
        json_.add("origin", kKinds[static_cast<std::size_t>(origin.kind)]);
        if (origin.kind != Origin::Kind::made) json_.add("was", origin.layer + 1);
        if (origin.kind == Origin::Kind::copied) json_.add("nest", origin.nest + 1);
    }

    JsonWriter json_;
    std::size_t picture_bytes_ = 0;
};

}  // namespace

std::string report_data(const Report& report, const AnimationPlayer& player) {
    return ReportData().write(report, player);
}

}  // namespace cli
