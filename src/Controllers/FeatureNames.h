#pragma once

#include <string>
#include <vector>

namespace orvane {

/// Names below each other, one a line; the text for none if there are none.
std::string listOfNames(const std::vector<std::string>& names);

/// The kind of a connection: made by a broker, or by hand.
std::string connectionTypeName(bool serverCreated);

}  // namespace orvane
