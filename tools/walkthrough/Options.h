#pragma once

#include <stdexcept>
#include <string>
#include <vector>

namespace orvane::walkthrough {

/// What the command line asks for.
struct Options {
  std::string address;  ///< e-mail address, address of a broker or of a configuration file, as a user types it
  std::string
      dnsServers;    ///< who is asked for a mail domain's brokers, `address:port,...`; empty: the system's servers
  std::string user;  ///< `name` or `DOMAIN\name`; empty: anonymous
  std::string passwordFile;               ///< its first line is the password; "-" is standard input; empty: no password
  std::vector<std::string> applications;  ///< names of those to launch, in this order; none: the first of the tree
  std::string folder = ".";               ///< where launch files go
  std::string sessionProgram = DEMO_SESSION;  ///< started with `--ovl` and the launch file
  std::string certificate;  ///< PEM file that must vouch for the broker; empty: any certificate will do
  std::string logFile;
  bool help = false;
};

/// Something that the command line got wrong, in words.
class UsageError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

extern const char* const kUsage;

/// @throws UsageError
Options readOptions(int count, const char* const* arguments);

/// The password that the options name; the caller wipes it.
/// @throws std::runtime_error if its file can't be read or it is too long for a log-in.
std::string readPassword(const Options& options);

}  // namespace orvane::walkthrough
