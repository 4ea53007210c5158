#pragma once

#include <functional>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

#include "Orchestration/ApplicationLauncher.h"
#include "Sessions/OvSessionManager.h"
#include "Support/DemoRegistryOfTest.h"
#include "Support/FakeOpener.h"
#include "Support/FakeTimer.h"
#include "Support/PumpedQueue.h"
#include "Support/TemporaryFolder.h"

/// Starts nothing, but reads the launch file of the last start, as the program would.
struct FakeStarter : orvane::ProcessStarter {
  bool start(const std::string& executable, const std::vector<std::string>& arguments,
             const std::string& workingDirectory) override {
    const std::lock_guard lock(mutex);
    command = executable + "|" + arguments.at(0) + "|" + arguments.at(1) + "|" + workingDirectory;
    record.emplace();
    if (!record->loadOvlFile(arguments.at(1).c_str())) record.reset();
    if (onStart) onStart();
    return true;
  }

  std::mutex mutex;
  std::string command;
  std::optional<OvSettings> record;
  std::function<void()> onStart;
};

struct FakeScreens : orvane::Screens {
  Size largestWindowContent() const override { return size; }
  Size visibleArea() const override { return {}; }
  Size size{1281, 777};
};

/// A launcher over a folder and a session registry of the test's own.
struct LaunchFixture {
  explicit LaunchFixture(const std::string& preferencesPath = {}) : preferences(preferencesPath) {
    OvSessionManager::useRegistry(registry.names());
    std::filesystem::create_directory(launches);
    writeFile(program, "");
    std::filesystem::permissions(program, std::filesystem::perms::owner_all);
  }

  std::vector<std::string> launchFiles() const {
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(folder.file("launches"))) {
      names.push_back(entry.path().filename().string());
    }
    return names;
  }

  const TemporaryFolder folder;
  const DemoRegistryOfTest registry;
  std::string launches = folder.file("launches");
  std::string program = folder.file("Orvane Connection");
  OrvaneSettings preferences;
  const std::shared_ptr<FakeStarter> starter = std::make_shared<FakeStarter>();
  const std::shared_ptr<FakeScreens> screens = std::make_shared<FakeScreens>();
  const std::shared_ptr<FakeOpener> opener = std::make_shared<FakeOpener>();
  const std::shared_ptr<ApplicationLauncher> launcher =
      std::make_shared<ApplicationLauncher>(ApplicationLauncher::Environment{
          .preferences = preferences,
          .processStarter = starter,
          .contentOpener =
              std::make_shared<ContentOpener>(opener, std::make_shared<PumpedQueue>(), std::make_shared<FakeTimer>()),
          .screens = screens,
          .sessionProgram = [this] { return program; },
          .launchFolder = [this] { return launches; },
      });
};
