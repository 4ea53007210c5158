#pragma once

#include <stdexcept>

namespace orvane::walkthrough {

/// A step of the walkthrough that didn't work out, in words for the user.
class Failure : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

}  // namespace orvane::walkthrough
