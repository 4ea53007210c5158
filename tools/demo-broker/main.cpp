#include <cerrno>
#include <charconv>
#include <csignal>
#include <cstdio>
#include <iostream>
#include <optional>
#include <string>
#include <system_error>
#include <vector>

#include "DemoBroker.h"
#include "FarmFile.h"
#include "Support/FileReplacement.h"

using namespace orvane::demo;

namespace {

constexpr char kUsage[] =
    "usage: demo-broker [--farm FILE] [--ip IP] [--port N] [--http | --https] [--host NAME] [--certificate-out FILE] "
    "[--quiet]\n"
    "  --farm FILE             serve the farm of this file; docs/demo-broker.md tells its form\n"
    "  --ip IP                 listen on this address of 127.0.0.0/8; 127.0.0.1 is the default\n"
    "  --port N                listen on this port; 0, the default, takes a free one\n"
    "  --http, --https         without TLS, or with it (the default)\n"
    "  --host NAME             a name in the certificate besides localhost and 127.0.0.1\n"
    "  --certificate-out FILE  write the certificate there in PEM form\n"
    "  --quiet                 print no line for each request\n";

class UsageError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

struct CommandLine {
  std::string farmFile;
  std::string certificateFile;
  DemoBroker::Options options{.useTls = true};
  bool quiet = false;
  bool help = false;
};

uint16_t portOf(const std::string& text) {
  uint16_t port = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), port);
  if (error != std::errc() || end != text.data() + text.size()) throw UsageError("\"" + text + "\" is no port");
  return port;
}

CommandLine parseCommandLine(int count, char** arguments) {
  CommandLine line;
  for (int i = 1; i < count; ++i) {
    const std::string option = arguments[i];
    const auto value = [&]() -> std::string {
      if (++i == count) throw UsageError(option + " needs a value");
      return arguments[i];
    };
    if (option == "--farm") {
      line.farmFile = value();
    } else if (option == "--ip") {
      line.options.ip = value();
      line.options.certificateNames.push_back(line.options.ip);
    } else if (option == "--port") {
      line.options.port = portOf(value());
    } else if (option == "--http" || option == "--https") {
      line.options.useTls = option == "--https";
    } else if (option == "--host") {
      line.options.certificateNames.push_back(value());
    } else if (option == "--certificate-out") {
      line.certificateFile = value();
    } else if (option == "--quiet") {
      line.quiet = true;
    } else if (option == "--help") {
      line.help = true;
    } else {
      throw UsageError("unknown option " + option);
    }
  }
  if (!line.certificateFile.empty() && !line.options.useTls) throw UsageError("there is no certificate with --http");
  return line;
}

/// What a terminal can show of a client's bytes.
std::string printable(std::string text) {
  for (char& character : text) {
    if (character < ' ' || character > '~') character = '?';
  }
  return text;
}

void printRequest(const RecordedRequest& request) {
  // Without the query, in which a client may have put anything.
  const std::string path = request.target.substr(0, request.target.find('?'));
  const std::string line = printable(request.method + " " + path + " " + request.message) + "\n";
  std::fwrite(line.data(), 1, line.size(), stdout);
  std::fflush(stdout);
}

void serve(CommandLine line) {
  // Blocked before the first thread starts, so that they reach nobody but sigwait.
  sigset_t endings;
  sigemptyset(&endings);
  sigaddset(&endings, SIGINT);
  sigaddset(&endings, SIGTERM);
  pthread_sigmask(SIG_BLOCK, &endings, nullptr);

  if (!line.quiet) line.options.onRequest = printRequest;
  DemoBroker broker(line.farmFile.empty() ? sampleFarm() : loadFarmFile(line.farmFile), line.options);
  const std::string& certificate = broker.certificatePem();
  if (!line.certificateFile.empty() &&
      !orvane::replaceFile(line.certificateFile, certificate.data(), certificate.size())) {
    throw std::system_error(errno, std::generic_category(), line.certificateFile);
  }
  std::cout << "port: " << broker.port() << std::endl;
  int signal = 0;
  sigwait(&endings, &signal);
}

}  // namespace

int main(int count, char** arguments) {
  try {
    CommandLine line = parseCommandLine(count, arguments);
    if (line.help) {
      std::cout << kUsage;
    } else {
      serve(std::move(line));
    }
    return 0;
  } catch (const UsageError& error) {
    std::cerr << "demo-broker: " << error.what() << "\n" << kUsage;
    return 2;
  } catch (const std::exception& error) {
    std::cerr << "demo-broker: " << error.what() << "\n";
    return 1;
  }
}
