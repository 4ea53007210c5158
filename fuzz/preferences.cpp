// Any text as the file of the preferences: what is read from it is saved and comes back as it was.

#include <cstdint>
#include <cstdlib>
#include <string>

#include "OrvaneCommon/OrvaneSettings.h"

namespace {

void require(bool holds) {
  if (!holds) abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  OrvaneSettings settings("");
  const std::string defaults = settings.saveToString();
  const bool understood = settings.loadFromString(std::string(reinterpret_cast<const char*>(data), size));
  const std::string text = settings.saveToString();
  require(understood || text == defaults);

  OrvaneSettings reloaded("");
  require(reloaded.loadFromString(text));
  require(reloaded.saveToString() == text);
  return 0;
}
