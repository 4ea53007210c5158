// walkthrough --broker ADDRESS ...: a whole conversation with a broker, from the typed address to the session program.
// Exits with 0, with 1 and a reason in words if a step didn't work out, or with 2 for a bad command line.

#include <iostream>

#include "Conversation.h"
#include "Explanation.h"
#include "Options.h"
#include "SessionProgram.h"

using namespace orvane::walkthrough;

int main(int count, char** arguments) {
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
    const std::string launchFile = conversation.launch();
    std::cout << std::flush;
    const int status = runSessionProgram(options.sessionProgram, launchFile);
    if (status != 0) throw Failure("The session program ended with status " + std::to_string(status) + ".");
    return 0;
  } catch (const UsageError& error) {
    std::cerr << error.what() << "\n\n" << kUsage;
    return 2;
  } catch (const std::exception& error) {
    std::cerr << error.what() << '\n';
    return 1;
  }
}
