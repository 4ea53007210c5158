#include "Links/OvUrlScheme.h"

#include <algorithm>
#include <cstdlib>
#include <string_view>

#include "Links/DecodeBase64.h"
#include "Support/OvException.h"
#include "Support/OvUrlParser.h"

namespace {

// The query of a link, for a command that can't do without the keys it asks for.
class Query {
 public:
  explicit Query(const OvUrlParser& link) : link_(link) {}

  const std::string& text(const std::string& key) const {
    const auto found = link_.parameters().find(key);
    if (found == link_.parameters().end()) throw OvException(0, key + " is absent in query string.");
    return found->second;
  }
  std::string url(const std::string& key) const { return DecodeBase64(text(key)); }

 private:
  const OvUrlParser& link_;
};

std::string inBraces(const std::string& guid) {
  const bool isPlain = !guid.empty() && !guid.starts_with('{') && !guid.ends_with('}');
  return isPlain ? "{" + guid + "}" : guid;
}

// Each asks for its keys in the order in which their absence is to be reported.
constexpr struct {
  std::string_view name;
  void (*call)(OvUrlSchemeHandler&, const Query&);
} kCommands[] = {
    {"autodetect",
     [](OvUrlSchemeHandler& handler, const Query& query) {
       const std::string url = query.url("autodetecturl");
       const std::string farmGuid = inBraces(query.text("farmguid"));
       handler.autoDetect(url.c_str(), farmGuid.c_str());
     }},
    {"connectfarm",
     [](OvUrlSchemeHandler& handler, const Query& query) { handler.connectFarm(query.text("farmguid").c_str()); }},
    {"launchapp",
     [](OvUrlSchemeHandler& handler, const Query& query) { handler.launchApp(query.url("ovlurl").c_str()); }},
    {"loadconfig",
     [](OvUrlSchemeHandler& handler, const Query& query) {
       const std::string url = query.url("configurl");
       const bool connect = strtol(query.text("connect").c_str(), nullptr, 10) == 1;
       handler.loadConfig(url.c_str(), query.text("farmguid").c_str(), connect);
     }},
};

// Of ASCII alone: by the user's locale a Turkish "LOADCONFIG" would be no "loadconfig".
bool equalsIgnoringCase(std::string_view left, std::string_view right) {
  const auto lower = [](char letter) { return letter >= 'A' && letter <= 'Z' ? letter - 'A' + 'a' : letter; };
  return std::ranges::equal(left, right, {}, lower, lower);
}

}  // namespace

void OvUrlScheme::parseURL(const std::string& text) {
  OvUrlParser link;
  link.parse(text);
  if (!equalsIgnoringCase(link.scheme(), "orvane")) throw OvException(0, "Invalid URL specified.");

  for (const auto& command : kCommands) {
    if (equalsIgnoringCase(link.host(), command.name)) return command.call(*handler_, Query(link));
  }
  throw OvException(0, "invalid URL");
}
