#pragma once

#include <memory>

class OvFarm;

/// What happened to the farms.
enum class FarmChange : int {
  kAdded = 0,
  kRemoved = 1,
  kAllRemoved = 2,  ///< told without a farm
  kChanged = 3,
  kSaved = 4,  ///< told without a farm
};

/// Is told of changes to an OvFarmManager's farms, on the main thread.
class OvFarmManagerObserver {
 public:
  virtual ~OvFarmManagerObserver() = default;
  virtual void farmStateDidChange(FarmChange state, const std::shared_ptr<OvFarm>& farm) = 0;
};
