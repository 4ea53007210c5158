#include <QApplication>
#include <QIcon>
#include <cstdlib>
#include <filesystem>
#include <iostream>
#include <string>
#include <vector>

#include "DemoRegistry.h"
#include "OrvaneCommon/LocalizedText.h"
#include "OrvaneCommon/OvUVersions.h"
#include "Platform/EndProcess.h"
#include "Platform/Linux/Desktop/ApplicationArguments.h"
#include "Platform/Linux/Desktop/ApplicationIdentity.h"
#include "Platform/Linux/Desktop/ApplicationService.h"
#include "Program.h"

namespace {

constexpr int kUsageError = 2;

std::string executablePath() {
  std::error_code error;  // leaves an empty path
  return std::filesystem::read_symlink("/proc/self/exe", error).string();
}

// Runs the program until it is quit. @return the exit status.
int run(QApplication& application, const orvane::ApplicationArguments& arguments, const std::string& token) {
  orvane::ApplicationService service;
  using Start = orvane::ApplicationService::Start;
  const Start start = service.start(arguments, token);
  if (start == Start::kForwarded) return EXIT_SUCCESS;
  if (start == Start::kUnanswered) {
    std::cerr << "orvane: another instance runs, and does not answer.\n";
    return EXIT_FAILURE;
  }

  orvane::Program program({.executable = executablePath(),
                           .addressToConnect = arguments.addressToConnect,
                           .measuresMainLoop = getenv("ORVANE_WATCHDOG") != nullptr});
  program.willFinishLaunching();
  service.setHandler(
      {.activate = [&](const std::string& from) { program.reopen(from); },
       .open =
           [&](const std::vector<std::string>& addresses, const std::string& from) {
             for (const std::string& address : addresses) program.openAddress(address, from);
           },
       .action = [&](const std::string& name, const std::string& from) { program.perform(name, from); }});
  program.didFinishLaunching();
  const int status = QApplication::exec();
  service.stop();
  program.terminate();
  std::cerr.flush();
  static_cast<void>(application);
  orvane::endProcess(status);
}

}  // namespace

int main(int count, char** values) {
  const std::vector<std::string> words(values + 1, values + count);
  std::error_code error;  // leaves an empty path, by which no relative file is found
  const orvane::ApplicationArguments arguments =
      orvane::sortArguments(words, std::filesystem::current_path(error).string());
  if (arguments.wantsHelp) {
    std::cout << orvane::argumentsHelp();
    return EXIT_SUCCESS;
  }
  if (arguments.wantsVersion) {
    std::cout << OvU_GetVersionAndBuildEnglishString() << '\n';
    return EXIT_SUCCESS;
  }
  if (!arguments.error.empty()) {
    std::cerr << "orvane: " << arguments.error << '\n';
    return kUsageError;
  }

  orvane::demo::useRegistryOfEnvironment();
  const std::string token = orvane::startupToken();
  QApplication::setApplicationName(QStringLiteral("orvane"));
  QApplication::setApplicationDisplayName(QString::fromStdString(orvane::localizedText("ProductName.Orvane")));
  QApplication::setApplicationVersion(QString::fromStdString(orvane::releaseVersion()));
  QApplication::setDesktopFileName(QLatin1String(orvane::kApplicationId));
  QApplication application(count, values);
  QApplication::setQuitOnLastWindowClosed(false);
  QApplication::setWindowIcon(QIcon::fromTheme(
      QLatin1String(orvane::kApplicationId),
      QIcon(QStringLiteral(":/hicolor/scalable/apps/%1.svg").arg(QLatin1String(orvane::kApplicationId)))));
  return run(application, arguments, token);
}
