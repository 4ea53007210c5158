// walkthrough --address ADDRESS ...: the connector's way on the command line, from the typed address to the session
// program. Exits with 0, with 1 and a reason in words if a step didn't work out, or with 2 for a bad command line.

#include <iostream>

#include "DemoRegistry.h"
#include "Failure.h"
#include "Options.h"
#include "Platform/EndProcess.h"
#include "Support/OvWriteLog.h"
#include "Walk.h"

using namespace orvane::walkthrough;

namespace {

int run(int count, char** arguments) {
  try {
    const Options options = readOptions(count, arguments);
    if (options.help) {
      std::cout << kUsage;
      return 0;
    }
    if (!options.logFile.empty()) {
      OvSetLogLevel(5);
      OvSetLogFile(options.logFile.c_str());
    }
    Walk walk(options);
    walk.findFarm();
    walk.connect();
    walk.showApplications();
    walk.launch();
    walk.endSessions();
    return 0;
  } catch (const UsageError& error) {
    std::cerr << error.what() << "\n\n" << kUsage;
    return 2;
  } catch (const std::exception& error) {
    std::cerr << error.what() << '\n';
    return 1;
  }
}

}  // namespace

int main(int count, char** arguments) {
  orvane::demo::useRegistryOfEnvironment();
  const int status = run(count, arguments);
  std::cout.flush();
  orvane::endProcess(status);
}
