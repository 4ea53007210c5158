#include "Orchestration/BrokerControllerError.h"

#include <iterator>

#include "OrvaneCommon/LocalizedText.h"

namespace {

// By code; null for no text.
constexpr const char* kDescriptionKeys[] = {
    nullptr,
    nullptr,
    nullptr,
    orvane::localizedTextKey("OvBrokerClientController.GetConnectorInfo.CancelUpdates"),
    orvane::localizedTextKey("OvBrokerClientController.UnableConnectConfigFileInvalid"),
    orvane::localizedTextKey("AutoConfigureWindowController.ConfigurationNotFound"),
    orvane::localizedTextKey("OvBrokerClientController.UnableConnectConfigFileInvalid"),
    orvane::localizedTextKey("OvBrokerClientController.NotAssignedConfiguration"),
    orvane::localizedTextKey("OvBrokerClientController.GetConnectorInfo.Error.NoLocationSelected"),
    orvane::localizedTextKey("OvBrokerClientController.Error.LoadSettingsFromOvl"),
    orvane::localizedTextKey("OvBrokerClientController.Error.OrvaneConnectionNotFound"),
    orvane::localizedTextKey("OvBrokerClientController.GetConnectorInfo.Error.Connection"),
    orvane::localizedTextKey("Farm.NSException.Broker.MessageEmpty"),
    orvane::localizedTextKey("OvBrokerClientController.Error.InvalidUrl"),
    orvane::localizedTextKey("OvBrokerClientController.GetConnectorInfo.Error.Connection"),
};

}  // namespace

OvError getErrorForBrokerControllerErrorCode(int code) {
  if (code < 0 || code >= static_cast<int>(std::size(kDescriptionKeys))) return {};
  const char* key = kDescriptionKeys[code];
  return OvU_MakeNSError(code, key == nullptr ? "" : orvane::localizedText(key));
}

void configureError(OvError* error, int brokerControllerErrorCode) {
  if (error != nullptr) *error = getErrorForBrokerControllerErrorCode(brokerControllerErrorCode);
}
