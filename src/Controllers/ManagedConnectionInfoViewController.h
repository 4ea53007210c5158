#pragma once

#include <memory>
#include <string>
#include <vector>

#include "Controllers/Features.h"
#include "Controllers/Surface.h"
#include "Model/OvFarm.h"
#include "Platform/Queues.h"

/// The summary of a managed connection: whose configuration it has, and what the broker has fixed. To be owned by a
/// shared_ptr.
class ManagedConnectionInfoViewController : public orvane::Surface,
                                            public std::enable_shared_from_this<ManagedConnectionInfoViewController> {
 public:
  explicit ManagedConnectionInfoViewController(std::shared_ptr<orvane::MainQueue> mainQueue);

  /// Shows the farm, in place of any shown before.
  ///
  /// The policies are the client's, which belongs to the farm's queue: they are read there, behind whatever the farm is
  /// doing, and until then the list says that there are none.
  void setupWithFarm(const OvFarm& farm);

  const std::string& connectionName() const { return _connectionName; }
  const std::string& connectionType() const { return _connectionType; }
  const std::string& configName() const { return _configName; }
  const std::string& configTimestamp() const { return _configTimestamp; }
  /// What the broker has fixed, by the policies' numbers and in their order.
  const std::vector<orvane::Feature>& policies() const { return _policies; }
  std::string policyNames() const { return orvane::featureNames(_policies); }

 private:
  const std::shared_ptr<orvane::MainQueue> _mainQueue;
  unsigned _setup = 0;  // whose policies are awaited
  std::string _connectionName{};
  std::string _connectionType{};
  std::string _configName{};
  std::string _configTimestamp{};
  std::vector<orvane::Feature> _policies{};
};
