#pragma once

#include <stdexcept>

namespace orvane {

/// Why bytes can't be read as a keyed archive, or why an archive says something else than it was asked for.
class KeyedArchiveError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

}  // namespace orvane
