// Acquiring on first use, releasing on destruction.
#include "AEGP_SuiteHandler.h"

namespace {

struct SuiteKey {
    const char* name;
    int32 version;
};

// In the order of AEGP_SuiteHandler::SuiteIndex.
constexpr SuiteKey kKeys[] = {
#define SUITE(structure, accessor, name, version) {name, version},
#include "suites.def"
};

}  // namespace

AEGP_SuiteHandler::AEGP_SuiteHandler(const SPBasicSuite* pica_basicP) : basic_(pica_basicP) {}

AEGP_SuiteHandler::~AEGP_SuiteHandler() {
    for (size_t i = 0; i < kSuiteCount; ++i) {
        // Nothing can be done about a release that fails, and there is no one to report it to.
        if (tables_[i] != nullptr) (void)basic_->ReleaseSuite(kKeys[i].name, kKeys[i].version);
    }
}

const void* AEGP_SuiteHandler::table(SuiteIndex index) {
    if (tables_[index] == nullptr) {
        const void* acquired = nullptr;
        const SPErr failure = basic_->AcquireSuite(kKeys[index].name, kKeys[index].version, &acquired);
        if (failure != kSPNoError || acquired == nullptr) MissingSuiteError();
        tables_[index] = acquired;
    }
    return tables_[index];
}
