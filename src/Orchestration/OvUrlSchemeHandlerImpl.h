#pragma once

#include "Links/OvUrlSchemeHandler.h"
#include "Orchestration/OvUrlSchemeHandlerDelegate.h"

class OvFarmManager;

/// What links do in the application: "autodetect" goes to the delegate, all others have no effect. Reports nothing to
/// the address that a link carries.
class OvUrlSchemeHandlerImpl : public OvUrlSchemeHandler {
 public:
  /// Takes the description of this client from OvBrokerClientController::makeConnectorInfo. Neither is owned, and both
  /// must outlive the handler.
  OvUrlSchemeHandlerImpl(OvFarmManager& farmManager, OvUrlSchemeHandlerDelegate& delegate);

  OvFarmManager& farmManager() const { return _farmManager; }

  /// Tells the delegate. Never throws by itself.
  void autoDetect(const char* url, const char* farmGuid) override;

 private:
  OvFarmManager& _farmManager;
  OvUrlSchemeHandlerDelegate& _delegate;
};
