#include "Links/OvUrlScheme.h"
#include "Support/OvException.h"

using namespace std::string_literals;

namespace {

struct RecordingHandler : OvUrlSchemeHandler {
  std::string calls;
  void autoDetect(const char* url, const char* guid) override { calls += "autoDetect "s + url + " " + guid; }
  void connectFarm(const char* guid) override { calls += "connectFarm "s + guid; }
  void launchApp(const char* url) override { calls += "launchApp "s + url; }
  void loadConfig(const char* url, const char* guid, bool connect) override {
    calls += "loadConfig "s + url + " " + guid + (connect ? " true" : " false");
  }
};

// What the handler is called with, or the exception.
std::string outcome(const std::string& link) {
  RecordingHandler handler;
  try {
    OvUrlScheme(&handler).parseURL(link);
  } catch (const OvException& exception) {
    return handler.calls + std::to_string(exception.getErrorCode()) + " " + exception.getErrorText();
  }
  return handler.calls;
}

TEST(OvUrlScheme, UnderstandsLinksOrRefusesThemInWords) {
  const std::string url = "=aHR0cDovL3g";  // http://x
  const std::string noUrl = "0 Invalid URL specified.";
  const std::string noCommand = "0 invalid URL";
  const std::string absent = " is absent in query string.";
  const std::pair<std::string, std::string> cases[] = {
      {"orvane://autodetect/?autodetecturl" + url + "&farmguid=X", "autoDetect http://x {X}"},
      {"orvane:///autodetect/?autodetecturl" + url + "&farmguid=X", "autoDetect http://x {X}"},
      {"orvane://autodetect:80/any?farmguid=X&more=1&autodetecturl" + url, "autoDetect http://x {X}"},
      {"ORVANE://AutoDetect/?autodetecturl" + url + "=&farmguid={X}", "autoDetect http://x {X}"},
      {"orvane://autodetect/?autodetecturl" + url + "&farmguid={X", "autoDetect http://x {X"},
      {"orvane://autodetect/?autodetecturl" + url + "&farmguid=X}", "autoDetect http://x X}"},
      {"orvane://autodetect/?autodetecturl" + url + "&farmguid=", "autoDetect http://x "},
      {"orvane://autodetect/?autodetecturl" + url + "&autodetecturl=x&farmguid=%7BX", "autoDetect http://x {%7BX}"},
      {"orvane://autodetect/?autodetecturl=eAB5&farmguid=X", "autoDetect x {X}"},  // "x", a zero byte, "y"
      {"orvane://CONNECTFARM/?farmguid=X", "connectFarm X"},
      {"orvane://launchapp/?ovlurl=aHR0cDovL3g_eT1-fg", "launchApp http://x?y=~~"},
      {"orvane://LoadConfig/?configurl" + url + "&connect=1&farmguid=X", "loadConfig http://x X true"},
      {"orvane://loadconfig/?configurl" + url + "&connect= +01x&farmguid=X", "loadConfig http://x X true"},
      {"orvane://loadconfig/?configurl" + url + "&connect=2&farmguid=X", "loadConfig http://x X false"},
      {"orvane://loadconfig/?configurl" + url + "&connect=4294967297&farmguid=X", "loadConfig http://x X false"},
      {"", noUrl},
      {"http://x/", noUrl},
      {"orvane\0x://connectfarm/?farmguid=X"s, noUrl},
      {"orvane://autodetect:0/?autodetecturl=eA&farmguid=X", noUrl},
      {"orvane://autodetect:70000/?autodetecturl=eA&farmguid=X", noUrl},
      {"orvane://connectfarm/?farmguid=a:b", noUrl},
      {"orvane://autodetect?autodetecturl=eA&farmguid=X", noCommand},
      {"orvane://connectfarms/?farmguid=X", noCommand},
      {"orvane://connectfarm\0/?farmguid=X"s, noCommand},
      {"orvane://AutoDetect/?AutodetectURL=eA&farmguid=X", "0 autodetecturl" + absent},
      {"orvane://autodetect/", "0 autodetecturl" + absent},
      {"orvane://autodetect/?autodetecturl=eA", "0 farmguid" + absent},
      {"orvane://connectfarm/?url=eA", "0 farmguid" + absent},
      {"orvane://launchapp/?url=eA", "0 ovlurl" + absent},
      {"orvane://loadconfig/?x=1", "0 configurl" + absent},
      {"orvane://loadconfig/?configurl=eA", "0 connect" + absent},
      {"orvane://loadconfig/?connect=1&configurl=eA", "0 farmguid" + absent},
  };
  for (const auto& [link, expected] : cases) EXPECT_EQ(outcome(link), expected) << link;
}

}  // namespace
