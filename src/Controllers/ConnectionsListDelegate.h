#pragma once

#include <memory>

class OvFarm;

/// Does what the connections list asks for.
class ConnectionsListDelegate {
 public:
  virtual ~ConnectionsListDelegate() = default;
  virtual void connectionsListConnectionDidClick(const std::shared_ptr<OvFarm>& farm) = 0;
  virtual void connectionsListEditConnectionDidClick(const std::shared_ptr<OvFarm>& farm) = 0;
  virtual void connectionsListAddConnectionDidClick() = 0;
  virtual void connectionsListAboutDidClick() = 0;
  virtual void connectionsListSettingsDidClick() = 0;
};
