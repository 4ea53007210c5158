// application_instance COUNT ARGUMENT...: starts like the program, and says what became of it. The first instance says
// what it is asked for, and ends after so many requests.

#include <QCoreApplication>
#include <cstdlib>
#include <iostream>
#include <string>
#include <vector>

#include "Platform/Linux/Desktop/ApplicationService.h"

int main(int count, char** values) {
  using orvane::ApplicationService;
  QCoreApplication application(count, values);
  ApplicationService service;
  const auto arguments = orvane::sortArguments(std::vector<std::string>(values + 2, values + count), "/");
  constexpr const char* kNames[] = {"first", "alone", "forwarded", "unanswered"};
  const ApplicationService::Start start = service.start(arguments, orvane::startupToken());
  std::cout << kNames[static_cast<int>(start)] << std::endl;
  if (start != ApplicationService::Start::kFirst) return 0;
  int requests = 0;
  const auto say = [&](const std::string& what) {
    std::cout << what << std::endl;
    if (++requests == atoi(values[1])) QMetaObject::invokeMethod(qApp, &QCoreApplication::quit, Qt::QueuedConnection);
  };
  service.setHandler({.activate = [&](const std::string& token) { say("activate " + token); },
                      .open =
                          [&](const std::vector<std::string>& addresses, const std::string&) {
                            for (const std::string& address : addresses) say(address);
                          },
                      .action = [&](const std::string& name, const std::string&) { say("action " + name); }});
  return QCoreApplication::exec();
}
