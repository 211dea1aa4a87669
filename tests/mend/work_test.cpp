// Mending counts its work, as everything else does that a file can make.
#include <gtest/gtest.h>

#include "mend/mend.h"

namespace {

using namespace lottie;

constexpr auto kLayer = R"({"ty":1,"nm":"solid","ind":5,"ip":0,"op":60,"st":0,"sw":9,"sh":9,"sc":"#ff0000","ks":{}})";
constexpr auto kNest = R"({"ty":0,"refId":"c","ind":1,"w":9,"h":9,"ip":0,"op":60,"st":0,"ks":{"o":{"a":0,"k":50}}})";

bool mends_within(std::size_t steps) {
    const std::string text = std::string(R"({"fr":30,"ip":0,"op":60,"w":9,"h":9,"assets":[{"id":"c","layers":[)") +
                             kLayer + "]}],\"layers\":[" + kNest + "]}";
    looks::Judge judge(text);
    const mend::BeforeRuns before(text, judge);
    looks::Work work(steps);
    mend::Mending mending(before, {kLayer}, {"", {0}, {{looks::Origin::Kind::copied, 0, 0}}}, work);
    looks::NestReport report;
    report.findings.push_back({looks::Reason::opacity, looks::Weight::change, "", "", "", "", {}});
    return mending.apply_remedies({report});
}

TEST(Work, of_mending_counts) {
    EXPECT_TRUE(mends_within(looks::Work::kMost));
    EXPECT_THROW(mends_within(10), looks::TooMuchWork);
}

}  // namespace
