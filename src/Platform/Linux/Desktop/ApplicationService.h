#pragma once

#include <QDBusConnection>
#include <chrono>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "Platform/Linux/Desktop/ApplicationArguments.h"

namespace orvane {

/// What the desktop asks a running program for. Called on the main thread by its loop. A token lets a window come to
/// the front (see activateWindow); it may be empty.
struct ApplicationRequests {
  std::function<void(const std::string& token)> activate;
  /// Addresses as in ApplicationArguments; there is at least one.
  std::function<void(const std::vector<std::string>& addresses, const std::string& token)> open;
  /// The name is one of kApplicationActions.
  std::function<void(const std::string& name, const std::string& token)> action;
};

/// The program as one instance for each user session: the one that owns its name on the session bus, where it offers
/// `org.freedesktop.Application`. Main thread only, with a QCoreApplication.
class ApplicationService {
 public:
  enum class Start {
    kFirst,       ///< this is the instance
    kAlone,       ///< so is this, without a session bus, so that nothing comes from others
    kForwarded,   ///< another is; it has taken what the arguments ask for: nothing is left to do
    kUnanswered,  ///< another is, which doesn't answer: whoever started this one should be told
  };

  /// How long a start waits for the running instance.
  static constexpr std::chrono::milliseconds kPatience{10'000};

  explicit ApplicationService(QDBusConnection bus = QDBusConnection::sessionBus());
  /// As stop().
  ~ApplicationService();
  ApplicationService(const ApplicationService&) = delete;
  ApplicationService& operator=(const ApplicationService&) = delete;

  /// Becomes the instance, or hands the arguments to the one that is: its links and files, its action, or without any
  /// (and unless this is a background start) the wish to come to the front. An instance that ends meanwhile is
  /// replaced.
  ///
  /// For the instance the arguments' own links, files and action are the first requests, and without any there is none.
  /// Started by the bus, it waits here for the request that it was started for, for a short time. To be called once.
  /// @param arguments without an error.
  /// @param token of the start: startupToken().
  Start start(const ApplicationArguments& arguments, const std::string& token = {},
              std::chrono::milliseconds patience = kPatience);

  /// Hands over, before it returns, all that was asked for until now, in order; then what comes, by the loop.
  void setHandler(ApplicationRequests handler);

  /// Gives the name back: the next start is the first again. What has arrived and wasn't handed over is dropped.
  void stop();

 private:
  class Queue;

  QDBusConnection bus_;
  const std::unique_ptr<Queue> queue_;
  bool ownsName_ = false;
};

/// The token that the desktop gave to this start in the environment. To be read before the QApplication is made, which
/// removes it.
std::string startupToken();

}  // namespace orvane
