#include "SDK/Broker/ScriptedBroker.h"

namespace {

std::string text(const char* value) { return value ? value : "(null)"; }

class LaunchExchangeTest : public ScriptedBrokerTest {
 protected:
  std::unique_ptr<OvSettings> launch(const std::string& elements) {
    ScriptedBroker broker;
    broker.configure(client_);
    broker.respond("launchapplication", elements);
    auto record = client_.launchApplication("calc & co");
    EXPECT_EQ(broker.lastBody(),
              "<launchapplication-req><cookie>c1</cookie><appname>calc &amp; co</appname></launchapplication-req>");
    return record;
  }
};

TEST_F(LaunchExchangeTest, TheAnswerGoesIntoTheRecord) {
  client_.setEnableNetworkOptimization(true);
  client_.setSeamlessMode(2);
  const auto record = launch(
      "<servername>S</servername><serveraddr>1.2.3.4</serveraddr><shortcut>Calc</shortcut><path>C:\\c.exe</path>"
      "<arguments>/a \"b c\"</arguments><workingdir>C:\\w</workingdir><apptype>1</apptype>"
      "<sessionsharing>0</sessionsharing><console>1</console><compression>0</compression><protocol>3</protocol>"
      "<seamlessmode>1</seamlessmode><dnaproxy>dna</dnaproxy><ticket>T</ticket><osoundv2>3</osoundv2>");
  EXPECT_EQ(text(record->getServerName()), "S");
  EXPECT_EQ(text(record->getServerAddr()), "1.2.3.4");
  EXPECT_EQ(text(record->getConnectingText()), "Calc");
  EXPECT_EQ(text(record->getProgramFullPath()), "\"C:\\c.exe\" /a \"b c\"");
  EXPECT_EQ(text(record->getProgramWorkingDir()), "C:\\w");
  EXPECT_EQ(text(record->getDNAProxy()), "dna");
  EXPECT_EQ(record->getAppType(), 1);
  EXPECT_FALSE(record->getSessionSharing());
  EXPECT_TRUE(record->getConnectToConsole());
  EXPECT_FALSE(record->getCompression());
  EXPECT_EQ(record->getProtocol(), 3);
  EXPECT_EQ(record->getSeamless(), 1);
  EXPECT_TRUE(record->getDeleteFile());
}

TEST_F(LaunchExchangeTest, AnEmptyAnswerGivesTheDefaults) {
  const auto record = launch("");
  EXPECT_EQ(text(record->getServerName()), "");
  EXPECT_EQ(text(record->getConnectingText()), "calc & co");
  EXPECT_EQ(text(record->getProgramFullPath()), "\"\"");
  EXPECT_EQ(record->getAppType(), 1);
  EXPECT_TRUE(record->getSessionSharing());
  EXPECT_FALSE(record->getConnectToConsole());
  EXPECT_TRUE(record->getCompression());
  EXPECT_EQ(record->getProtocol(), 0);
  EXPECT_FALSE(launch("<sessionsharing/>")->getSessionSharing());
}

TEST_F(LaunchExchangeTest, ADesktopIsItsShellAndNeverSeamless) {
  client_.setSeamlessMode(1);
  const auto record =
      launch("<apptype>2</apptype><path>p</path><arguments>a</arguments><seamlessmode>1</seamlessmode>");
  EXPECT_EQ(text(record->getProgramFullPath()), "explorer.exe");
  EXPECT_EQ(record->getSeamless(), 0);
}

TEST_F(LaunchExchangeTest, TheBrokersSeamlessModeCountsOnlyIfTheClientWantsOne) {
  EXPECT_EQ(launch("<seamlessmode>1</seamlessmode>")->getSeamless(), 0);
  client_.setSeamlessMode(3);
  EXPECT_EQ(launch("")->getSeamless(), 3);
  EXPECT_EQ(launch("<seamlessmode>0</seamlessmode>")->getSeamless(), 0);
}

TEST_F(LaunchExchangeTest, ATicketTakesThePlaceOfThePassword) {
  client_.setPassword("secret");
  const struct {
    const char* elements;
    const char* ticket;
    const char* password;
  } cases[] = {
      {"<ticket>T</ticket>", "T", "(null)"},
      {"<protocol>0</protocol><ticket/>", "(null)", "secret"},
      {"<protocol>1</protocol><ticket>T</ticket>", "(null)", "secret"},
  };
  for (const auto& row : cases) {
    const auto record = launch(row.elements);
    EXPECT_EQ(text(record->getTicket()), row.ticket) << row.elements;
    EXPECT_EQ(text(record->getPassword()), row.password) << row.elements;
  }
}

TEST_F(LaunchExchangeTest, WithoutNetworkOptimizationThereIsNoProxyForIt) {
  EXPECT_EQ(text(launch("<dnaproxy>dna</dnaproxy>")->getDNAProxy()), "");
}

// Every switch on its own, so that no two can be mixed up.
TEST_F(LaunchExchangeTest, TheClientsSettingsGoIntoTheRecord) {
  const struct {
    void (OvBrokerClient::*set)(bool);
    bool (OvSettings::*get)() const;
  } switches[] = {
      {&OvBrokerClient::setUseProxy, &OvSettings::getUseProxy},
      {&OvBrokerClient::setEnableSSO, &OvSettings::getEnableSSO},
      {&OvBrokerClient::setEnableKerberos, &OvSettings::getEnableKerberos},
      {&OvBrokerClient::setFullScreen, &OvSettings::getFullScreen},
      {&OvBrokerClient::setSmartSizing, &OvSettings::getSmartSizing},
      {&OvBrokerClient::setDisplayConnectionBar, &OvSettings::getDisplayConnectionBar},
      {&OvBrokerClient::setPinConnectionBar, &OvSettings::getPinConnectionBar},
      {&OvBrokerClient::setSpanMonitors, &OvSettings::getSpanMonitors},
      {&OvBrokerClient::setRedirectClipboard, &OvSettings::getRedirectClipboard},
      {&OvBrokerClient::setRedirectComPorts, &OvSettings::getRedirectComPorts},
      {&OvBrokerClient::setRedirectDrives, &OvSettings::getRedirectDrives},
      {&OvBrokerClient::setRedirectMicrophone, &OvSettings::getRedirectMicrophone},
      {&OvBrokerClient::setRedirectPrinters, &OvSettings::getRedirectPrinters},
      {&OvBrokerClient::setRedirectSmartCards, &OvSettings::getRedirectSmartcards},
      {&OvBrokerClient::setRedirectUniversalPrinters, &OvSettings::getRedirectUniversalPrinters},
      {&OvBrokerClient::setRedirectUSB, &OvSettings::getRedirectUSB},
      {&OvBrokerClient::setEnableAutoReconnection, &OvSettings::getEnableAutoReconnection},
      {&OvBrokerClient::setEnableBitmapAcceleration, &OvSettings::getEnableBitmapAcceleration},
      {&OvBrokerClient::setEnableLocalTextEcho, &OvSettings::getEnableLocalTextEcho},
      {&OvBrokerClient::setEnableFlashRedirection, &OvSettings::getEnableFlashRedirection},
      {&OvBrokerClient::setEnableMultimediaRedirection, &OvSettings::getEnableMultimediaRedirection},
      {&OvBrokerClient::setEnableBitmapCaching, &OvSettings::getEnableBitmapCaching},
      {&OvBrokerClient::setEnableWallpaper, &OvSettings::getEnableWallpaper},
      {&OvBrokerClient::setEnableAnimation, &OvSettings::getEnableAnimation},
      {&OvBrokerClient::setEnableFullWindowDrag, &OvSettings::getEnableFullWindowDrag},
      {&OvBrokerClient::setEnableThemes, &OvSettings::getEnableThemes},
      {&OvBrokerClient::setEnableDesktopComposition, &OvSettings::getEnableDesktopComposition},
      {&OvBrokerClient::setEnableFontSmoothing, &OvSettings::getEnableFontSmoothing},
  };
  const auto untouched = launch("");
  for (const auto& row : switches)
    EXPECT_EQ(((*untouched).*row.get)(), row.get == &OvSettings::getFullScreen) << &row - switches;
  for (const auto& on : switches) {
    for (const auto& row : switches) (client_.*row.set)(&row == &on);
    const auto record = launch("");
    for (const auto& row : switches) EXPECT_EQ(((*record).*row.get)(), &row == &on) << &row - switches;
  }

  client_.setDesktopWidth(1);
  client_.setDesktopHeight(2);
  client_.setSessionBitsPerPixel(3);
  client_.setAudioRedirectionMode(4);
  client_.setKeyboardHookMode(5);
  client_.setConnectionType(6);
  client_.setSslGateway("gw");
  client_.setProxyServer("ps");
  client_.setProxyBypass("pb");
  client_.setDomain("D");
  client_.setUsername("u");
  client_.setDrivesToRedirect("C");
  client_.setConnectorType("ct");
  client_.setWebSiteName("ws");
  const auto record = launch("");
  const int numbers[] = {record->getDesktopWidth(), record->getDesktopHeight(), record->getSessionBitsPerPixel(),
                         record->getAudioMode(),    record->getKeyboardHook(),  record->getConnectionType()};
  EXPECT_THAT(numbers, testing::ElementsAre(1, 2, 3, 4, 5, 6));
  const std::string texts[] = {
      text(record->getFarmName()),         text(record->getSSLGateway()),    text(record->getProxyServer()),
      text(record->getProxyBypass()),      text(record->getDomain()),        text(record->getUsername()),
      text(record->getDrivesToRedirect()), text(record->getConnectorType()), text(record->getWebSiteName())};
  EXPECT_THAT(texts, testing::ElementsAre("", "gw", "ps", "pb", "D", "u", "C", "ct", "ws"));
}

TEST_F(LaunchExchangeTest, ARefusalMakesNoRecord) {
  broker_.respond("launchapplication", "<errorcode>2</errorcode><errortext>gone</errortext>");
  EXPECT_EQ(errorOf([&] { client_.launchApplication("x"); }), "2 gone");
}

}  // namespace
