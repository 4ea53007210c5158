#include "OrvaneCommon/OrvaneSettings.h"

#include <algorithm>
#include <cerrno>
#include <charconv>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <pugixml.hpp>
#include <sstream>
#include <string_view>

#include <fcntl.h>
#include <iconv.h>
#include <unistd.h>

#include "OrvaneCommon/OvUPaths.h"
#include "Support/FileDescriptor.h"
#include "Support/FileReplacement.h"
#include "Support/OvWriteLog.h"

namespace {

constexpr const char* kRootName = "OrvaneSettings";
constexpr const char* kVersionName = "settingsFileVersion";
constexpr std::string_view kBlanks = " \t\r\n";

// A text of blanks alone stays, and so do the line ends within a text: what is saved must come back as it was.
constexpr unsigned int kParsing = pugi::parse_cdata | pugi::parse_escapes | pugi::parse_ws_pcdata_single;

bool isUtf8(const std::string& text) {
  const iconv_t converter = iconv_open("UTF-32LE", "UTF-8");
  if (converter == reinterpret_cast<iconv_t>(-1)) return false;
  char* input = const_cast<char*>(text.data());  // only read
  size_t left = text.size();
  bool valid = true;
  while (valid && left > 0) {
    char output[4096];
    char* end = output;
    size_t room = sizeof output;
    valid = iconv(converter, &input, &left, &end, &room) != static_cast<size_t>(-1) || errno == E2BIG;
  }
  iconv_close(converter);
  return valid;
}

std::string textOf(const pugi::xml_node& element) {
  std::string text;
  for (const pugi::xml_node& part : element.children()) {
    if (part.type() == pugi::node_pcdata || part.type() == pugi::node_cdata) text += part.value();
  }
  return text;
}

// What is behind blanks and a plus sign, as the number readers of the standard library take neither.
std::string_view numberIn(std::string_view text) {
  text.remove_prefix(std::min(text.find_first_not_of(kBlanks), text.size()));
  if (text.starts_with('+')) text.remove_prefix(1);
  return text;
}

template <typename Number>
Number numberOf(const std::string& text) {
  Number number = 0;
  const std::string_view digits = numberIn(text);
  std::from_chars(digits.data(), digits.data() + digits.size(), number);
  return number;
}

void read(const pugi::xml_node& element, bool& value) {
  if (!element) return;
  const std::string text = textOf(element);
  const size_t first = text.find_first_not_of(kBlanks);
  value = first != std::string::npos && std::string_view("YyTt123456789").find(text[first]) != std::string_view::npos;
}

void read(const pugi::xml_node& element, int32_t& value) {
  if (element) value = numberOf<int32_t>(textOf(element));
}

void read(const pugi::xml_node& element, std::optional<std::string>& value) {
  if (element) value = textOf(element);
}

void read(const pugi::xml_node& element, std::string& value) { value = textOf(element); }

void write(pugi::xml_node element, bool value) { element.text().set(value ? "1" : "0"); }

void write(pugi::xml_node element, int32_t value) { element.text().set(value); }

void write(pugi::xml_node element, const std::string& value) {
  if (!value.empty() && isUtf8(value)) element.text().set(value.c_str());
}

void write(pugi::xml_node element, const std::optional<std::string>& value) { write(element, value.value_or("")); }

}  // namespace

OrvaneSettings& OrvaneSettings::instance() {
  static OrvaneSettings& settings = *new OrvaneSettings(OvU_GetOrvaneSettingsPath());
  return settings;
}

OrvaneSettings::OrvaneSettings(std::string path) : path_(std::move(path)) { load(); }

void OrvaneSettings::load() {
  const std::scoped_lock lock(fileMutex_);
  const std::optional<std::string> text = orvane::readFile(path_);
  const bool isUnderstood = text && loadFromString(*text);
  const bool hasContent =
      text ? text->find_first_not_of(kBlanks) != std::string::npos : access(path_.c_str(), F_OK) == 0;
  fileIsUnreadable_ = !isUnderstood && hasContent;
}

bool OrvaneSettings::loadFromString(const std::string& text) {
  if (!isUtf8(text)) return false;
  pugi::xml_document document;
  // Whatever the result says, the document holds what was read up to the damage.
  document.load_buffer(text.data(), text.size(), kParsing, pugi::encoding_utf8);
  const pugi::xml_node root = document.document_element();
  if (!root) return false;

  const std::scoped_lock lock(mutex_);
#define ORVANE_PREFERENCE(type, name, Setter, initial) read(root.child(#name), m_##name);
#include "OrvaneCommon/OrvaneSettingsFields.def"
#undef ORVANE_PREFERENCE
  if (getSettingsFileVersion(root) < 1.0f) m_enableAdaptiveGraphics = m_showTutorialOnStart = true;
  return true;
}

void OrvaneSettings::save() {
  const std::scoped_lock lock(fileMutex_);
  const std::string text = saveToString();
  if (!setAsideUnreadableFile() || !orvane::replaceFile(path_, text.data(), text.size())) {
    OvWriteLog(2, "%s: Can't save the preferences to %s: %s", __func__, path_.c_str(), strerrordesc_np(errno));
  }
}

std::string OrvaneSettings::saveToString() const {
  pugi::xml_document document;
  pugi::xml_node root = document.append_child(kRootName);
  {
    const std::scoped_lock lock(mutex_);
#define ORVANE_PREFERENCE(type, name, Setter, initial) write(root.append_child(#name), m_##name);
#include "OrvaneCommon/OrvaneSettingsFields.def"
#undef ORVANE_PREFERENCE
  }
  root.insert_child_after(kVersionName, root.child("actionOnResolutionChange")).text().set("1");
  std::ostringstream text;
  text << R"(<?xml version="1.0" encoding="UTF-8"?>)" << '\n';
  document.save(text, "  ", pugi::format_indent | pugi::format_no_declaration, pugi::encoding_utf8);
  return text.str();
}

float OrvaneSettings::getSettingsFileVersion(const pugi::xml_node& root) {
  const pugi::xml_node element = root.child(kVersionName);
  return element ? numberOf<float>(textOf(element)) : -1.0f;
}

// Under a new name, which a placeholder reserves.
bool OrvaneSettings::setAsideUnreadableFile() {
  if (!fileIsUnreadable_) return true;
  std::string aside = path_ + ".unreadable.XXXXXX";
  const orvane::FileDescriptor placeholder(mkostemp(aside.data(), O_CLOEXEC));
  if (!placeholder.isOpen()) return false;
  if (rename(path_.c_str(), aside.c_str()) != 0) {
    const int cause = errno;
    unlink(aside.c_str());
    errno = cause;
    if (cause != ENOENT) return false;
  }
  fileIsUnreadable_ = false;
  return true;
}
