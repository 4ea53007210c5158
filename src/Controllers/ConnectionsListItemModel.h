#pragma once

#include <memory>
#include <string>
#include <utility>

#include "Model/OvFarm.h"

/// A row of the connections list. Main thread only.
class ConnectionsListItemModel {
 public:
  explicit ConnectionsListItemModel(std::shared_ptr<OvFarm> farm) : _representedFarm(std::move(farm)) {}

  const std::shared_ptr<OvFarm>& representedFarm() const { return _representedFarm; }
  const std::string& title() const { return _representedFarm->name(); }

  void setConnected(bool isConnected) { _isConnected = isConnected; }
  bool isConnected() const { return _isConnected; }
  /// The name of the glyph that tells whether this is the connected farm.
  std::string connectionStateImage() const { return _isConnected ? "Connection-Connected" : "Connection-Disconnected"; }

 private:
  std::shared_ptr<OvFarm> _representedFarm;
  bool _isConnected = false;
};
