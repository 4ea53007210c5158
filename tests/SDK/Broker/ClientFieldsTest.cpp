// What a fresh client holds, what ends a log-in and what a fixed policy refuses.

#include <ctime>

#include "SDK/Broker/ScriptedBroker.h"

namespace {

TEST(ClientFields, AFreshClientHasTheseDefaults) {
  const OvBrokerClient client;
  EXPECT_TRUE(client.getRandomize());
  EXPECT_TRUE(client.getFullScreen());
  EXPECT_FALSE(client.getUseSSL());
  EXPECT_FALSE(client.getRedirectClipboard());
  EXPECT_FALSE(client.getRedirectClipboardPolicy());
  EXPECT_FALSE(client.getGetConnectorInfoSupported());
  EXPECT_TRUE(client.getGetConnectorInfoAuthenticationRequired());
  EXPECT_EQ(client.getTcpPort(), 80);
  EXPECT_EQ(client.getClientBitsPerPixel(), 32);
  EXPECT_EQ(client.getSessionBitsPerPixel(), 32);
  EXPECT_EQ(client.getDrivesToRedirect(), "*");
  EXPECT_EQ(client.getLaunchType(), "Native");
  EXPECT_EQ(client.getConnectorVersion(), "1.0.0");
  EXPECT_EQ(client.getConnectorLocale(), "en-us");
  EXPECT_EQ(client.getServer() + client.getUsername() + client.getPassword() + client.getConnectorType(), "");
}

TEST(ClientFields, TheTimeZoneIsInMinutesCutTowardsZero) {
  const char* before = getenv("TZ");
  const std::string saved = before ? before : "";
  const struct {
    const char* zone;  // POSIX zones count west
    int minutes;
  } cases[] = {{"XXX-1", 60}, {"XXX5", -300}, {"XXX3:30", -210}, {"XXX-0:00:59", 0}, {"XXX0:01:59", -1}};
  for (const auto& row : cases) {
    setenv("TZ", row.zone, 1);
    tzset();
    EXPECT_EQ(OvBrokerClient().getDeviceTimeZoneOffset(), row.minutes) << row.zone;
  }
  before ? setenv("TZ", saved.c_str(), 1) : unsetenv("TZ");
  tzset();
}

TEST(ClientFields, AChangeOfWhoOrWhereEndsTheLogInAndNoOtherDoes) {
  ScriptedBroker broker;
  OvBrokerClient client;
  broker.configure(client);
  broker.answer("brokerinfo", "<brokerinfo><capabilities>1</capabilities></brokerinfo>");
  const auto logInAnew = [&] {
    client.getBrokerInfo();
    client.authenticate();
    ASSERT_TRUE(client.getGetConnectorInfoSupported());
  };

  const std::function<void()> ending[] = {
      [&] { client.setServer(client.getServer()); },
      [&] { client.setTcpPort(client.getTcpPort()); },
      [&] { client.setUseSSL(client.getUseSSL()); },
      [&] { client.setClientIPAddress("1.2.3.4"); },
      [&] { client.setClientName("desk"); },
      [&] { client.setDomain("D"); },
      [&] { client.setUsername("u"); },
      [&] { client.setPassword(client.getPassword()); },
      [&] { client.setURL(broker.server().url()); },
  };
  client.setPassword("kept");
  for (const auto& change : ending) {
    logInAnew();
    change();
    EXPECT_FALSE(client.getGetConnectorInfoSupported());
    const size_t messages = broker.messages().size();
    client.authenticate();
    EXPECT_EQ(broker.messages().size(), messages + 1);
  }
  EXPECT_EQ(client.getPassword(), "kept");

  logInAnew();
  client.setRandomize(true);
  client.setFullScreen(false);
  client.setConnectorLocale("de-de");
  client.setRedirectClipboard(true);
  const size_t messages = broker.messages().size();
  client.authenticate();
  EXPECT_EQ(broker.messages().size(), messages);
}

}  // namespace
