#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "Controllers/MainQueueTimer.h"
#include "Controllers/Surface.h"
#include "Model/OvFarm.h"

/// The page that asks where a farm is used: a radio row for each of its locations.
class ChooseLocationViewController : public orvane::Surface {
 public:
  using ChooseBlock = std::function<void(std::shared_ptr<OvLocation>)>;  ///< null: cancelled or skipped

  /// Neither is null.
  ChooseLocationViewController(std::shared_ptr<orvane::Timer> timer, std::shared_ptr<orvane::MainQueue> mainQueue);

  /// Lists the locations that the farm has now, and selects the preferred one.
  /// @param chooseBlock is called at most once, in place of any given before, when this page has forgotten all.
  /// @param forNewConfiguration  the farm has just been found, as the page says; the choice may be skipped.
  void setupWithFarm(const std::shared_ptr<OvFarm>& farm, ChooseBlock chooseBlock, bool forNewConfiguration);
  /// Forgets farm and callback, which is called with null if `performsBlock`.
  void resetContentWithBlockPerform(bool performsBlock);

  /// Does nothing for a row that there is not.
  void selectLocation(size_t index);
  void onConnectClick();
  void onCancelClick();

  std::vector<std::string> locationNames() const;
  const std::optional<size_t>& selectedLocation() const { return _selectedLocation; }
  bool isSuccessHeaderVisible() const { return _forNewConfiguration; }
  /// For a second, when the user went on without a choice.
  bool isTitleRed() const { return _changeTitleColorTimer.isValid(); }
  std::string cancelTitle() const;

 private:
  ChooseBlock forgetAll();

  std::vector<std::shared_ptr<OvLocation>> _locations{};  // as they were listed, whatever becomes of the farm's
  std::optional<size_t> _selectedLocation{};
  bool _forNewConfiguration = false;
  ChooseBlock _onChooseBlock{};
  orvane::MainQueueTimer _changeTitleColorTimer;
};
