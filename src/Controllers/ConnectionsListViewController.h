#pragma once

#include <memory>
#include <vector>

#include "Controllers/ConnectionsListDelegate.h"
#include "Controllers/ConnectionsListItemModel.h"
#include "Controllers/Surface.h"
#include "Model/OvFarmManagerObserver.h"
#include "Platform/Queues.h"

class OvFarmManager;

/// The list of the user's connections in the side panel, one row for each farm of the store, in its order. Main thread
/// only.
class ConnectionsListViewController : public orvane::Surface,
                                      public OvFarmManagerObserver,
                                      public std::enable_shared_from_this<ConnectionsListViewController> {
 public:
  using Rows = std::vector<ConnectionsListItemModel>;

  /// Follows the store's farms from now on. The delegate is not owned.
  static std::shared_ptr<ConnectionsListViewController> create(OvFarmManager& farmManager,
                                                               ConnectionsListDelegate& delegate,
                                                               std::shared_ptr<orvane::MainQueue> mainQueue);

  const Rows& rows() const { return _rows; }
  /// Marks this farm's row and no other; null marks none.
  void setConnectedFarm(const std::shared_ptr<OvFarm>& farm);

  // What the user does; a row that has gone meanwhile is passed over.
  void onConnectionClick(size_t row) { tell(row, &ConnectionsListDelegate::connectionsListConnectionDidClick); }
  void onEditConnectionClick(size_t row) { tell(row, &ConnectionsListDelegate::connectionsListEditConnectionDidClick); }
  void onAddConnectionClick() { _delegate.connectionsListAddConnectionDidClick(); }
  void onAboutClick() { _delegate.connectionsListAboutDidClick(); }
  void onSettingsClick() { _delegate.connectionsListSettingsDidClick(); }

  void farmStateDidChange(FarmChange state, const std::shared_ptr<OvFarm>& farm) override;

 private:
  ConnectionsListViewController(OvFarmManager& farmManager, ConnectionsListDelegate& delegate,
                                std::shared_ptr<orvane::MainQueue> mainQueue);

  void applyFarmChange(FarmChange state, const std::shared_ptr<OvFarm>& farm);
  void tell(size_t row, void (ConnectionsListDelegate::*wish)(const std::shared_ptr<OvFarm>&)) const;

  ConnectionsListDelegate& _delegate;
  const std::shared_ptr<orvane::MainQueue> _mainQueue;
  Rows _rows{};
  std::shared_ptr<OvFarm> _connectedFarm{};
};
