#include <cstdlib>
#include <ctime>

#include "DeviceOfTest.h"
#include "FlowFixture.h"
#include "Links/OvUrlScheme.h"
#include "Orchestration/OvUrlSchemeHandlerImpl.h"
#include "OrvaneCommon/OvUVersions.h"
#include "Support/OvWriteLog.h"

namespace {

struct RecordingDelegate : OvUrlSchemeHandlerDelegate {
  void urlSchemeHandlerDidReceiveAutodetectURL(const std::string& url, const std::string& farmGUID) override {
    links.emplace_back(url, farmGUID);
  }
  std::vector<std::pair<std::string, std::string>> links;
};

TEST(OvUrlSchemeHandlerImplTest, KnowsThisClientAndPassesOnlyAutodetectLinksOn) {
  const FlowFixture fixture;
  fixture.mainQueue->pump();  // what the controller's start has posted
  OvSetLogFile(fixture.home.file("log").c_str());
  OvSetLogLevel(4);
  setenv("TZ", "CCC3:30", 1);
  tzset();
  RecordingDelegate delegate;
  OvUrlSchemeHandlerImpl handler(*fixture.manager, delegate);
  EXPECT_THAT((std::vector{handler.getLaunchType(), handler.getConnectorOSType(), handler.getConnectorVersion(),
                           handler.getDeviceName(), handler.getDeviceIP(), handler.getDeviceTimeZoneOffset()}),
              testing::ElementsAre("Native", "Mac", OvU_GetConnectorVesrion(), deviceName(),
                                   testing::MatchesRegex(kAddress), "-210"));
  OvUrlScheme scheme(&handler);
  for (const char* link :
       {"orvane://loadconfig/?configurl=aHR0cDovL3g&connect=1&farmguid=G", "orvane://connectfarm/?farmguid=G",
        "orvane://launchapp/?ovlurl=aHR0cDovL3g", "orvane://autodetect/?autodetecturl=aHR0cDovL3g&farmguid=G"}) {
    scheme.parseURL(link);
  }
  EXPECT_THAT(delegate.links, testing::ElementsAre(testing::Pair("http://x", "{G}")));
  EXPECT_THAT(contentOf(fixture.home.file("log")),
              testing::HasSubstr(": autoDetect: Orvane autoDetect: autoDetectURL = http://x farmGUID = {G}\n"));
}

}  // namespace
