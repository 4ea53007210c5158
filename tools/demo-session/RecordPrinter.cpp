#include "RecordPrinter.h"

#include <algorithm>
#include <iterator>
#include <ostream>
#include <string>
#include <string_view>

#include "Files/OvSettings.h"
#include "PrintableText.h"

namespace orvane::demo {

namespace {

constexpr std::string_view kSecrets[] = {"Password", "Ticket"};

std::string shown(const char* text) { return printable(text ? text : ""); }

std::string firstSetOf(const char* a, const char* b, const char* otherwise) {
  for (const char* text : {a, b}) {
    if (text && *text) return shown(text);
  }
  return otherwise;
}

void printField(std::ostream& output, std::string_view name, const std::string& value) {
  output << "  " << name << ": " << value << '\n';
}

void printField(std::ostream& output, std::string_view name, const char* value, const char* initial) {
  if (!value || !*value || (initial && std::string_view(value) == initial)) return;
  const bool secret = std::ranges::find(kSecrets, name) != std::end(kSecrets);
  printField(output, name, secret ? "********" : shown(value));
}

template <typename Value>
void printField(std::ostream& output, std::string_view name, Value value, Value initial) {
  if (value != initial) printField(output, name, std::to_string(value));
}

std::string userOf(const OvSettings& record) {
  const std::string domain = shown(record.getDomain());
  const std::string user = firstSetOf(record.getUsername(), nullptr, "nobody by name");
  return domain.empty() ? user : domain + "\\" + user;
}

std::string screenOf(const OvSettings& record) {
  if (record.getFullScreen()) return "the full screen";
  if (record.getDesktopWidth() <= 0 || record.getDesktopHeight() <= 0) return "a window";
  return "a window of " + std::to_string(record.getDesktopWidth()) + " x " + std::to_string(record.getDesktopHeight()) +
         " pixels";
}

}  // namespace

void printRecord(const OvSettings& record, std::ostream& output) {
  const bool byTicket = record.getTicket() && *record.getTicket();
  output << "Session: would connect to " << firstSetOf(record.getServerName(), record.getComputer(), "no named server");
  if (record.getServerAddr() && *record.getServerAddr()) output << " (" << shown(record.getServerAddr()) << ")";
  output << " as " << userOf(record) << (byTicket ? " with a ticket" : "") << " and run "
         << firstSetOf(record.getProgramFullPath(), record.getApplication(), "a desktop") << " in " << screenOf(record)
         << ".\n";

#define OVSETTINGS_STRING(stem, Name, initial) printField(output, #Name, record.get##Name(), initial);
#define OVSETTINGS_BOOL(stem, Name, initial) printField<bool>(output, #Name, record.get##Name(), initial);
#define OVSETTINGS_INT(stem, Name, initial) printField<int>(output, #Name, record.get##Name(), initial);
#include "Files/OvSettingsFields.def"
}

}  // namespace orvane::demo
