// application_instance COUNT ARGUMENT...: starts like the program, and says what became of it. The first instance says
// what it is asked for, and ends after so many requests.

#include <QCoreApplication>
#include <iostream>

#include "RecordedRequests.h"

int main(int count, char** values) {
  QCoreApplication application(count, values);
  orvane::ApplicationService service;
  const auto arguments = orvane::sortArguments(std::vector<std::string>(values + 2, values + count), "/");
  const auto start = service.start(arguments, orvane::startupToken());
  constexpr const char* kNames[] = {"first", "alone", "forwarded", "unanswered"};
  std::cout << kNames[static_cast<int>(start)] << std::endl;
  if (start != orvane::ApplicationService::Start::kFirst) return 0;
  int left = std::stoi(values[1]);
  service.setHandler(recordedBy([&left](const std::string& request) {
    std::cout << request << std::endl;
    if (--left == 0) QMetaObject::invokeMethod(qApp, &QCoreApplication::quit, Qt::QueuedConnection);
  }));
  return QCoreApplication::exec();
}
