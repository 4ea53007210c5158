#include <curl/curl.h>

#include "Links/OvUrlScheme.h"
#include "Links/OvUrlSchemeHandler.h"
#include "Support/HttpTestServer.h"
#include "Support/OvException.h"
#include "Support/RefusingPort.h"

namespace {

TEST(OvUrlSchemeHandler, ReportsItsDescription) {
  HttpTestServer server([](const auto&) { return HttpTestServer::Answer{.body = "ignored"}; });
  OvUrlSchemeHandler handler;
  handler.autoDetect(server.url("/detect").c_str(), "{X}");
  handler.setBrowserType("B");
  handler.setLaunchType("L");
  handler.setConnectorOSType("O");
  handler.setConnectorVersion("1.0");
  handler.setDeviceName("a<b&c");
  handler.setDeviceIP("::1");
  handler.setDeviceTimeZoneOffset("-60");
  handler.setConfigGuid("\"'>");
  handler.setConfigTimestamp("\xC3\xA4\xFF\n");
  handler.autoDetect(server.url("/detect").c_str(), "{X}");

  const auto requests = server.requests();
  ASSERT_EQ(requests.size(), 2u);
  EXPECT_EQ(requests[0].method + requests[0].target + requests[0].get_header_value("Content-Type"),
            "POST/detecttext/xml");
  EXPECT_EQ(requests[0].body,
            "<connectorinfo><protocolversion>1</protocolversion><browsertype></browsertype><launchtype></launchtype>"
            "<connectorostype></connectorostype><connectorversion></connectorversion><devicename></devicename>"
            "<deviceip></deviceip><devicetimezoneoffset></devicetimezoneoffset><configguid></configguid>"
            "<configtimestamp></configtimestamp></connectorinfo>");
  EXPECT_EQ(requests[1].body,
            "<connectorinfo><protocolversion>1</protocolversion><browsertype>B</browsertype><launchtype>L</launchtype>"
            "<connectorostype>O</connectorostype><connectorversion>1.0</connectorversion>"
            "<devicename>a&lt;b&amp;c</devicename><deviceip>::1</deviceip>"
            "<devicetimezoneoffset>-60</devicetimezoneoffset><configguid>&quot;&apos;&gt;</configguid>"
            "<configtimestamp>\xC3\xA4\xFF\n</configtimestamp></connectorinfo>");
}

TEST(OvUrlSchemeHandler, EveryFailureToReportIs500AndReachesWhoeverGaveTheLink) {
  HttpTestServer server([](const auto&) { return HttpTestServer::Answer{.status = 404}; });
  RefusingPort refusing;
  OvUrlSchemeHandler handler;
  const std::pair<std::function<void()>, std::string> cases[] = {
      {[&] { handler.autoDetect(server.url().c_str(), ""); }, "error response received from HTTP server"},
      {[&] { handler.autoDetect(refusing.url().c_str(), ""); }, curl_easy_strerror(CURLE_COULDNT_CONNECT)},
      {[&] { handler.autoDetect("", ""); }, "Invalid URL specified."},
      {[&] { handler.autoDetect(nullptr, ""); }, "unhandled exception"},
      {[&] { OvUrlScheme(&handler).parseURL("orvane://autodetect/?autodetecturl=ZnRwOi8veC8&farmguid="); },  // ftp://x/
       "The specified URL is invalid"},
  };
  for (const auto& [act, text] : cases) {
    EXPECT_THAT(act, testing::Throws<OvException>(testing::AllOf(testing::Property(&OvException::getErrorCode, 500),
                                                                 testing::Property(&OvException::getErrorText, text))));
  }
}

}  // namespace
