#pragma once

#include <string>
#include <vector>

#include "Support/DemoRegistryOfTest.h"
#include "Support/TemporaryFolder.h"
#include "demo-broker/DemoBroker.h"

/// Runs the walkthrough program, and looks for secrets in all that comes out of it.
class WalkthroughTest : public testing::Test {
 protected:
  struct Run {
    int status = 0;
    std::string output{};
    std::string errors{};
  };

  /// The sample farm with a password that is no name as well, a locked account and one that sees no application.
  static orvane::demo::FarmDescription farm();
  /// The password of all users.
  static const std::string kPassword;

  /// Walks to `broker` as HAFENWERK\demo with the password at the standard input. `more` comes behind these options and
  /// so wins over them.
  Run walk(const std::string& broker, const std::vector<std::string>& more = {}) const;
  /// The same to the broker of the test.
  Run walk(const std::vector<std::string>& more = {}) const { return walk(broker_.url(), more); }

  /// Fails the test if a password, a ticket or a cookie that a broker gave so far stands in `text`.
  void expectNoSecret(const std::string& text) const;

  /// An executable shell script in the test's folder.
  std::string script(const std::string& name, const std::string& commands) const;

  const DemoRegistryOfTest registry_;
  const TemporaryFolder folder_;
  orvane::demo::DemoBroker broker_{farm(), {.useTls = true}};
};
