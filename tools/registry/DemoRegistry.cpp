#include "DemoRegistry.h"

#include <cstdlib>
#include <string>

#include "Sessions/OvSessionManager.h"

namespace orvane::demo {

void useRegistryOfEnvironment() {
  const char* name = getenv("ORVANE_DEMO_REGISTRY");
  if (!name || !*name) return;
  const std::string text = name;
  OvSessionManager::useRegistry({.semaphore = "/" + text + ".mutex",
                                 .sharedMemory = "/" + text + ".shared",
                                 .socketPrefix = "/tmp/" + text + ".socket"});
}

}  // namespace orvane::demo
