#include "Options.h"

#include <fstream>
#include <iostream>

namespace orvane::walkthrough {

const char* const kUsage =
    "Usage: walkthrough --broker ADDRESS [options]\n"
    "\n"
    "  --broker ADDRESS        host, host:port, host/path or URL of a broker\n"
    "  --user [DOMAIN\\]NAME     who logs in; without it the log-in is anonymous\n"
    "  --password-file FILE    the password is the file's first line; - reads it from standard input\n"
    "  --application NAME      what to launch; without it the first application of the list\n"
    "  --folder FOLDER         where icons and the launch file go; without it the current folder\n"
    "  --session-program PATH  what is started with --ovl and the launch file\n"
    "  --certificate FILE      PEM file that must vouch for the broker's name; without it any certificate will do\n"
    "  --locale NAME           language of built-in messages, as de-de\n"
    "  --log FILE              traces the whole conversation; holds session cookies, so keep it private\n"
    "  --help                  this text\n";

namespace {

constexpr struct {
  const char* name;
  std::string Options::*value;
} kOptions[] = {
    {"--broker", &Options::broker},
    {"--user", &Options::user},
    {"--password-file", &Options::passwordFile},
    {"--application", &Options::application},
    {"--folder", &Options::folder},
    {"--session-program", &Options::sessionProgram},
    {"--certificate", &Options::certificate},
    {"--locale", &Options::locale},
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
    if (!value) throw UsageError("There is no option " + name + ".");
    if (++i == count) throw UsageError(name + " needs a value.");
    options.*value = arguments[i];
  }
  if (options.broker.empty()) throw UsageError("Which broker? Give its address with --broker.");
  return options;
}

std::string readPassword(const Options& options) {
  if (options.passwordFile.empty()) return {};
  std::string password;
  if (options.passwordFile == "-") {
    std::getline(std::cin, password);
    return password;
  }
  std::ifstream file(options.passwordFile);
  if (!file) throw std::runtime_error("The password file " + options.passwordFile + " can't be read.");
  std::getline(file, password);
  return password;
}

}  // namespace orvane::walkthrough
