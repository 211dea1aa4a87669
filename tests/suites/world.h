// A small project in a host, and suites acquired as a plug-in acquires them.
#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "AE_GeneralPlug.h"
#include "model/project.h"
#include "suites/error_codes.h"
#include "suites/suite_host.h"

namespace host::suites {

template <class Suite>
struct SuiteName;
#define SUITE(structure, accessor, suite_name, suite_version) \
    template <>                                               \
    struct SuiteName<structure> {                             \
        static constexpr const char* name = suite_name;       \
        static constexpr int version = suite_version;         \
    };
#include "suites.def"

constexpr A_Time kZero{0, 1};

class World : public testing::Test {
  public:
    World();

    // Held for as long as the world exists.
    template <class Suite>
    const Suite* suite() {
        const void* table = nullptr;
        EXPECT_EQ(host.basic_suite()->AcquireSuite(SuiteName<Suite>::name, SuiteName<Suite>::version, &table), 0);
        return static_cast<const Suite*>(table);
    }

    const AEGP_LayerSuite5* layers() { return suite<AEGP_LayerSuite5>(); }
    const AEGP_StreamSuite4* streams() { return suite<AEGP_StreamSuite4>(); }
    const AEGP_KeyframeSuite4* keyframes() { return suite<AEGP_KeyframeSuite4>(); }
    const AEGP_MemorySuite1* memory() { return suite<AEGP_MemorySuite1>(); }
    const AEGP_CollectionSuite2* collections() { return suite<AEGP_CollectionSuite2>(); }

    // A layer on top of `main`, made by adding the footage, with a name of its own.
    model::Layer& add_layer(const std::string& name);
    AEGP_StreamRefH stream(model::Layer& layer, int number);
    AEGP_StreamRefH parameter(model::Layer& layer, int effect, int index);
    // A keyframe on the model's side.
    static model::Keyframe key(std::int64_t ticks, model::Value value);
    void set_keys(model::Stream& stream, std::vector<model::Keyframe> keyframes);

    // The text in a memory handle, which is freed.
    std::string text_in(AEGP_MemHandle handle);
    std::u16string wide_text_in(AEGP_MemHandle handle);

    std::string last_complaint();
    std::vector<std::string> layer_names(const model::Comp& comp) const;

    model::Project project;
    model::Comp& main;                 // 10 s long, 1000 x 500, 25 frames a second
    model::Item& footage;              // a 200 x 100 solid
    std::vector<std::string> scripts;  // that were run
    std::vector<std::string> reports;
    ScriptReply next_script_outcome;
    SuiteHost host;
    AEGP_PluginID plugin;
};

}  // namespace host::suites
