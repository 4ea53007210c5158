#pragma once

#include <chrono>
#include <memory>
#include <optional>
#include <string>

#include "Support/ChildProcess.h"
#include "Support/SessionBusOfTest.h"
#include "Support/TemporaryFolder.h"

/// A session bus of a test's own, which this process and its children find, and the desktop's keyring daemon on it as
/// the test starts, locks and kills it. Its collection's password is "password".
///
/// No call waits longer than ChildProcess::kPatience: then it throws std::runtime_error. All processes end with the
/// object, and with the test's process. One thread at a time, but for the awaiting functions.
class SecretServiceOfTest {
 public:
  /// Who asks the user for the daemon.
  enum class Prompter {
    kNone,
    kSilent,     ///< takes the question and never answers
    kAnswering,  ///< answers with what answerNextPrompt() says
  };

  SecretServiceOfTest();
  ~SecretServiceOfTest();
  SecretServiceOfTest(const SecretServiceOfTest&) = delete;
  SecretServiceOfTest& operator=(const SecretServiceOfTest&) = delete;

  /// Starts the daemon with its default collection open; makes the collection the first time.
  void startOpen(Prompter prompter = Prompter::kNone) { start(prompter, "password"); }
  /// Starts the daemon as at a log-in that unlocks nothing: the collection, if there is one, is locked.
  void startLocked(Prompter prompter = Prompter::kNone) { start(prompter, ""); }
  /// Has something own the service's name that takes calls and never answers one.
  void startSilent();

  /// Locks the default collection.
  void lock();
  /// SIGKILL, or SIGSTOP for a daemon that hangs.
  void signalDaemon(int signal);
  void killBus() { bus_.kill(); }

  /// The next prompt that has no answer yet is answered with this password after the delay, or dismissed if there is
  /// none.
  static void answerNextPrompt(const std::optional<std::string>& password, std::chrono::milliseconds delay = {});

  /// Waits until somebody has called the silent service or prompter.
  void awaitSwallowedCall();
  int swallowedCalls() const;

 private:
  class Connection;

  void start(Prompter prompter, const std::string& password);

  TemporaryFolder folder_;
  SessionBusOfTest bus_;
  std::unique_ptr<ChildProcess> daemon_;
  std::unique_ptr<Connection> connection_;
  bool hasAnsweringPrompter_ = false;
};
