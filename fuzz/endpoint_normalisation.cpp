// Addresses as users type them.

#include <cstdint>
#include <cstdlib>
#include <string>

#include "Broker/OvBrokerClient.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  static const OvBrokerClient client;
  OvBrokerClient candidate;
  try {
    const std::list<std::string> urls = client.normalizeBrokerEndpointUrl({reinterpret_cast<const char*>(data), size});
    if (urls.empty() || urls.size() > 2) abort();
    for (const std::string& url : urls) candidate.setURL(url);
  } catch (const OvException&) {
    // refused in words
  }
  return 0;
}
