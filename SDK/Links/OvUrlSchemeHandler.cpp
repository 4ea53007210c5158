#include "Links/OvUrlSchemeHandler.h"

#include "Http/HttpClient.h"
#include "Http/HttpException.h"
#include "Links/XmlEncode.h"
#include "Support/OvException.h"

namespace {

constexpr int kServerError = 500;

constexpr struct {
  const char* element;
  const std::string& (OvUrlSchemeHandler::*text)() const;
} kDescription[] = {
    {"browsertype", &OvUrlSchemeHandler::getBrowserType},
    {"launchtype", &OvUrlSchemeHandler::getLaunchType},
    {"connectorostype", &OvUrlSchemeHandler::getConnectorOSType},
    {"connectorversion", &OvUrlSchemeHandler::getConnectorVersion},
    {"devicename", &OvUrlSchemeHandler::getDeviceName},
    {"deviceip", &OvUrlSchemeHandler::getDeviceIP},
    {"devicetimezoneoffset", &OvUrlSchemeHandler::getDeviceTimeZoneOffset},
    {"configguid", &OvUrlSchemeHandler::getConfigGuid},
    {"configtimestamp", &OvUrlSchemeHandler::getConfigTimestamp},
};

std::string element(const std::string& name, const std::string& content) {
  return "<" + name + ">" + content + "</" + name + ">";
}

std::string connectorInfo(const OvUrlSchemeHandler& handler) {
  std::string fields = element("protocolversion", "1");
  for (const auto& row : kDescription) fields += element(row.element, XmlEncode((handler.*row.text)()));
  return element("connectorinfo", fields);
}

}  // namespace

void OvUrlSchemeHandler::autoDetect(const char* url, const char* /*farmGuid*/) {
  try {
    HttpClient client;
    client.setURL(url);
    client.post(connectorInfo(*this));
  } catch (const HttpException& exception) {
    throw OvException(kServerError, exception.getErrorText());
  } catch (...) {
    throw OvException(kServerError, "unhandled exception");
  }
}

void OvUrlSchemeHandler::loadConfig(const char* /*url*/, const char* /*farmGuid*/, bool /*connect*/) {}

void OvUrlSchemeHandler::connectFarm(const char* /*farmGuid*/) {}

void OvUrlSchemeHandler::launchApp(const char* /*url*/) {}
