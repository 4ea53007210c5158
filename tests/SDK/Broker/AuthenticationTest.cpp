#include <regex>

#include "Crypto/crypto.h"
#include "SDK/Broker/ScriptedBroker.h"

using testing::ElementsAre;
using testing::HasSubstr;

namespace {

std::string passwordIn(const std::string& body) {
  std::smatch match;
  if (!std::regex_search(body, match, std::regex("<password>([0-9A-F]{512})</password>"))) return "no password";
  char text[257] = {};
  crypto_decrypt_password(match[1].str().c_str(), text, sizeof text);
  return text;
}

// The random digits of the password fall away.
std::string withoutPassword(const std::string& body) {
  return std::regex_replace(body, std::regex("[0-9A-F]{512}"), "*");
}

class AuthenticationTest : public ScriptedBrokerTest {
 protected:
  // Logs in anew with an answer that holds these elements.
  void logIn(const std::string& elements) {
    ScriptedBroker broker;
    broker.configure(client_);
    broker.respond("authenticate", "<cookie>c</cookie>" + elements);
    client_.authenticate();
  }
};

TEST_F(AuthenticationTest, TheRequestHoldsAllFieldsInTheirOrder) {
  client_.setDomain("CORP");
  client_.setUsername("anna");
  client_.setPassword("p%\xC3\xA4ss");
  client_.setClientBitsPerPixel(24);
  client_.setClientName("desk");
  client_.setClientIPAddress("10.1.2.3");
  client_.setUseAlternateIPAddress(true);
  client_.setConnectorType("Type");
  client_.setWebSiteName("site");
  client_.setLaunchType("Other");
  client_.setConnectorOSType("OS");
  client_.setConnectorVersion("2.3");
  client_.setConnectionType(6);
  client_.setConnectorLocale("fr-fr");
  client_.authenticate();

  const std::string body = broker_.lastBody();
  EXPECT_EQ(passwordIn(body), "p%\xE4ss");  // the wire's single-byte form
  EXPECT_EQ(withoutPassword(body),
            "<authenticate-req><domain>CORP</domain><username>anna</username><password>*</password>"
            "<clientbitsperpixel>24</clientbitsperpixel><clientname>desk</clientname>"
            "<clientipaddress>10.1.2.3</clientipaddress><clientversion>6.0</clientversion>"
            "<usealternateipaddress>1</usealternateipaddress><connectortype>Type</connectortype>"
            "<websitename>site</websitename><launchtype>Other</launchtype><connectorostype>OS</connectorostype>"
            "<connectorversion>2.3</connectorversion><devicetimezoneoffset>" +
                std::to_string(client_.getDeviceTimeZoneOffset()) +
                "</devicetimezoneoffset><networkconnectiontype>6</networkconnectiontype><locale>fr-fr</locale>"
                "<anonymous>0</anonymous></authenticate-req>");
}

TEST_F(AuthenticationTest, NobodyIsAnonymousAndStillHasAPassword) {
  client_.authenticate();
  EXPECT_EQ(withoutPassword(broker_.lastBody()),
            "<authenticate-req><domain></domain><username></username><password>*</password>"
            "<clientbitsperpixel>32</clientbitsperpixel><clientname></clientname><clientipaddress></clientipaddress>"
            "<clientversion>6.0</clientversion><usealternateipaddress>0</usealternateipaddress>"
            "<connectortype></connectortype><websitename></websitename><launchtype>Native</launchtype>"
            "<connectorostype></connectorostype><connectorversion>1.0.0</connectorversion><devicetimezoneoffset>" +
                std::to_string(client_.getDeviceTimeZoneOffset()) +
                "</devicetimezoneoffset><networkconnectiontype>0</networkconnectiontype><locale>en-us</locale>"
                "<anonymous>1</anonymous></authenticate-req>");
  EXPECT_EQ(passwordIn(broker_.lastBody()), "");
  for (const auto set : {&OvBrokerClient::setDomain, &OvBrokerClient::setUsername, &OvBrokerClient::setPassword}) {
    (client_.*set)("x");
    client_.authenticate();
    EXPECT_THAT(broker_.lastBody(), HasSubstr("<anonymous>0</anonymous>"));
    (client_.*set)("");
  }
}

TEST_F(AuthenticationTest, ALoggedInClientSendsNothingAndACookielessOneAsksAgain) {
  client_.authenticate();
  client_.authenticate();
  EXPECT_EQ(broker_.messages().size(), 1u);

  ScriptedBroker cookieless;
  cookieless.configure(client_);
  cookieless.respond("authenticate", "<cookie/>");
  client_.authenticate();
  client_.authenticate();
  EXPECT_EQ(cookieless.messages().size(), 2u);
}

TEST_F(AuthenticationTest, ARefusedLogInStillAppliesWhatItBrought) {
  broker_.respond("authenticate",
                  "<errorcode>1326</errorcode><errortext>Nein f\xFCr alle</errortext><cookie>c</cookie>"
                  "<redirectdrives>1</redirectdrives><capabilities>4</capabilities>");
  broker_.respond("authenticate", "<cookie>c</cookie><capabilities/>");
  client_.setPassword("\xC3\xA4");
  // The text was read before the capabilities were.
  EXPECT_EQ(errorOf([&] { client_.authenticate(); }), "1326 Nein f\xC3\xBCr alle");
  EXPECT_TRUE(client_.getRedirectDrivesPolicy());

  client_.authenticate();
  EXPECT_THAT(broker_.lastBody(), testing::StartsWith("<?xml version=\"1.0\" encoding=\"UTF-8\"?>"));
  EXPECT_EQ(passwordIn(broker_.lastBody()), "\xC3\xA4");
  EXPECT_FALSE(client_.getRedirectDrivesPolicy());  // fixed by the last answer or not at all
}

TEST_F(AuthenticationTest, AudioModesAreTranslatedAndFixed) {
  const struct {
    const char* element;
    int mode;
    bool fixed;
  } cases[] = {
      {"<redirectaudio>0</redirectaudio>", 0, true},
      {"<redirectaudio>1</redirectaudio>", 1, true},
      {"<redirectaudio>4</redirectaudio>", 2, true},
      {"<redirectaudio>2</redirectaudio>", 7, false},
      {"<redirectaudio>3</redirectaudio>", 7, false},
      {"<redirectaudio/>", 0, true},
      {"", 7, false},
  };
  for (const auto& row : cases) {
    OvBrokerClient client;
    client.setAudioRedirectionMode(7);
    ScriptedBroker broker;
    broker.configure(client);
    broker.respond("authenticate", row.element);
    client.authenticate();
    EXPECT_EQ(client.getAudioRedirectionMode(), row.mode) << row.element;
    EXPECT_EQ(client.getAudioRedirectionModePolicy(), row.fixed) << row.element;
    EXPECT_EQ(errorOf([&] { client.setAudioRedirectionMode(1); }), row.fixed ? "5 Access denied." : "none");
  }
}

struct Switch {
  const char* element;
  bool (OvBrokerClient::*get)() const;
  void (OvBrokerClient::*set)(bool);
  bool (OvBrokerClient::*getPolicy)() const;
};

#define SWITCH(element, Name) \
  { element, &OvBrokerClient::get##Name, &OvBrokerClient::set##Name, &OvBrokerClient::get##Name##Policy }

constexpr Switch kSwitches[] = {
    SWITCH("redirectclipboard", RedirectClipboard),
    SWITCH("redirectcomports", RedirectComPorts),
    SWITCH("redirectdrives", RedirectDrives),
    SWITCH("redirectprinters", RedirectPrinters),
    SWITCH("redirectsmartcards", RedirectSmartCards),
    SWITCH("redirectuniversalprinters", RedirectUniversalPrinters),
    SWITCH("redirectusbhandhelds", RedirectUSB),
    SWITCH("redirectmicrophone", RedirectMicrophone),
    SWITCH("enablebitmapacceleration", EnableBitmapAcceleration),
    SWITCH("enablelocaltextecho", EnableLocalTextEcho),
    SWITCH("enablemultimediaredirection", EnableMultimediaRedirection),
    SWITCH("enableflashredirection", EnableFlashRedirection),
    SWITCH("enablenetworkoptimization", EnableNetworkOptimization),
};

TEST_F(AuthenticationTest, EachSwitchIsFixedByItsOwnElementAlone) {
  for (const Switch& row : kSwitches) {
    const std::string element = row.element;
    for (const Switch& other : kSwitches) {
      logIn("");  // nothing is fixed
      (client_.*other.set)(false);
    }

    logIn("<" + element + ">1</" + element + ">");
    for (const Switch& other : kSwitches) {
      const bool same = &other == &row;
      EXPECT_EQ((client_.*other.get)(), same) << element << " " << other.element;
      EXPECT_EQ((client_.*other.getPolicy)(), same) << element << " " << other.element;
    }
    EXPECT_EQ(errorOf([&] { (client_.*row.set)(false); }), "5 Access denied.");
    EXPECT_TRUE((client_.*row.get)());

    logIn("<" + element + "/>");  // present, with the value 0
    EXPECT_FALSE((client_.*row.get)());
    EXPECT_TRUE((client_.*row.getPolicy)());

    logIn("");
    (client_.*row.set)(true);
    logIn("<" + element + ">5</" + element + ">");  // no value: left as it was, and free
    EXPECT_TRUE((client_.*row.get)());
    EXPECT_EQ(errorOf([&] { (client_.*row.set)(false); }), "none");
  }
}

TEST_F(AuthenticationTest, DrivesToRedirectAreFixedWithTheirSwitch) {
  client_.setDrivesToRedirect("C");
  logIn("<redirectdrives>0</redirectdrives>");
  EXPECT_EQ(errorOf([&] { client_.setDrivesToRedirect("D"); }), "5 Access denied.");
  EXPECT_EQ(client_.getDrivesToRedirect(), "C");
}

}  // namespace
