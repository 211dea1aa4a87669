// A checked nest in JSON.
#pragma once

#include "check/nest_check.h"
#include "shared/json_writer.h"

namespace cli {

// The members of the object described in docs/check-json.md; the caller begins and ends it.
void add_nest(JsonWriter& json, const CheckedNest& nest);

void add_proof(JsonWriter& json, const Proof& proof);

}  // namespace cli
