// demo-session --ovl PATH: reads a launch file as a session program would, says what it would do, and holds the session
// for others to share.

#include <algorithm>
#include <cstring>
#include <iostream>

#include "DemoRegistry.h"
#include "Files/OvSettings.h"
#include "RecordPrinter.h"
#include "SessionHolder.h"

namespace {

// Anything at all reads as a launch file; one that is none leads nowhere.
bool leadsSomewhere(const OvSettings& record) {
  const char* const targets[] = {record.getServerName(), record.getServerAddr(), record.getComputer(),
                                 record.getBrokerServers()};
  return std::ranges::any_of(targets, [](const char* target) { return target && *target; });
}

}  // namespace

int main(int count, char** arguments) {
  if (count != 3 || strcmp(arguments[1], "--ovl") != 0) {
    std::cerr << "Usage: demo-session --ovl PATH\n";
    return 2;
  }
  orvane::demo::SessionHolder holder;
  orvane::demo::useRegistryOfEnvironment();
  OvSettings record;
  if (!record.loadOvlFile(arguments[2])) {
    std::cerr << "demo-session: " << arguments[2] << " can't be read as a launch file.\n";
    return 1;
  }
  if (!leadsSomewhere(record)) {
    std::cerr << "demo-session: " << arguments[2] << " names no server to connect to.\n";
    return 1;
  }
  orvane::demo::printRecord(record, std::cout);
  std::cout << std::flush;
  holder.hold(record);
  return 0;
}
