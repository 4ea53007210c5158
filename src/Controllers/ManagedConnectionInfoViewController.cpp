#include "Controllers/ManagedConnectionInfoViewController.h"

#include <utility>

#include "Controllers/ConnectionTexts.h"

namespace {

using orvane::Feature;

struct PolicyRow {
  Feature feature;
  bool (OvBrokerClient::*isFixed)() const;
};

constexpr PolicyRow kPolicies[] = {
    {Feature::kClipboardRedirection, &OvBrokerClient::getRedirectClipboardPolicy},
    {Feature::kDriveRedirection, &OvBrokerClient::getRedirectDrivesPolicy},
    {Feature::kPrintersRedirection, &OvBrokerClient::getRedirectPrintersPolicy},
    {Feature::kUniversalPrintersRedirection, &OvBrokerClient::getRedirectUniversalPrintersPolicy},
    {Feature::kAudioRedirection, &OvBrokerClient::getAudioRedirectionModePolicy},
    {Feature::kMicrophoneRedirection, &OvBrokerClient::getRedirectMicrophonePolicy},
    {Feature::kSerialPortsRedirection, &OvBrokerClient::getRedirectComPortsPolicy},
    {Feature::kGraphicsAcceleration, &OvBrokerClient::getEnableBitmapAccelerationPolicy},
    {Feature::kFlashAcceleration, &OvBrokerClient::getEnableFlashRedirectionPolicy},
    {Feature::kWanAcceleration, &OvBrokerClient::getEnableNetworkOptimizationPolicy},
};

std::vector<Feature> policiesOf(const OvBrokerClient& client) {
  std::vector<Feature> policies;
  for (const PolicyRow& row : kPolicies) {
    if ((client.*row.isFixed)()) policies.push_back(row.feature);
  }
  return policies;
}

}  // namespace

ManagedConnectionInfoViewController::ManagedConnectionInfoViewController(std::shared_ptr<orvane::MainQueue> mainQueue)
    : _mainQueue(std::move(mainQueue)) {}

void ManagedConnectionInfoViewController::setupWithFarm(const OvFarm& farm) {
  _connectionName = farm.name();
  _connectionType = orvane::connectionTypeName(farm);
  _configName = farm.configName();
  _configTimestamp = farm.configTimestamp();
  _policies = orvane::orNone({});
  changed();

  farm.brokerClientDispatchQueue()->post(
      [self = weak_from_this(), mainQueue = _mainQueue, client = farm.brokerClient(), setup = ++_setup] {
        mainQueue->post([self, setup, policies = orvane::orNone(policiesOf(*client))] {
          const auto controller = self.lock();
          if (!controller || controller->_setup != setup) return;
          controller->_policies = policies;
          controller->changed();
        });
      });
}
