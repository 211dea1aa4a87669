// A checked nest in JSON.
#pragma once

#include <optional>
#include <string>

#include "check/nest_check.h"
#include "shared/json_writer.h"

namespace cli {

// The members of the object described in docs/check-json.md; the caller begins and ends it.
void add_nest(JsonWriter& json, const CheckedNest& nest);

// How far the pictures lie apart, and why there are none, where there is such a thing.
void add_pictures(JsonWriter& json, const std::optional<Proof>& proof, const std::string& problem);

}  // namespace cli
