#pragma once

#include <string>

namespace orvane {

/// The page of the documentation that Help opens, in the user's language.
std::string helpAddress();

}  // namespace orvane
