#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "Files/OvSettings.h"
#include "Orchestration/ContentOpener.h"
#include "OrvaneCommon/OrvaneSettings.h"
#include "OrvaneCommon/OvError.h"
#include "OrvaneCommon/OvUPaths.h"
#include "Platform/ProcessStarter.h"
#include "Platform/Screens.h"

/// Gets what a launch record describes running: in a session that runs already, as local content, or in a session
/// program of its own, which is given the record as a launch file.
///
/// All operations may be called on any thread but the main one, at the same time too: they use files, other processes
/// and, where they say so, the network. What they say of a failure, they also log; of a record nothing gets into
/// the log but the path of local content that isn't there.
class ApplicationLauncher {
 public:
  struct Environment {
    OrvaneSettings& preferences;
    std::shared_ptr<orvane::ProcessStarter> processStarter;
    std::shared_ptr<ContentOpener> contentOpener;
    std::shared_ptr<orvane::Screens> screens;
    /// The executable of the session program; asked for at each launch.
    std::function<std::string()> sessionProgram = [] { return OvU_GetOrvaneConnectionPath(); };
    /// The folder for launch files, empty if there is none; asked for at each launch, as it may vanish.
    std::function<std::string()> launchFolder = OvU_GetTempDirPath;
  };

  /// None of the environment's members is null.
  explicit ApplicationLauncher(Environment environment);

  /// Adjusts a record to the preferences, the screen and what a session program can do.
  void applyOrvaneSettings(OvSettings& settings) const;

  /// Launches what the record describes: local content is opened, a session that fits is told to start the program, or
  /// else the record is written to `ovlFile` and a session program started with it. Waits for none of these.
  ///
  /// @param ovlFile  empty: it can't be written. It is left alone where no session program is there to be started.
  /// @param isFileInUse  if not null, gets whether a session program was started with the file, which is then its.
  /// @return false with error 9 if the file can't be written, or 10 if there is no session program. True if a session
  ///         program that is there can't be started; the log tells.
  bool launchApplicationWithSettings(const OvSettings& settings, const std::string& ovlFile, OvError* error,
                                     bool* isFileInUse = nullptr) const;

  /// Launches from a launch file that somebody else made. Blocks for as long as a server takes if the file names the
  /// address of another one.
  ///
  /// The file's mode becomes 0700, and its content what was launched, or what was fetched in its place. Fetched is only
  /// from http and https addresses.
  /// @return false with error 9 if the file, or the one that it names, can't be had; else as above.
  bool launchAppWithOvlFile(const std::string& path, OvError* error) const;

  /// Has a running session that fits start the record's program. A session that can't be reached is taken out of the
  /// registry, and the next one tried, 50 in all.
  /// @return false if there is none, or if the program's texts are too long to be handed over.
  static bool startSharedSession(const OvSettings& settings);

  /// Starts a program in its own folder. @return whether it started.
  bool startTaskWithArgs(const std::vector<std::string>& arguments, const std::string& executable) const;

  /// The path of a new launch file, which is there, empty and of mode 0600, when this returns, so that nobody else gets
  /// the same: "App" in the launch folder, or the first of "App1", "App2", ... that isn't there.
  ///
  /// So that it stays in that folder, "/" and control characters of the name become "_", of a name above 200 bytes the
  /// beginning counts, and an empty name, "." and ".." get "_" in front.
  /// @return nothing if no file can be made.
  std::optional<std::string> formatOvlfileNameForApp(const std::string& appName) const;

  /// Asks all sessions of the user on this machine to disconnect.
  static void disconnectAllOpenedSessions();

 private:
  const Environment environment_;
};
