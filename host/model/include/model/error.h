// The model's only exception type; C tables, scripts and the command line convert it.
#pragma once

#include <stdexcept>
#include <string>

namespace host::model {

enum class ErrorKind {
    bad_argument,  // an index out of range, a null or dead object, an impossible combination
    not_allowed,   // valid arguments, but not in this state (a static value for a keyframed stream)
    unsupported,   // an operation that the host does not offer
};

class Error : public std::runtime_error {
  public:
    Error(ErrorKind kind, const std::string& sentence) : std::runtime_error(sentence), kind_(kind) {}
    ErrorKind kind() const { return kind_; }

  private:
    ErrorKind kind_;
};

}  // namespace host::model
