#pragma once

#include <array>
#include <string>
#include <vector>

#include "Controllers/ManualConnectionInfoLocationItemViewController.h"
#include "Controllers/Surface.h"
#include "Model/OvFarm.h"

/// The lines of a manual connection's summary beside its locations, which stand behind kCredentials.
enum class ManualConnectionInfoLine {
  kName,
  kType,
  kCredentials,
  kDisallowSaveCredentials,
  kResolution,
  kColors,
  kSeamless,
  kSound,
  kRedirections,
  kSpeed,
  kExperience,
  kAutoLaunch
};

/// The summary of a manual connection: all that the user set, to be read only.
class ManualConnectionInfoViewController : public orvane::Surface {
 public:
  using Line = ManualConnectionInfoLine;
  using Location = ManualConnectionInfoLocationItemViewController;

  /// Shows the farm as it is now, in place of any shown before.
  void setupWithFarm(const OvFarm& farm);

  /// What a line says; a list has an item a line.
  const std::string& text(Line line) const { return _texts[static_cast<size_t>(line)]; }
  const std::vector<Location>& locations() const { return _locations; }

 private:
  std::array<std::string, static_cast<size_t>(Line::kAutoLaunch) + 1> _texts{};
  std::vector<Location> _locations{};
};
