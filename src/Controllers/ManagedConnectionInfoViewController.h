#pragma once

#include <memory>
#include <string>
#include <vector>

#include "Controllers/Surface.h"
#include "Model/OvFarm.h"
#include "Platform/Queues.h"

/// The summary of a managed connection: whose configuration it has, and what the broker has fixed. To be owned by a
/// shared_ptr.
class ManagedConnectionInfoViewController : public orvane::Surface,
                                            public std::enable_shared_from_this<ManagedConnectionInfoViewController> {
 public:
  struct Policy {
    int id = 0;  ///< 0: there is none
    std::string name;
  };

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
  /// In their order; one of id 0 if there are none.
  const std::vector<Policy>& policies() const { return _policies; }
  /// Their names, one a line.
  std::string policyNames() const;

 private:
  static std::vector<Policy> policiesOf(const OvBrokerClient& client);
  static std::vector<Policy> noPolicies();

  const std::shared_ptr<orvane::MainQueue> _mainQueue;
  std::shared_ptr<const OvBrokerClient> _shownClient{};  // whose policies are wanted; never used here
  std::string _connectionName{};
  std::string _connectionType{};
  std::string _configName{};
  std::string _configTimestamp{};
  std::vector<Policy> _policies{};
};
