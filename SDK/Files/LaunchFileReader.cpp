#include "Files/LaunchFileReader.h"

#include <algorithm>
#include <climits>
#include <cstdlib>
#include <cstring>
#include <optional>
#include <string>
#include <string_view>

#include "Crypto/crypto.h"
#include "Files/LaunchFileKeys.h"
#include "Files/LaunchFileLimits.h"
#include "Files/LaunchFileStrings.h"
#include "Support/SecureMemory.h"

namespace orvane {

namespace {

struct Line {
  std::string_view key;
  std::string_view tag;
  char* value;  // zero-terminated, not empty
};

// A text that no int holds becomes the nearest one: what atoi makes of it is left open.
int numberIn(const char* text) {
  return static_cast<int>(std::clamp<long>(strtol(text, nullptr, 10), INT_MIN, INT_MAX));
}

// The part of `rest` up to the next colon, colons in front of it left out; `rest` goes on behind that colon. Nothing if
// there is no such part or no colon behind it.
std::optional<std::string_view> takePart(char*& rest) {
  char* const start = rest + strspn(rest, ":");
  char* const colon = strchr(start, ':');
  if (!colon) return std::nullopt;
  rest = colon + 1;
  return std::string_view(start, static_cast<size_t>(colon - start));
}

std::optional<Line> split(char* text) {
  const auto key = takePart(text);
  const auto tag = key ? takePart(text) : std::nullopt;
  if (!tag || !*text) return std::nullopt;
  return Line{*key, *tag, text};
}

// An odd last byte counts for nothing.
bool isHexadecimal(const char* text) { return strspn(text, "0123456789ABCDEFabcdef") >= strlen(text) / 2 * 2; }

// Puts what a line says into the field of its key.
class Assignment {
 public:
  Assignment(OvSettingsData& record, const Line& line, ValueForm form) : record_(record), line_(line), form_(form) {}

  void operator()(TextField field) const {
    char*& text = record_.*field;
    switch (form_) {
      case ValueForm::kPassword:
        return decipher(crypto_decrypt_password, [&](char* plain) { read_ovl_string(line_.tag, plain, text); });
      case ValueForm::kEnciphered:
        return decipher(crypto_decrypt1024, [&](char* plain) { read_ovl_string(line_.tag, plain, text); });
      case ValueForm::kAddress:
        return decipher(crypto_decrypt1024, [&](char* plain) { assignText(text, plain); });
      case ValueForm::kUnescaped:
        return assignText(text, line_.value);
      default:
        return read_ovl_string(line_.tag, line_.value, text);
    }
  }

  void operator()(NumberField field) const {
    const int number = numberIn(line_.value);
    record_.*field = form_ == ValueForm::kZeroOrOne ? number != 0 : number;
  }

  void operator()(SwitchField field) const {
    const int number = numberIn(line_.value);
    bool& isOn = record_.*field;
    switch (form_) {
      case ValueForm::kInverted:
        isOn = number == 0;
        break;
      case ValueForm::kScreenMode:
        isOn = number == 2;
        break;
      case ValueForm::kSpanMonitors:
        isOn = record_.seamless > 0 || number != 0;
        break;
      default:
        isOn = number != 0;
    }
  }

 private:
  // What can't be deciphered is an empty text: a damaged password is none. So is a plain one, which the short form of
  // enciphered passwords would else turn into a random text.
  template <typename Decipher, typename Store>
  void decipher(Decipher decipherText, Store store) const {
    char plain[kDecipheredCapacity] = {};
    if (isHexadecimal(line_.value)) decipherText(line_.value, plain, sizeof plain);
    store(plain);
    wipe(plain, sizeof plain);
  }

  OvSettingsData& record_;
  const Line& line_;
  ValueForm form_;
};

// Takes `text` apart where it stands: the byte that ends a line becomes the zero of its text.
void readLines(OvSettingsData& record, std::string& text) {
  char* position = text.data();
  char* const end = position + text.size();
  for (;;) {
    position = std::find_if_not(position, end, [](char byte) { return byte == ' ' || (byte >= '\t' && byte <= '\r'); });
    char* const limit = position + std::min<ptrdiff_t>(end - position, kMaximumLineLength);
    char* const lineEnd = std::find_if(position, limit, [](char byte) { return byte == '\n' || byte == '\r'; });
    if (lineEnd == end) return;  // a line without an end doesn't count
    *lineEnd = '\0';
    if (const auto line = split(position)) {
      if (const LaunchFileKey* key = findLaunchFileKey(line->key)) {
        std::visit(Assignment(record, *line, key->form), key->field);
      }
    }
    position = lineEnd + 1;
  }
}

}  // namespace

void readLaunchDocument(OvSettingsData& record, std::string_view document) {
  std::string text;
  const WipeAtEnd wipeText(text);
  resetRecord(record);
  text = document;

  const size_t length = crypto_decrypt_buffer(reinterpret_cast<unsigned char*>(text.data()), text.size());
  if (length > 0) {
    text.resize(length);
  } else {
    text = document;  // no container, or an empty one: the trial may have spoilt the copy
  }

  // A first line wins over later ones, but not over a default.
  clearText(record.connector_type);
  clearText(record.devices_to_redirect);
  clearText(record.drives_to_redirect);
  readLines(record, text);
  if (!record.connector_type) assignText(record.connector_type, "");
  if (!record.devices_to_redirect) assignText(record.devices_to_redirect, "*");
  if (!record.drives_to_redirect) assignText(record.drives_to_redirect, "*");
}

}  // namespace orvane
