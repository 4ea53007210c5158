#include "SDK/Broker/ScriptedBroker.h"
#include "Support/TrimWhitespaces.h"

using testing::ElementsAre;

namespace {

std::string joined(const std::list<std::string>& urls) {
  std::string text;
  for (const std::string& url : urls) text += (text.empty() ? "" : " ") + url;
  return text;
}

TEST(EndpointNormalisation, AddressesBecomeCandidates) {
  const struct {
    const char* address;
    const char* candidates;
  } cases[] = {
      {"broker.example", "https://broker.example:443 http://broker.example:8080"},
      {"broker.example/web", "https://broker.example:443/web http://broker.example:80/web"},
      {"broker.example:9000", "https://broker.example:9000 http://broker.example:9000"},
      {"broker.example:9000/web", "https://broker.example:9000/web http://broker.example:9000/web"},
      {"broker.example:", "https://broker.example:443 http://broker.example:8080"},
      {" \t broker.example/ \r\n", "https://broker.example:443 http://broker.example:8080"},
      {"broker.example/web?x=1", "https://broker.example:443/web http://broker.example:80/web"},
      {"http://broker.example", "http://broker.example:8080"},
      {"http://broker.example/", "http://broker.example:8080"},
      {"http://broker.example/a", "http://broker.example:80/a"},
      {"http://broker.example:81/a//", "http://broker.example:81/a"},
      {"HTTPS://broker.example/a/", "HTTPS://broker.example:443/a"},
      {"  https://broker.example", "https://broker.example:443"},
      {"10.0.0.1", "https://10.0.0.1:443 http://10.0.0.1:8080"},
  };
  const OvBrokerClient client;
  for (const auto& row : cases) EXPECT_EQ(joined(client.normalizeBrokerEndpointUrl(row.address)), row.candidates);
}

TEST(EndpointNormalisation, WhatIsNoAddressIsRefusedInWords) {
  const std::string invalid = "0 Invalid URL specified.";
  const struct {
    const char* address;
    std::string error;
  } cases[] = {
      {"", invalid},
      {"   ", invalid},
      {"http://", invalid},
      {"httpd1", invalid},   // taken for a URL
      {"ftp://x", invalid},  // its colon is taken for a port's
      {"broker.example:99999", invalid},
      {"httpx://broker.example", "none"},
  };
  OvBrokerClient client;
  for (const auto& row : cases)
    EXPECT_EQ(errorOf([&] { client.normalizeBrokerEndpointUrl(row.address); }), row.error) << row.address;
}

TEST(EndpointNormalisation, TrimmingTakesWhiteSpaceAtBothEndsOnly) {
  EXPECT_EQ(trim_whitespaces("\t a b \r\n"), "a b");
  EXPECT_EQ(trim_whitespaces(" \t"), " \t");
  EXPECT_EQ(trim_whitespaces("\va"), "\va");
  EXPECT_EQ(trim_whitespaces(""), "");
}

}  // namespace
