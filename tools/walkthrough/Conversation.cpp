#include "Conversation.h"

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <iostream>
#include <map>
#include <vector>

#include "CertificateCheck.h"
#include "Explanation.h"
#include "PrintableText.h"
#include "Support/FileReplacement.h"
#include "Support/OvWriteLog.h"
#include "Support/SecureMemory.h"

namespace orvane::walkthrough {

namespace {

const std::string& displayName(const OvApplication& application) {
  return application.getShortcut().empty() ? application.getName() : application.getShortcut();
}

void logOn(OvBrokerClient& client, const Options& options) {
  const size_t backslash = options.user.find('\\');
  const bool withDomain = backslash != std::string::npos;
  client.setDomain(withDomain ? options.user.substr(0, backslash) : "");
  client.setUsername(withDomain ? options.user.substr(backslash + 1) : options.user);
  std::string password = readPassword(options);
  const WipeAtEnd wipe(password);
  client.setPassword(password);
}

}  // namespace

Conversation::Conversation(const Options& options) : options_(options) {
  if (!options.logFile.empty()) {
    OvSetLogLevel(5);
    client_.setLogFile(options.logFile);
  }
  client_.setConnectorLocale(options.locale);
  client_.setConnectorType("Walkthrough");
  client_.setConnectorOSType("Linux");
  client_.setClientName("walkthrough");
  client_.setFullScreen(false);
  client_.setDesktopWidth(1280);
  client_.setDesktopHeight(800);
  client_.setRedirectClipboard(true);
  logOn(client_, options);
}

void Conversation::findBroker() {
  std::list<std::string> candidates;
  try {
    candidates = client_.normalizeBrokerEndpointUrl(options_.broker);
  } catch (const OvException& exception) {
    throw Failure(explained("Reading the address \"" + printable(options_.broker) + "\"", exception));
  }

  std::string problems;
  for (const std::string& url : candidates) {
    std::cout << "Asking " << printable(url) << " ...\n";
    const std::string problem = askForBroker(url);
    if (problem.empty()) {
      std::cout << "The broker answers at " << printable(url) << ".\n";
      return;
    }
    problems += "\n  " + printable(url) + ": " + printable(problem);
  }
  throw Failure("No broker was found at \"" + printable(options_.broker) + "\":" + problems);
}

std::string Conversation::askForBroker(const std::string& url) {
  try {
    client_.setURL(url);
  } catch (const OvException&) {
    return "this is no http or https URL with a host and a port";
  }
  if (!options_.certificate.empty()) {
    if (!client_.getUseSSL()) return "left out, since only https can show the certificate that was asked for";
    const std::string problem = certificateProblem(url, options_.certificate);
    if (!problem.empty()) return problem;
  }
  try {
    client_.getBrokerInfo();
    return {};
  } catch (const OvException& exception) {
    const std::string reason = transportProblem(client_);
    return reason.empty() ? "it answers, but not as a broker does" : reason;
  }
}

void Conversation::logIn() {
  try {
    client_.authenticate();
  } catch (const OvException& exception) {
    throw Failure(explained("The log-in", exception));
  }
  std::cout << "Logged in as " << (options_.user.empty() ? "anonymous" : printable(options_.user)) << ".\n";
}

void Conversation::showFarm() {
  try {
    client_.getFarmProperties();
    std::cout << "The farm is \"" << printable(client_.getFarmName()) << "\".\n";
    if (!client_.getGetConnectorInfoSupported()) return;
    OvConnectorInfo info;
    info.setLaunchType(client_.getLaunchType());
    info.setConnectorOSType(client_.getConnectorOSType());
    info.setConnectorVersion(client_.getConnectorVersion());
    info.setDeviceName(client_.getClientName());
    info.setDeviceTimeZoneOffset(std::to_string(client_.getDeviceTimeZoneOffset()));
    const auto result = client_.getConnectorInfo(info);
    if (result->getConfigStatus() == CONFIG_STATUS_REQUIRED)
      std::cout << "It has a configuration for us at " << printable(result->getConfigFullPath()) << ".\n";
    if (result->getConnectorStatus() == CONNECTOR_STATUS_UPDATE_AVAILABLE)
      std::cout << "It has version " << printable(result->getConnectorMinVersion()) << " of the connector at "
                << printable(result->getConnectorInstallFullPath()) << ".\n";
  } catch (const OvException& exception) {
    throw Failure(explained("Asking about the farm", exception));
  }
}

void Conversation::listApplications() {
  try {
    applications_ = client_.getApplicationList();
  } catch (const OvException& exception) {
    throw Failure(explained("Listing the applications", exception));
  }
  std::map<std::string, std::vector<const OvApplication*>> folders;
  for (const auto& application : applications_) folders[application->getFolderName()].push_back(application.get());

  std::cout << applications_.size() << " applications are published:\n";
  for (const auto& [folder, applications] : folders) {
    std::cout << "  " << (folder.empty() ? "(no folder)" : printable(folder)) << '\n';
    for (const OvApplication* application : applications)
      std::cout << "    " << printable(displayName(*application)) << '\n';
  }
  writeIcons();
}

void Conversation::writeIcons() const {
  const std::filesystem::path folder = std::filesystem::path(options_.folder) / "icons";
  std::error_code error;
  std::filesystem::create_directories(folder, error);
  if (error) throw Failure("The folder " + folder.string() + " can't be made: " + error.message() + ".");
  int written = 0;
  int number = 0;
  for (const auto& application : applications_) {
    // Numbered, not named: a name from a broker is no file name.
    const std::filesystem::path file = folder / (std::to_string(++number) + ".png");
    unsigned char* bytes = nullptr;
    unsigned int size = 0;
    try {
      OvBrokerClient::saveIconToPNGBuffer(application->getLargeIcon(), &bytes, &size);
    } catch (const OvException&) {
      std::cout << "  The icon of \"" << printable(displayName(*application)) << "\" is none.\n";
      continue;
    }
    const std::unique_ptr<unsigned char, decltype(&free)> owner(bytes, &free);
    if (!replaceFile(file.string(), bytes, size))
      throw Failure("The icon " + file.string() + " can't be written: " + strerror(errno) + ".");
    ++written;
  }
  std::cout << written << " icons are in " << folder.string() << ".\n";
}

const OvApplication& Conversation::applicationNamed(const std::string& name) const {
  const auto found = std::ranges::find_if(applications_, [&](const auto& application) {
    return application->getName() == name || displayName(*application) == name;
  });
  if (found == applications_.end()) throw Failure("\"" + printable(name) + "\" is not published to this user.");
  return **found;
}

const OvApplication& Conversation::firstApplication() const {
  if (!options_.application.empty()) return applicationNamed(options_.application);
  if (applications_.empty()) throw Failure("There is nothing to launch.");
  return *applications_.front();
}

const OvApplication* Conversation::secondApplication() const {
  if (!options_.second.empty()) return &applicationNamed(options_.second);
  return applications_.size() < 2 ? nullptr : std::next(applications_.begin())->get();
}

std::unique_ptr<OvSettings> Conversation::launch(const OvApplication& application) {
  std::cout << "Launching \"" << printable(displayName(application)) << "\" ...\n";
  try {
    return client_.launchApplication(application.getName());
  } catch (const OvException& exception) {
    throw Failure(explained("The launch", exception));
  }
}

}  // namespace orvane::walkthrough
