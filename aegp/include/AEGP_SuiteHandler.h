// The suite handler: acquires each suite on its first use and releases all of them when it is destroyed.
#pragma once

#include <stddef.h>

#include "AE_GeneralPlug.h"

// Meant to live on the stack of one operation. It allocates nothing.
class AEGP_SuiteHandler {
  public:
    // The basic suite must outlive the handler. Nothing is acquired yet.
    explicit AEGP_SuiteHandler(const SPBasicSuite* pica_basicP);
    ~AEGP_SuiteHandler();

    AEGP_SuiteHandler(const AEGP_SuiteHandler&) = delete;
    AEGP_SuiteHandler& operator=(const AEGP_SuiteHandler&) = delete;

    // One accessor for each suite: LayerSuite5(), ProjSuite6(), ... The table stays valid as long as the handler lives.
    // A suite that the host does not give makes the accessor throw the A_Err 516; the next call asks the host again.
#define SUITE(structure, accessor, name, version)                 \
    const structure* accessor() {                                 \
        return static_cast<const structure*>(table(k##accessor)); \
    }
#include "suites.def"

  private:
    enum SuiteIndex : size_t {
#define SUITE(structure, accessor, name, version) k##accessor,
#include "suites.def"
        kSuiteCount
    };

    const void* table(SuiteIndex index);

    // Throws; never returns. It has a unit of its own so that a program can link another answer to a missing suite.
    [[noreturn]] void MissingSuiteError() const;

    const SPBasicSuite* basic_;
    const void* tables_[kSuiteCount] = {};  // null: not acquired
};
