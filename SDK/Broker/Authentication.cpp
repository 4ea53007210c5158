// Logging in, and what the broker fixes for the session with its answer.

#include "Broker/OvBrokerClient.h"
#include "Broker/Protocol.h"
#include "Broker/RequestDocument.h"
#include "Broker/ResponseFields.h"
#include "Crypto/crypto.h"
#include "Support/OvWriteLog.h"
#include "Support/SecureMemory.h"
#include "Support/TextCoding.h"

namespace protocol = orvane::protocol;
using orvane::RequestDocument;
using orvane::ResponseFields;

namespace {

// The wire's numbers of the audio modes. 2 and 3 name none.
constexpr struct {
  int onTheWire;
  int mode;
} kAudioModes[] = {{0, 0}, {1, 1}, {4, 2}};

std::string enciphered(const std::string& password, bool utf8) {
  std::string clear = utf8 ? password : orvane::utf8ToCp1252(password);
  const orvane::WipeAtEnd wipe(clear);
  char text[1024] = {};
  crypto_encrypt_password(clear.c_str(), text, sizeof text);
  return text;
}

}  // namespace

// A switch of the session that the broker may fix, and where it lands.
struct OvBrokerClient::SwitchPolicy {
  const char* element;
  bool OvBrokerClient::*value;
  bool OvBrokerClient::*policy;
};

constexpr OvBrokerClient::SwitchPolicy OvBrokerClient::kSwitchPolicies[] = {
    {"redirectclipboard", &OvBrokerClient::redirectClipboard_, &OvBrokerClient::redirectClipboardPolicy_},
    {"redirectcomports", &OvBrokerClient::redirectComPorts_, &OvBrokerClient::redirectComPortsPolicy_},
    {"redirectdrives", &OvBrokerClient::redirectDrives_, &OvBrokerClient::redirectDrivesPolicy_},
    {"redirectprinters", &OvBrokerClient::redirectPrinters_, &OvBrokerClient::redirectPrintersPolicy_},
    {"redirectsmartcards", &OvBrokerClient::redirectSmartCards_, &OvBrokerClient::redirectSmartCardsPolicy_},
    {"redirectuniversalprinters", &OvBrokerClient::redirectUniversalPrinters_,
     &OvBrokerClient::redirectUniversalPrintersPolicy_},
    {"redirectusbhandhelds", &OvBrokerClient::redirectUSB_, &OvBrokerClient::redirectUSBPolicy_},
    {"redirectmicrophone", &OvBrokerClient::redirectMicrophone_, &OvBrokerClient::redirectMicrophonePolicy_},
    {"enablebitmapacceleration", &OvBrokerClient::enableBitmapAcceleration_,
     &OvBrokerClient::enableBitmapAccelerationPolicy_},
    {"enablelocaltextecho", &OvBrokerClient::enableLocalTextEcho_, &OvBrokerClient::enableLocalTextEchoPolicy_},
    {"enablemultimediaredirection", &OvBrokerClient::enableMultimediaRedirection_,
     &OvBrokerClient::enableMultimediaRedirectionPolicy_},
    {"enableflashredirection", &OvBrokerClient::enableFlashRedirection_,
     &OvBrokerClient::enableFlashRedirectionPolicy_},
    {"enablenetworkoptimization", &OvBrokerClient::enableNetworkOptimization_,
     &OvBrokerClient::enableNetworkOptimizationPolicy_},
};

void OvBrokerClient::authenticate() {
  if (!cookie_.empty()) return;

  RequestDocument request("authenticate-req", useUtf8OnWire_);
  request.add("domain", domain_);
  request.add("username", username_);
  request.add("password", enciphered(password_, useUtf8OnWire_));
  request.add("clientbitsperpixel", clientBitsPerPixel_);
  request.add("clientname", clientName_);
  request.add("clientipaddress", clientIPAddress_);
  request.add("clientversion", protocol::kClientVersion);
  request.add("usealternateipaddress", useAlternateIPAddress_);
  request.add("connectortype", connectorType_);
  request.add("websitename", webSiteName_);
  request.add("launchtype", launchType_);
  request.add("connectorostype", connectorOSType_);
  request.add("connectorversion", connectorVersion_);
  request.add("devicetimezoneoffset", deviceTimeZoneOffset_);
  request.add("networkconnectiontype", connectionType_);
  request.add("locale", connectorLocale_);
  request.add("anonymous", username_.empty() && password_.empty() && domain_.empty());

  const std::string body = request.text();
  OvWriteLog(5, "%s::authenticate, request=%s", "OvBrokerClient", body.c_str());
  std::string answering;
  std::string response = walkServers(nullptr, body.c_str(), answering);
  OvWriteLog(5, "%s::authenticate, response=%s", "OvBrokerClient", response.c_str());

  const ResponseFields fields = answerIn(std::move(response), "authenticate-rsp");
  const ResponseFields::Error error = fields.error();
  const std::string cookie = fields.text("cookie").value_or("");
  applyPolicies(fields);
  applyCapabilities(fields);
  if (error.code != 0) win32Error(error.code, error.text.c_str());

  activeServer_ = answering;
  cookie_ = cookie;
}

void OvBrokerClient::applyPolicies(const ResponseFields& response) {
  audioRedirectionModePolicy_ = false;
  for (const SwitchPolicy& row : kSwitchPolicies) this->*row.policy = false;

  const std::optional<int> audio = response.number("redirectaudio");
  for (const auto& row : kAudioModes) {
    if (audio != row.onTheWire) continue;
    audioRedirectionMode_ = row.mode;
    audioRedirectionModePolicy_ = true;
  }
  for (const SwitchPolicy& row : kSwitchPolicies) {
    const std::optional<int> value = response.number(row.element);
    if (value != 0 && value != 1) continue;
    this->*row.value = *value == 1;
    this->*row.policy = true;
  }
}
