#include "Walk.h"

#include <algorithm>
#include <filesystem>
#include <iostream>
#include <span>

#include "CertificateCheck.h"
#include "Failure.h"
#include "Orchestration/ApplicationLauncher.h"
#include "Orchestration/FarmConfigurationResult.h"
#include "Orchestration/OvNetServiceBrowser.h"
#include "Platform/ThreadQueues.h"
#include "Platform/ThreadTimer.h"
#include "PrintableText.h"
#include "ShownOpener.h"
#include "Support/FileReplacement.h"
#include "Support/PngWriter.h"

namespace orvane::walkthrough {

namespace {

// A terminal has no screen to fill.
class NoScreens : public Screens {
 public:
  Size largestWindowContent() const override { return {}; }
  Size visibleArea() const override { return {}; }
};

// The user's own passwords are the application's: its item would be taken for this walk's, and written over.
class NoSecrets : public SecretStore {
 public:
  Item load(const std::string&, const std::string&) override { return {.reading = Reading::kAbsent}; }
  bool save(const std::string&, const std::string&, std::span<const uint8_t>) override { return false; }
};

void writeIcons(const std::vector<std::shared_ptr<const IconImage>>& icons, const std::string& folder) {
  std::error_code error;
  std::filesystem::create_directories(folder, error);
  if (error) throw Failure("The folder " + folder + " can't be made: " + error.message() + ".");
  for (size_t number = 0; number < icons.size(); ++number) {
    // Numbered, not named: a name from a broker is no file name.
    const std::string file = folder + "/" + std::to_string(number + 1) + ".png";
    const auto png = pngFileOf(*icons[number]);
    if (!png || !replaceFile(file, png->data(), png->size())) throw Failure("The icon " + file + " can't be written.");
  }
  std::cout << icons.size() << " icons are in " << folder << ".\n";
}

std::shared_ptr<OvBrokerClientController> makeController(const Options& options, std::shared_ptr<MainLoop> mainLoop,
                                                         std::shared_ptr<ShownSessions> sessions,
                                                         std::shared_ptr<ShownOpener> opener) {
  const std::shared_ptr<GlobalQueue> globalQueue = makeGlobalQueue();
  const auto launcher = std::make_shared<ApplicationLauncher>(ApplicationLauncher::Environment{
      .preferences = OrvaneSettings::instance(),
      .processStarter = std::move(sessions),
      .contentOpener = std::make_shared<ContentOpener>(std::move(opener), globalQueue, makeTimer()),
      .screens = std::make_shared<NoScreens>(),
      .sessionProgram = [&options] { return options.sessionProgram; },
      .launchFolder = [&options] { return options.folder; }});
  const auto farmManager = std::make_shared<OvFarmManager>(
      options.folder + "/farms.plist", std::make_shared<MCCachedKeychain>(std::make_shared<NoSecrets>()),
      makeSerialQueue(), mainLoop);
  return std::make_shared<OvBrokerClientController>(OvBrokerClientController::Environment{
      .farmManager = farmManager,
      .srvRecordsBrowser =
          std::make_shared<OvNetServiceBrowser>(OvNetServiceBrowser::kDefaultDeadline, options.dnsServers),
      .launcher = launcher,
      .mainQueue = mainLoop,
      .globalQueue = globalQueue});
}

}  // namespace

Walk::Walk(const Options& options)
    : options_(options),
      opener_(std::make_shared<ShownOpener>()),
      guide_(std::make_shared<Guide>(options, mainLoop_)),
      controller_(makeController(options, mainLoop_, sessions_, opener_)) {}

void Walk::await() {
  mainLoop_->runUntil([this] { return guide_->isSettled(); });
  if (guide_->problem()) throw Failure(*guide_->problem());
}

void Walk::findFarm() {
  std::cout << "Looking for a farm at " << printable(options_.address) << " ...\n" << std::flush;
  guide_->begin();
  controller_->configureFarmFromURL(options_.address, std::nullopt, false, guide_);
  await();
  location_ = locationToUse();
  if (location_->brokers().empty()) throw Failure("The configuration names no broker.");
  std::cout << "Its broker is at " << (location_->protocol() == 1 ? "https://" : "http://")
            << printable(location_->brokers().front()) << ":" << location_->port() << ".\n";
}

std::shared_ptr<OvLocation> Walk::locationToUse() const {
  OvFarm& farm = *guide_->farm();
  if (guide_->configurationStatus() == FarmConfigurationResult::kFromFile) {
    if (farm.locations().empty()) throw Failure("The configuration names no location.");
    const auto preferred = farm.findLocationWithName(farm.prefferedLocationName());
    return preferred ? preferred : farm.locations().front();
  }
  const OvBrokerClient& client = *farm.brokerClient();
  const auto location = OvLocation::location();
  location->setBrokers({client.getServer()});
  location->setPort(client.getTcpPort());
  location->setProtocol(client.getUseSSL() ? 1 : 0);
  farm.addLocation(location);
  return location;
}

void Walk::checkCertificate(const OvLocation& location) const {
  if (options_.certificate.empty()) return;
  if (location.protocol() != 1) throw Failure("Only https can show the certificate that was asked for.");
  const std::string url = "https://" + location.brokers().front() + ":" + std::to_string(location.port());
  const std::string problem = certificateProblem(url, options_.certificate);
  if (!problem.empty()) throw Failure(printable(url) + ": " + printable(problem));
}

void Walk::connect() {
  checkCertificate(*location_);
  const std::shared_ptr<OvFarm> farm = guide_->farm();
  if (options_.user.empty()) farm->setAnonymousLogin(true);
  const auto error = OvBrokerClientController::configureBrokerClient(*farm->brokerClient(), &farm->credentials(),
                                                                     farm->anonymousLogin(), location_.get());
  if (error) throw Failure(explained("The connection", *error));
  guide_->begin();
  controller_->connectToFarm(farm, location_, guide_);
  await();
  std::cout << "Logged in as " << (farm->anonymousLogin() ? "anonymous" : printable(options_.user)) << ".\n"
            << "The farm is \"" << printable(guide_->farm()->name()) << "\".\n";
}

void Walk::showApplications() const {
  int count = 0;
  std::string tree;
  std::vector<std::shared_ptr<const IconImage>> icons;
  for (const auto& folder : guide_->applications()->appItems()) {
    tree += "  " + (folder->displayName().empty() ? "(no folder)" : printable(folder->displayName())) + "\n";
    for (const auto& item : std::static_pointer_cast<AppFolderItem>(folder)->appItems()) {
      tree += "    " + printable(item->displayName()) + "\n";
      ++count;
      if (item->icon()) icons.push_back(item->icon());
    }
  }
  std::cout << count << " applications are published:\n" << tree;
  writeIcons(icons, options_.folder + "/icons");
}

const AppItem& Walk::applicationNamed(const std::string& name) const {
  for (const auto& item : guide_->applications()->allApplicationItems()) {
    if (!item->isFolder() && (name.empty() || item->name() == name || item->displayName() == name)) return *item;
  }
  if (name.empty()) throw Failure("There is nothing to launch.");
  throw Failure('"' + printable(name) + "\" is not published to this user.");
}

void Walk::launch() {
  for (const std::string& name : options_.applications) launch(applicationNamed(name));
  if (options_.applications.empty()) launch(applicationNamed(""));
}

void Walk::launch(const AppItem& application) {
  std::cout << "Launching \"" << printable(application.displayName()) << "\" ...\n" << std::flush;
  const int before = sessions_->starts() + opener_->opened();
  bool isDone = false;
  std::optional<OvError> failure;
  controller_->launchApp(guide_->farm(), location_, application.name(), [&](const OvError* error) {
    mainLoop_->post([&, error = error == nullptr ? std::nullopt : std::optional(*error)] {
      failure = error;
      isDone = true;
    });
  });
  mainLoop_->runUntil([&] { return isDone; });
  if (failure) throw Failure(explained("The launch", *failure));
  if (!sessions_->problem().empty()) throw Failure(sessions_->problem());
  if (sessions_->starts() + opener_->opened() == before) std::cout << "It goes to a session that is running.\n";
}

}  // namespace orvane::walkthrough
