#include "Controllers/ConnectionsListViewController.h"

#include <utility>

#include "Model/OvFarmManager.h"

std::shared_ptr<ConnectionsListViewController> ConnectionsListViewController::create(
    OvFarmManager& farmManager, ConnectionsListDelegate& delegate, std::shared_ptr<orvane::MainQueue> mainQueue) {
  const std::shared_ptr<ConnectionsListViewController> list(
      new ConnectionsListViewController(farmManager, delegate, std::move(mainQueue)));
  farmManager.addFarmObserver(list);
  return list;
}

ConnectionsListViewController::ConnectionsListViewController(OvFarmManager& farmManager,
                                                             ConnectionsListDelegate& delegate,
                                                             std::shared_ptr<orvane::MainQueue> mainQueue)
    : _delegate(delegate), _mainQueue(std::move(mainQueue)) {
  for (const auto& farm : farmManager.farms()) _rows.emplace_back(farm);
}

void ConnectionsListViewController::setConnectedFarm(const std::shared_ptr<OvFarm>& farm) {
  _connectedFarm = farm;
  for (auto& row : _rows) row.setConnected(farm && row.representedFarm() == farm);
  changed();
}

void ConnectionsListViewController::farmStateDidChange(FarmChange state, const std::shared_ptr<OvFarm>& farm) {
  _mainQueue->post([self = weak_from_this(), state, farm] {
    if (const auto list = self.lock()) list->applyFarmChange(state, farm);
  });
}

void ConnectionsListViewController::applyFarmChange(FarmChange state, const std::shared_ptr<OvFarm>& farm) {
  if (state == FarmChange::kAdded) {
    _rows.emplace_back(farm).setConnected(farm == _connectedFarm);  // it may have connected by now
  } else if (state == FarmChange::kRemoved) {
    std::erase_if(_rows, [&](const auto& row) { return row.representedFarm() == farm; });
  } else if (state == FarmChange::kAllRemoved) {
    _rows.clear();
  }
  changed();  // after any other change a name may read otherwise
}

void ConnectionsListViewController::tell(size_t row,
                                         void (ConnectionsListDelegate::*wish)(const std::shared_ptr<OvFarm>&)) const {
  if (row >= _rows.size()) return;
  const std::shared_ptr<OvFarm> farm = _rows[row].representedFarm();  // the wish may change the rows
  (_delegate.*wish)(farm);
}
