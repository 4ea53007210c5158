#pragma once

#include <string>

#include "Model/OvFarmConfiguration.h"

/// @file
/// How a connection reads to the user where it is edited or summed up, in the user's language.

namespace orvane {

/// Whether a broker or the user made the connection.
std::string connectionTypeName(const OvFarmConfiguration& farm);

/// As whom the credentials are: the user name, behind its domain unless the name itself tells it.
std::string qualifiedUserName(const OvCredentials& credentials);

}  // namespace orvane
