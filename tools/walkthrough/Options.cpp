#include "Options.h"

#include <cerrno>
#include <cstring>

#include <fcntl.h>
#include <unistd.h>

#include "Support/FileDescriptor.h"

namespace orvane::walkthrough {

const char* const kUsage =
    "Usage: walkthrough --address ADDRESS [options]\n"
    "\n"
    "  --address ADDRESS       e-mail address; host, host:port, host/path or URL of a broker; or a configuration file\n"
    "  --dns IP:PORT           who is asked for the brokers of an e-mail address; without it the system's servers\n"
    "  --user [DOMAIN\\]NAME     who logs in; without it the log-in is anonymous\n"
    "  --password-file FILE    the password is the file's first line; - reads it from standard input\n"
    "  --launch NAME           what to launch; may be repeated. Without it the first application of the tree\n"
    "  --folder FOLDER         where launch files go; without it the current folder\n"
    "  --session-program PATH  what is started with --ovl and the launch file\n"
    "  --certificate FILE      PEM file that must vouch for the broker's name; without it any certificate will do\n"
    "  --log FILE              traces the whole conversation; holds session cookies, so keep it private\n"
    "  --help                  this text\n";

namespace {

// What its enciphered form holds; a longer one would be cut.
constexpr size_t kLongestPassword = 254;

constexpr struct {
  const char* name;
  std::string Options::*value;
} kOptions[] = {
    {"--address", &Options::address},
    {"--dns", &Options::dnsServers},
    {"--user", &Options::user},
    {"--password-file", &Options::passwordFile},
    {"--folder", &Options::folder},
    {"--session-program", &Options::sessionProgram},
    {"--certificate", &Options::certificate},
    {"--log", &Options::logFile},
};

}  // namespace

Options readOptions(int count, const char* const* arguments) {
  Options options;
  for (int i = 1; i < count; ++i) {
    const std::string name = arguments[i];
    if (name == "--help") {
      options.help = true;
      return options;
    }
    std::string Options::*value = nullptr;
    for (const auto& row : kOptions) {
      if (name == row.name) value = row.value;
    }
    const bool isLaunch = name == "--launch";
    if (value == nullptr && !isLaunch) throw UsageError("There is no option " + name + ".");
    if (++i == count) throw UsageError(name + " needs a value.");
    if (isLaunch) {
      options.applications.emplace_back(arguments[i]);
    } else {
      options.*value = arguments[i];
    }
  }
  if (options.address.empty()) throw UsageError("Which farm? Give its address with --address.");
  return options;
}

std::string readPassword(const Options& options) {
  if (options.passwordFile.empty()) return {};
  const bool isInput = options.passwordFile == "-";
  const FileDescriptor file(isInput ? dup(STDIN_FILENO) : open(options.passwordFile.c_str(), O_RDONLY | O_CLOEXEC));
  // Byte by byte into one place that never moves: no buffer keeps a copy.
  std::string password;
  password.reserve(kLongestPassword);
  for (char character = 0;;) {
    const ssize_t count = read(file.number(), &character, 1);
    if (count < 0)
      throw std::runtime_error("The password file " + options.passwordFile + " can't be read: " + strerror(errno) +
                               ".");
    if (count == 0 || character == '\n') return password;
    if (password.size() == kLongestPassword)
      throw std::runtime_error("The password is longer than " + std::to_string(kLongestPassword) + " bytes.");
    password += character;
  }
}

}  // namespace orvane::walkthrough
