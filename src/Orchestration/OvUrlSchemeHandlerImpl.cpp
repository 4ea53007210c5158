#include "Orchestration/OvUrlSchemeHandlerImpl.h"

#include "Orchestration/OvBrokerClientController.h"
#include "Support/OvWriteLog.h"

OvUrlSchemeHandlerImpl::OvUrlSchemeHandlerImpl(OvFarmManager& farmManager, OvUrlSchemeHandlerDelegate& delegate)
    : _farmManager(farmManager), _delegate(delegate) {
  const OvConnectorInfo info = OvBrokerClientController::makeConnectorInfo();
  setLaunchType(info.getLaunchType());
  setConnectorOSType(info.getConnectorOSType());
  setConnectorVersion(info.getConnectorVersion());
  setDeviceName(info.getDeviceName());
  setDeviceIP(info.getDeviceIP());
  setDeviceTimeZoneOffset(info.getDeviceTimeZoneOffset());
}

void OvUrlSchemeHandlerImpl::autoDetect(const char* url, const char* farmGuid) {
  OvWriteLog(4, "%s: Orvane autoDetect: autoDetectURL = %s farmGUID = %s", __func__, url, farmGuid);
  _delegate.urlSchemeHandlerDidReceiveAutodetectURL(url, farmGuid);
}
