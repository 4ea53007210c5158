// An odd first byte: the rest is the data of an SRV answer; even: a whole DNS message. What becomes a record must be in
// order and name a host.
#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <span>

#include "Orchestration/OvNetServiceBrowser.h"

namespace {

void require(bool holds) {
  if (!holds) abort();
}

bool isPartOfHostName(unsigned char byte) {
  return (byte >= 'a' && byte <= 'z') || (byte >= 'A' && byte <= 'Z') || (byte >= '0' && byte <= '9') || byte == '-' ||
         byte == '_' || byte == '.';
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  if (size == 0) return 0;
  // A copy of this very size: reading beyond it is seen.
  const std::vector<uint8_t> bytes(data + 1, data + size);
  OvNetServiceBrowser browser;
  if (data[0] % 2 == 1) {
    browser.processRecord(bytes);
    require(browser.sortedNetServiceNames().size() <= 1);
  } else {
    browser.processAnswers(bytes);
    require(browser.sortedNetServiceNames().size() <= std::min(bytes.size() / 16, browser.kMaximumRecords));
  }
  for (const std::string& name : browser.sortedNetServiceNames()) {
    require(!name.empty() && name.size() < 256 && name.back() != '.' && std::ranges::all_of(name, isPartOfHostName));
  }
  return 0;
}
