// A farm store that somebody else wrote: it gives a list of farms or leaves the list as it is, and what it gives comes
// back the same from a store of our own.

#include <cstdint>
#include <cstdlib>

#include "Model/OvFarmManager.h"

namespace {

OvFarmManager emptyManager() { return OvFarmManager("/nonexistent/settings", nullptr, nullptr, nullptr); }

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  OvFarmManager manager = emptyManager();
  if (!manager.loadFromData({data, size})) {
    if (!manager.farms().empty()) abort();
    return 0;
  }
  OvFarmManager copy = emptyManager();
  if (!copy.loadFromData(manager.saveToData())) abort();
  if (copy.farms().size() != manager.farms().size()) abort();
  for (size_t index = 0; index < copy.farms().size(); ++index) {
    OvFarm expected(*manager.farms()[index]);
    for (const auto& location : expected.locations()) {
      if (!location->doUseSsl()) location->setSslGateway("");
    }
    if (!expected.credentials().needToSave()) {
      expected.credentials().setUsername("");
      expected.credentials().setDomain("");
    }
    OvDisplay& display = expected.display();
    if (display.customWidth() == 0) display.setCustomWidth(display.width());
    if (display.customHeight() == 0) display.setCustomHeight(display.height());
    if (!(*copy.farms()[index] == expected)) abort();
  }
  return 0;
}
