// One sentence on what a run without judging does to looks.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "cli/shared/origins.h"
#include "cli/shared/unnest.h"
#include "document/document.h"
#include "document/output_text.h"

namespace cli {

class LookHint {
  public:
    // Before the run. Everything given must outlive it.
    LookHint(const lottie::document::Document& document, const host::model::Comp& comp,
             const std::vector<host::model::Layer*>& nests, bool recursive);

    // After it, with the animation as it will be in its file: the hint; empty if no look changes.
    std::string after(const UnnestRecord& record, const lottie::document::OutputText& written);

  private:
    const lottie::document::Document& document_;
    const host::model::Comp& comp_;
    std::optional<Origins> origins_;  // none if judging would take too long
};

}  // namespace cli
