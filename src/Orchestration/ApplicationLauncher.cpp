#include "Orchestration/ApplicationLauncher.h"

#include <filesystem>
#include <utility>

#include <sys/stat.h>
#include <unistd.h>

#include "Orchestration/BrokerControllerError.h"
#include "Orchestration/FlowTexts.h"
#include "Orchestration/OutsideLaunchFile.h"
#include "Support/OvException.h"
#include "Support/OvWriteLog.h"

namespace {

constexpr int kLocalContent = 4;  // a broker's application type

// The codes of seamless windows.
constexpr int kNotSeamless = 0;
constexpr int kSeamlessOfOtherClients = 1;
constexpr int kSeamless = 2;

int evenPart(int pixels) { return pixels % 2 == 0 ? pixels : pixels - 1; }

bool isProgram(const std::string& path) {
  struct stat status {};
  return stat(path.c_str(), &status) == 0 && S_ISREG(status.st_mode) && access(path.c_str(), X_OK) == 0;
}

void setError(OvError* error, const std::string& description) {
  OvU_ConfigureError(error, static_cast<int>(BrokerControllerError::kLaunchFileUnreadable), description);
}

}  // namespace

ApplicationLauncher::ApplicationLauncher(Environment environment) : environment_(std::move(environment)) {}

void ApplicationLauncher::applyOrvaneSettings(OvSettings& settings) const {
  const OrvaneSettings& preferences = environment_.preferences;
  if (preferences.forceDisableSeamless()) settings.setSeamless(kNotSeamless);
  if (settings.getSeamless() == kSeamlessOfOtherClients) settings.setSeamless(kSeamless);
  if (settings.getRedirectUniversalPrinters()) {
    settings.setRedirectPrinters(true);
    settings.setRedirectUniversalPrinters(false);
  }
  if (settings.getFullScreen() && preferences.fullscreenInMaximizedWindow()) {
    const orvane::Screens::Size size = environment_.screens->largestWindowContent();
    settings.setFullScreen(false);
    settings.setDesktopWidth(size.width);
    settings.setDesktopHeight(size.height);
  }
  settings.setDesktopWidth(evenPart(settings.getDesktopWidth()));
  settings.setDesktopHeight(evenPart(settings.getDesktopHeight()));
}

bool ApplicationLauncher::launchApplicationWithSettings(const OvSettings& settings, const std::string& ovlFile,
                                                        OvError* error, bool* isFileInUse) const {
  if (isFileInUse != nullptr) *isFileInUse = false;
  if (settings.getAppType() == kLocalContent) {
    const char* const content = settings.getProgramFullPath();
    const bool isOpened = environment_.contentOpener->MCOpenAppContent(content == nullptr ? "" : content);
    OvWriteLog(4, "%s: Open local content: %s", __func__, isOpened ? "YES" : "NO");
    return true;
  }
  if (settings.getSessionSharing()) {
    if (startSharedSession(settings)) return true;
    OvWriteLog(4, "%s: Unable to share session, start a new one", __func__);
  }
  // Before the file is written: it may be the user's own, and else nobody would ever read it.
  const std::string program = environment_.sessionProgram();
  if (!isProgram(program)) {
    OvWriteLog(2, "%s: OrvaneConnection.app was not found.", __func__);
    configureError(error, BrokerControllerError::kSessionProgramNotFound);
    return false;
  }
  if (ovlFile.empty() || !settings.saveOvlFile(ovlFile.c_str())) {
    OvWriteLog(2, "%s: Failed to write ovl-file", __func__);
    setError(error, orvane::localizedText(orvane::kLaunchFileNotWritten));
    return false;
  }
  const bool isStarted = startTaskWithArgs({"--ovl", ovlFile}, program);
  OvWriteLog(4, "%s: %s", __func__, isStarted ? "YES" : "NO");
  if (isFileInUse != nullptr) *isFileInUse = isStarted;
  return true;
}

bool ApplicationLauncher::startTaskWithArgs(const std::vector<std::string>& arguments,
                                            const std::string& executable) const {
  return environment_.processStarter->start(executable, arguments,
                                            std::filesystem::path(executable).parent_path().string());
}

bool ApplicationLauncher::launchAppWithOvlFile(const std::string& path, OvError* error) const {
  if (chmod(path.c_str(), S_IRWXU) != 0) OvWriteLog(2, "%s: Failed to set permissions for ovl-file", __func__);
  try {
    OvSettings settings;
    if (const auto failure = orvane::loadOutsideLaunchFile(path, settings)) {
      OvU_ConfigureError(error, failure->code, failure->description);
      return false;
    }
    applyOrvaneSettings(settings);
    return launchApplicationWithSettings(settings, path, error);
  } catch (const OvException& exception) {
    setError(error, exception.getErrorText());
    return false;
  }
}
