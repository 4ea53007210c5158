#include <cstdlib>
#include <ctime>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "DeviceOfTest.h"
#include "Orchestration/OvBrokerClientController.h"
#include "OrvaneCommon/OvUText.h"
#include "OrvaneCommon/OvUVersions.h"

namespace {

std::string userOf(const OvBrokerClient& client) {
  return client.getDomain() + "|" + client.getUsername() + "|" + client.getPassword();
}

OvLocation locationWith(const std::vector<std::string>& brokers, const std::string& proxy, int protocol = 1) {
  OvLocation location;
  location.setBrokers(brokers);
  location.setPort(4711);
  location.setProtocol(protocol);
  location.setDoUseSsl(protocol != 1);  // which is about sessions, not about the broker
  location.setProxyServer(proxy);
  location.setExclusiveServers("localhost;*.test");
  return location;
}

std::optional<OvError> configure(OvBrokerClient& client, const OvLocation& location) {
  return OvBrokerClientController::configureBrokerClient(client, nullptr, false, &location);
}

TEST(ClientConfigurationTest, TheUsersNameMayBringItsDomain) {
  struct Row {
    const char* username;
    bool anonymously;
    const char* user;  ///< domain|name|password
  };
  for (const Row& row : {Row{"ann", false, "FIELD|ann|secret"}, Row{"CORP\\ann", false, "CORP|ann|secret"},
                         Row{"CORP\\ann\\x\\y", false, "CORP|ann|secret"}, Row{"\\ann", false, "|ann|secret"},
                         Row{"CORP\\", false, "CORP||secret"}, Row{"", false, "OLD|old|before"}, Row{"ann", true, "||"},
                         Row{"", true, "||"}}) {
    SCOPED_TRACE(row.username);
    OvBrokerClient client;
    client.setDomain("OLD");
    client.setUsername("old");
    client.setPassword("before");
    OvCredentials credentials;
    credentials.setUsername(row.username);
    credentials.setPassword("secret");
    credentials.setDomain("FIELD");
    EXPECT_EQ(OvBrokerClientController::configureBrokerClient(client, nullptr, false, nullptr), std::nullopt);
    EXPECT_EQ(userOf(client), "OLD|old|before");
    OvBrokerClientController::configureBrokerClient(client, &credentials, row.anonymously, nullptr);
    EXPECT_EQ(userOf(client), row.user);
  }
}

TEST(ClientConfigurationTest, ALocationReplacesWhatItSpeaksOf) {
  OvBrokerClient client;
  EXPECT_EQ(configure(client, locationWith({"one", "two"}, "proxy:3128")), std::nullopt);
  EXPECT_EQ(client.getServer(), "one,two");
  EXPECT_EQ(client.getTcpPort(), 4711);
  EXPECT_TRUE(client.getUseSSL() && client.getUseProxy());
  EXPECT_EQ(client.getProxyServer() + " " + client.getProxyBypass(), "proxy:3128 localhost;*.test");

  const auto error = configure(client, locationWith({}, "", 0));
  ASSERT_TRUE(error);
  EXPECT_EQ(error->code, 12);
  EXPECT_FALSE(error->description.empty());
  EXPECT_TRUE(client.getUseSSL() && client.getUseProxy());

  EXPECT_EQ(configure(client, locationWith({"three"}, "", 0)), std::nullopt);
  EXPECT_FALSE(client.getUseSSL() || client.getUseProxy());
  EXPECT_EQ(client.getProxyServer(), "proxy:3128");
}

TEST(ClientConfigurationTest, TheConnectorSaysWhatItIs) {
  OvBrokerClient client;
  OvBrokerClientController::configureBrokerClient(client, nullptr, false, nullptr);
  EXPECT_THAT((std::vector{client.getConnectorType(), client.getLaunchType(), client.getConnectorOSType(),
                           client.getConnectorVersion(), client.getClientName(), client.getClientIPAddress(),
                           client.getConnectorLocale()}),
              testing::ElementsAre("Mac", "Native", "Mac", OvU_GetConnectorVesrion(), deviceName(),
                                   testing::MatchesRegex(kAddress), OvU_GetPreferedWindowsLocale()));
}

TEST(ClientConfigurationTest, TheTimeZoneIsInWholeMinutesEastOfGmt) {
  for (const auto& [zone, minutes] : {std::pair("UTC0", "0"), std::pair("AAA-1", "60"), std::pair("BBB5", "-300"),
                                      std::pair("CCC3:30", "-210"), std::pair("DDD0:00:59", "0")}) {
    setenv("TZ", zone, 1);
    tzset();
    EXPECT_EQ(OvBrokerClientController::makeConnectorInfo().getDeviceTimeZoneOffset(), minutes) << zone;
  }
}

}  // namespace
