#pragma once

#include <cstdlib>
#include <string>

#include "Support/TemporaryFolder.h"

/// A home folder of a test's own, which the environment names from here on, without any other folder of the user or
/// language.
class HomeOfTest : public TemporaryFolder {
 public:
  HomeOfTest() {
    for (const char* variable : {"XDG_CONFIG_HOME", "XDG_DATA_HOME", "XDG_STATE_HOME", "XDG_RUNTIME_DIR", "LANGUAGE",
                                 "LC_ALL", "LC_MESSAGES", "LANG"}) {
      unsetenv(variable);
    }
    setenv("HOME", path().c_str(), 1);
  }
};
