#pragma once

#include <memory>

#include "Model/OvLocation.h"

/// What became of a location that was edited.
enum class EditLocationMode : int { kNew = 0, kEdit = 1 };

class EditLocationDelegate {
 public:
  virtual ~EditLocationDelegate() = default;
  /// @param location the one that was given, with what the user entered; null if the user cancelled.
  /// @param shouldMakeDefault the box, whatever the answer.
  virtual void editLocationDidFinishEditingLocation(const std::shared_ptr<OvLocation>& location, bool shouldMakeDefault,
                                                    EditLocationMode mode) = 0;
};
