#include "Support/SessionBusOfTest.h"

#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <stdexcept>
#include <vector>

namespace {

// The part of a session bus that a test needs: of services only what the test adds starts by itself.
std::string configurationOf(const std::string& services) {
  return R"(<!DOCTYPE busconfig PUBLIC "-//freedesktop//DTD D-Bus Bus Configuration 1.0//EN"
 "http://www.freedesktop.org/standards/dbus/1.0/busconfig.dtd">
<busconfig><type>session</type><listen>unix:tmpdir=/tmp</listen><auth>EXTERNAL</auth><servicedir>)" +
         services + R"(</servicedir>
<policy context="default"><allow send_destination="*"/><allow receive_sender="*"/><allow own="*"/></policy></busconfig>
)";
}

}  // namespace

SessionBusOfTest::SessionBusOfTest() {
  const std::string configuration = folder_.file("bus.conf");
  std::filesystem::create_directory(folder_.path() / "services");
  writeFile(configuration, configurationOf(folder_.file("services")));
  // The services end when their bus does, and the bus when this process does, however it ends.
  bus_ = std::make_unique<ChildProcess>(
      "/usr/bin/setpriv",
      std::vector<std::string>{"--pdeathsig", "KILL", "dbus-daemon", "--config-file=" + configuration, "--nofork",
                               "--nopidfile", "--print-address", "--address=unix:path=" + folder_.file("bus")});
  address_ = bus_->line();
  if (address_.empty()) throw std::runtime_error("no bus: " + bus_->errors());
  address_.pop_back();
  setenv("DBUS_SESSION_BUS_ADDRESS", address_.c_str(), 1);
}

void SessionBusOfTest::addService(const std::string& name, const std::string& command) {
  writeFile(folder_.path() / "services" / (name + ".service"),
            "[D-BUS Service]\nName=" + name + "\nExec=" + command + "\n");
}

void SessionBusOfTest::kill() { bus_->end(SIGKILL); }
