// The model's one exception type. Edges (C tables, scripts, command line) turn it into their own language.
#pragma once

#include <stdexcept>
#include <string>

namespace host::model {

enum class ErrorKind {
    bad_argument,  // an index out of range, a null or dead object, an impossible combination
    not_allowed,   // legal arguments, but not in this state (a static value for a keyframed stream)
    unsupported,   // the host knows the operation and does not offer it
};

class Error : public std::runtime_error {
  public:
    Error(ErrorKind kind, const std::string& sentence) : std::runtime_error(sentence), kind_(kind) {}
    ErrorKind kind() const { return kind_; }

  private:
    ErrorKind kind_;
};

}  // namespace host::model
