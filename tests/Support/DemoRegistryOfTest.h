#pragma once

#include <cstdlib>
#include <string>

#include <semaphore.h>
#include <sys/mman.h>
#include <unistd.h>

#include "Sessions/SessionRegistryNames.h"

/// A session registry of a test's own, which the demonstration programs that it starts meanwhile use.
class DemoRegistryOfTest {
 public:
  DemoRegistryOfTest() { setenv("ORVANE_DEMO_REGISTRY", name_.c_str(), 1); }
  ~DemoRegistryOfTest() {
    unsetenv("ORVANE_DEMO_REGISTRY");
    sem_unlink(names().semaphore.c_str());
    shm_unlink(names().sharedMemory.c_str());  // left behind only by a program that was killed
  }
  DemoRegistryOfTest(const DemoRegistryOfTest&) = delete;
  DemoRegistryOfTest& operator=(const DemoRegistryOfTest&) = delete;

  orvane::SessionRegistryNames names() const {
    return {"/" + name_ + ".mutex", "/" + name_ + ".shared", "/tmp/" + name_ + ".socket"};
  }

 private:
  const std::string name_ = "orvane-demo-" + std::to_string(getpid());
};
