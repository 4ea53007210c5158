#pragma once

#include <algorithm>
#include <memory>
#include <vector>

#include "Model/OvLocation.h"

/// The locations of a farm, in the user's order; none is null. Others may hold a location too, but a copy of the list
/// has locations of its own, and lists compare by their locations' values.
class OvLocationList : public std::vector<std::shared_ptr<OvLocation>> {
 public:
  OvLocationList() = default;
  OvLocationList(const OvLocationList& other) : vector() {
    reserve(other.size());
    for (const auto& location : other) push_back(std::make_shared<OvLocation>(*location));
  }
  OvLocationList& operator=(const OvLocationList& other) {
    OvLocationList copy(other);
    swap(copy);
    return *this;
  }

  bool operator==(const OvLocationList& other) const {
    return std::equal(begin(), end(), other.begin(), other.end(),
                      [](const auto& left, const auto& right) { return *left == *right; });
  }
};
