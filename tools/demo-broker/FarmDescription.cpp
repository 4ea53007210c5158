#include "FarmDescription.h"

namespace orvane::demo {

const std::vector<std::string_view> kPolicyElements = {
    "redirectaudio",          "redirectclipboard",        "redirectcomports",          "redirectdrives",
    "redirectprinters",       "redirectsmartcards",       "redirectuniversalprinters", "redirectusbhandhelds",
    "redirectmicrophone",     "enablebitmapacceleration", "enablelocaltextecho",       "enablemultimediaredirection",
    "enableflashredirection", "enablenetworkoptimization"};

const std::vector<std::string_view> kLaunchElements = {"servername",  "serveraddr", "sessionsharing", "console",
                                                       "compression", "protocol",   "seamlessmode",   "dnaproxy",
                                                       "ticket",      "osoundv2"};

const std::vector<std::string_view> kSessionElements = {"domain",
                                                        "uname",
                                                        "client",
                                                        "server",
                                                        "compid",
                                                        "type",
                                                        "product",
                                                        "usage",
                                                        "sessionid",
                                                        "sessionstate",
                                                        "os",
                                                        "sp",
                                                        "clientip",
                                                        "connectortype",
                                                        "connectorversion",
                                                        "devicetype",
                                                        "websitename",
                                                        "initialapp",
                                                        "connectionstatus",
                                                        "connectorlatency",
                                                        "connectorbandwidth"};

std::optional<Fault::Kind> faultKindOf(std::string_view name) {
  using Kind = Fault::Kind;
  static constexpr std::pair<std::string_view, Kind> kNames[] = {
      {"refuse", Kind::kRefuse},        {"cut", Kind::kCut},         {"trickle", Kind::kTrickle},
      {"stall", Kind::kStall},          {"status", Kind::kStatus},   {"empty", Kind::kEmptyBody},
      {"wrong-root", Kind::kWrongRoot}, {"error", Kind::kErrorCode}, {"endless", Kind::kEndlessBody}};
  for (const auto& [known, kind] : kNames) {
    if (name == known) return kind;
  }
  return std::nullopt;
}

}  // namespace orvane::demo
