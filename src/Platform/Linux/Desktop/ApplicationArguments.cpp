#include "Platform/Linux/Desktop/ApplicationArguments.h"

#include <algorithm>

#include <strings.h>

namespace orvane {
namespace {

constexpr std::string_view kLinkSchemes[] = {"orvane", "helperorvane"};
constexpr std::string_view kAddressOption = "--address=";
constexpr std::string_view kFileScheme = "file";
constexpr std::string_view kHexDigits = "0123456789ABCDEF";

struct OptionRow {
  std::string_view name;
  bool ApplicationArguments::*flag;
};

constexpr OptionRow kOptions[] = {
    {"--background", &ApplicationArguments::isBackground},
    {"--help", &ApplicationArguments::wantsHelp},
    {"--service", &ApplicationArguments::isService},
    {"--version", &ApplicationArguments::wantsVersion},
    {"-h", &ApplicationArguments::wantsHelp},
};

constexpr char kHelp[] =
    "Usage: orvane [OPTION]... [LINK|FILE]...\n"
    "Connects to published applications and desktops.\n"
    "\n"
    "  LINK           opens a link \"orvane:...\"\n"
    "  FILE           opens a launch file (*.ovl)\n"
    "  --address=TEXT stands in the field for the address of a first connection\n"
    "  --preferences  shows the preferences\n"
    "  --about        shows what this program is\n"
    "  --quit         ends the running program\n"
    "  --background   starts as at the log-in: for the desktop's list of such programs\n"
    "  --service      starts for requests of the session bus: for its service file\n"
    "  -h, --help     shows this\n"
    "  --version      shows the version\n";

bool equalsIgnoringCase(std::string_view text, std::string_view other) {
  return text.size() == other.size() && strncasecmp(text.data(), other.data(), text.size()) == 0;
}

bool isLetter(char character) { return (character | 0x20) >= 'a' && (character | 0x20) <= 'z'; }
bool isDigit(char character) { return character >= '0' && character <= '9'; }

// "orvane" of "orvane://…"; empty for a text that is no address.
std::string_view schemeOf(std::string_view text) {
  const std::string_view scheme = text.substr(0, std::min(text.find(':'), text.size()));
  const bool isScheme = scheme.size() < text.size() && !scheme.empty() && isLetter(scheme[0]) &&
                        std::ranges::all_of(scheme, [](char character) {
                          return isLetter(character) || isDigit(character) ||
                                 std::string_view("+-.").find(character) != std::string_view::npos;
                        });
  return isScheme ? scheme : std::string_view();
}

bool isLink(std::string_view text) {
  return std::ranges::any_of(kLinkSchemes,
                             [&](std::string_view scheme) { return equalsIgnoringCase(schemeOf(text), scheme); });
}

std::string fileAddress(const std::string& path, const std::string& workingFolder) {
  std::string address = "file://";
  const std::string folder = path[0] == '/' ? "" : workingFolder == "/" ? workingFolder : workingFolder + "/";
  for (const char character : folder + path) {
    if (isLetter(character) || isDigit(character) ||
        std::string_view("/-._~").find(character) != std::string_view::npos) {
      address += character;
    } else {
      const auto byte = static_cast<unsigned char>(character);
      address += {'%', kHexDigits[byte >> 4], kHexDigits[byte & 15]};
    }
  }
  return address;
}

std::optional<unsigned char> hexValue(char digit) {
  if (isDigit(digit)) return static_cast<unsigned char>(digit - '0');
  const int value = (digit | 0x20) - 'a' + 10;
  return value >= 10 && value <= 15 ? std::optional(static_cast<unsigned char>(value)) : std::nullopt;
}

// Nothing if there is a "%" that escapes no byte of a path.
std::optional<std::string> withoutEscapes(std::string_view text) {
  std::string plain;
  for (size_t at = 0; at < text.size(); ++at) {
    if (text[at] != '%') {
      plain += text[at];
      continue;
    }
    const auto high = at + 2 < text.size() ? hexValue(text[at + 1]) : std::nullopt;
    const auto low = high ? hexValue(text[at + 2]) : std::nullopt;
    if (!low || (*high == 0 && *low == 0)) return {};
    plain += static_cast<char>(*high << 4 | *low);
    at += 2;
  }
  return plain;
}

// What is wrong with it, or an empty text.
std::string takeOption(std::string_view option, ApplicationArguments& arguments) {
  const auto* const row = std::ranges::find(kOptions, option, &OptionRow::name);
  if (row != std::end(kOptions)) {
    arguments.*row->flag = true;
    return {};
  }
  if (option.starts_with(kAddressOption)) {
    arguments.addressToConnect = option.substr(kAddressOption.size());
    return {};
  }
  if (!option.starts_with("--") || !isApplicationAction(option.substr(2))) {
    return "unknown option: " + std::string(option);
  }
  if (!arguments.action.empty() && arguments.action != option.substr(2)) {
    return "--" + arguments.action + " and " + std::string(option) + " are two wishes at once";
  }
  arguments.action = option.substr(2);
  return {};
}

std::string takeOperand(const std::string& operand, const std::string& workingFolder, ApplicationArguments& arguments) {
  if (operand.empty()) return "an argument is empty";
  const std::string_view scheme = schemeOf(operand);
  if (isLink(operand)) {
    arguments.addresses.push_back(operand);
  } else if (equalsIgnoringCase(scheme, kFileScheme)) {
    const std::optional<std::string> path = filePathOfAddress(operand);
    if (!path) return "not an address of a file here: " + operand;
    arguments.addresses.push_back(fileAddress(*path, workingFolder));
  } else if (!scheme.empty() && std::string_view(operand).substr(scheme.size()).starts_with("://")) {
    return "not a link that Orvane opens: " + operand;
  } else {
    arguments.addresses.push_back(fileAddress(operand, workingFolder));
  }
  return {};
}

}  // namespace

bool isApplicationAction(std::string_view name) {
  return std::ranges::find(kApplicationActions, name) != std::end(kApplicationActions);
}

ApplicationArguments sortArguments(std::span<const std::string> arguments, const std::string& workingFolder) {
  ApplicationArguments sorted;
  bool areOptionsOver = false;
  for (const std::string& argument : arguments) {
    if (!areOptionsOver && argument == "--") {
      areOptionsOver = true;
      continue;
    }
    sorted.error = !areOptionsOver && argument.starts_with('-') ? takeOption(argument, sorted)
                                                                : takeOperand(argument, workingFolder, sorted);
    if (!sorted.error.empty()) break;
  }
  return sorted;
}

std::string argumentsHelp() { return kHelp; }

bool isOpenableAddress(const std::string& address) { return isLink(address) || filePathOfAddress(address).has_value(); }

std::optional<std::string> filePathOfAddress(const std::string& address) {
  if (!equalsIgnoringCase(schemeOf(address), kFileScheme)) return {};
  std::string_view rest = std::string_view(address).substr(kFileScheme.size() + 1);
  if (rest.starts_with("//")) {
    rest.remove_prefix(2);
    const std::string_view host = rest.substr(0, std::min(rest.find('/'), rest.size()));
    if (!host.empty() && !equalsIgnoringCase(host, "localhost")) return {};
    rest.remove_prefix(host.size());
  }
  return rest.starts_with('/') ? withoutEscapes(rest) : std::nullopt;
}

}  // namespace orvane
