// walkthrough --broker ADDRESS ...: a whole conversation with a broker, from the typed address to the session program.
// Exits with 0, with 1 and a reason in words if a step didn't work out, or with 2 for a bad command line.

#include <iostream>

#include "Conversation.h"
#include "DemoRegistry.h"
#include "Explanation.h"
#include "Options.h"
#include "SessionLauncher.h"

using namespace orvane::walkthrough;

int main(int count, char** arguments) {
  orvane::demo::useRegistryOfEnvironment();
  try {
    const Options options = readOptions(count, arguments);
    if (options.help) {
      std::cout << kUsage;
      return 0;
    }
    Conversation conversation(options);
    conversation.findBroker();
    conversation.logIn();
    conversation.showFarm();
    conversation.listApplications();
    SessionLauncher launcher(options.sessionProgram, options.folder);
    launcher.start(*conversation.launch(conversation.firstApplication()));
    if (const OvApplication* second = conversation.secondApplication()) launcher.start(*conversation.launch(*second));
    launcher.endSessions();
    return 0;
  } catch (const UsageError& error) {
    std::cerr << error.what() << "\n\n" << kUsage;
    return 2;
  } catch (const std::exception& error) {
    std::cerr << error.what() << '\n';
    return 1;
  }
}
