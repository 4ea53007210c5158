#pragma once

#include <memory>

#include "Model/RecordFields.h"

#define ORVANE_LOCATION_FIELDS(ROW)                                                                               \
  ROW(std::string, name, Name, defaultName(), "name", archived())                                                 \
  ROW(std::string, proxyServer, ProxyServer, {}, "proxyServer", archived())                                       \
  ROW(std::string, exclusiveServers, ExclusiveServers, {}, "exclusiveServers",                                    \
      archived()) /* the proxy's bypass list, ";" between its entries */                                          \
  ROW(std::string, sslGateway, SslGateway, {}, "sslGateway", archived(&Record::doUseSsl_))                        \
  ROW(int32_t, port, Port, 8080, "port", asDecimalString())                                                       \
  ROW(int32_t, protocol, Protocol, 0, "protocol", asDecimalString()) /* 0 HTTP, 1 HTTPS */                        \
  ROW(bool, doUseNatSupport, DoUseNatSupport, false, "doUseNatSupport", archived())                               \
  ROW(bool, doUseSsl, DoUseSsl, false, "doUseSsl", archived())                                                    \
  ROW(bool, doAskBeforeUsing, DoAskBeforeUsing, false, "doAskBeforeUsing", archived())                            \
  ROW(int32_t, proxyServerMode, ProxyServerMode, 0, "proxyServerMode", archived()) /* kept, and read by nobody */ \
  ROW(std::vector<std::string>, brokers, Brokers, {}, "brokers", archived())       /* a host or address each */

/// One way of reaching a farm, typically one site or network. It has no identity beyond its value; no lock.
class OvLocation {
  ORVANE_RECORD(Location, ORVANE_LOCATION_FIELDS)

 public:
  OvLocation() = default;
  /// A new location.
  static std::shared_ptr<OvLocation> location() { return std::make_shared<OvLocation>(); }

  /// Takes all fields of `other`; does nothing if it is null.
  void setEqualToLocation(const OvLocation* other);

 private:
  static std::string defaultName();
};

#undef ORVANE_LOCATION_FIELDS
