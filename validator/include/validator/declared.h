// What the author of a plug-in leaves undone on purpose.
#pragma once

#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "suites/ledger_report.h"

namespace validator {

// A line that cannot be understood; what() is one sentence with its number.
class DeclarationError : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

// Lines of text, "#" begins a comment. FUNCTION is "AEGP_GetLayerName", or "LayerSuite5.AEGP_GetLayerName" for that
// version alone; "LayerSuite5.AEGP_Get*" for all that begin so, "*" for all; or several, separated by commas. KIND may
// be "anything".
//   leaves KIND of FUNCTION          what that call gave is not disposed of
//   leaves-after-failure KIND of FUNCTION  the same, only after a call has failed or a suite was missing
//   frees-locked KIND of FUNCTION    it is freed while it is locked
//   drops FUNCTION                   that call may fail without anybody being told
//   continues with FUNCTION          it is called even after an earlier failure
//   leaves-group-open without SUITE  the undo group is left to the host when the suite is missing
//   remembers                        a later run may do something else than the first
//   grows                            the work may grow with the square of the layers
class Declared {
  public:
    Declared() = default;
    // Throws DeclarationError.
    explicit Declared(std::string_view text);

    bool leaves(host::suites::HandleKind kind, std::string_view function) const;
    bool leaves_after_failure(host::suites::HandleKind kind, std::string_view function) const;
    bool frees_locked(std::string_view function) const;
    bool drops(std::string_view function) const { return has("drops", function); }
    bool continues_with(std::string_view function) const { return has("continues", function); }
    bool leaves_group_open_without(std::string_view suite) const { return has("leaves-group-open", suite); }
    bool remembers() const { return remembers_; }
    bool grows() const { return grows_; }

  private:
    struct Line {
        std::string verb;
        std::string kind;
        std::string function;
    };
    bool has(std::string_view verb, std::string_view function, std::string_view kind = {}) const;

    std::vector<Line> lines_;
    bool remembers_ = false;
    bool grows_ = false;
};

}  // namespace validator
