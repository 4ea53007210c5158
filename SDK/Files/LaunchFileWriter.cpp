#include "Files/LaunchFileWriter.h"

#include <cstring>

#include "Crypto/crypto.h"
#include "Files/LaunchFileKeys.h"
#include "Files/LaunchFileLimits.h"
#include "Files/LaunchFileStrings.h"
#include "Support/SecureMemory.h"

namespace orvane {

namespace {

// An escape is at most three bytes for one.
constexpr size_t kLongestEscape = 3;

// What the text takes at most. With this room from the start it never moves and leaves no secret behind.
size_t roomFor(const OvSettingsData& record) {
  constexpr size_t kRoomForOneLine = 64;
  size_t room = 2 * kEncipheredCapacity + launchFileKeys().size() * kRoomForOneLine;
  forEachText(record, [&room](const char* text) { room += text ? kLongestEscape * strlen(text) : 0; });
  return room;
}

// Adds one line to the text if its condition holds. False if the value is too long to be read back.
class LineWriter {
 public:
  LineWriter(const OvSettingsData& record, const LaunchFileKey& key, std::string& text)
      : record_(record), key_(key), text_(text) {}

  bool operator()(TextField field) const {
    const char* const value = record_.*field;
    if (!value || !isWritten(*value != '\0')) return true;
    switch (key_.form) {
      case ValueForm::kPassword:
        return writeEnciphered(value, crypto_encrypt_password, crypto_decrypt_password);
      case ValueForm::kEnciphered:
        return writeEnciphered(value, crypto_encrypt1024, crypto_decrypt1024);
      default:
        return writeLine(value);
    }
  }

  bool operator()(NumberField field) const { return writeNumber(record_.*field); }

  bool operator()(SwitchField field) const {
    const bool isOn = record_.*field;
    switch (key_.form) {
      case ValueForm::kInverted:
        return writeNumber(!isOn);
      case ValueForm::kScreenMode:
        return writeNumber(isOn ? 2 : 1);
      case ValueForm::kAlwaysOne:
        return writeNumber(1);
      default:
        return writeNumber(isOn);
    }
  }

 private:
  bool isWritten(bool hasValue) const {
    switch (key_.written) {
      case Written::kNever:
        return false;
      case Written::kAlways:
        return true;
      case Written::kIfSet:
        return hasValue;
      case Written::kWithoutApplication:
        return !isSet(record_.application);
      case Written::kWithProxy:
        return record_.use_proxy && hasValue;
      case Written::kWithServers:
        return isSet(record_.broker_servers);
    }
    return false;
  }

  bool writeNumber(int number) const {
    if (!isWritten(number != 0)) return true;
    text_ += key_.name;
    text_ += ":i:";
    text_ += std::to_string(number);
    text_ += '\n';
    return true;
  }

  bool writeLine(const char* value) const {
    const size_t before = text_.size();
    write_ovl_string(text_, key_.name, value);
    return text_.size() - before <= kMaximumLineLength + 1;
  }

  // The escapes go inside, as the reader undoes them on the deciphered text. How much a block holds is a matter of its
  // table, so a trial tells: with a character in the place of the zero at the end, without which a reader may run on.
  template <typename Encipher, typename Decipher>
  bool writeEnciphered(const char* value, Encipher encipher, Decipher decipher) const {
    std::string escaped;
    const WipeAtEnd wipeEscaped(escaped);
    escaped.reserve(kLongestEscape * strlen(value) + 1);
    appendEscaped(escaped, value);

    escaped += '.';
    char enciphered[kEncipheredCapacity];
    encipher(escaped.c_str(), enciphered, sizeof enciphered);
    char plain[kDecipheredCapacity];
    decipher(enciphered, plain, sizeof plain);
    const bool isWhole = escaped == plain;
    wipe(plain, sizeof plain);
    if (!isWhole) return false;

    escaped.pop_back();
    encipher(escaped.c_str(), enciphered, sizeof enciphered);
    return writeLine(enciphered);
  }

  const OvSettingsData& record_;
  const LaunchFileKey& key_;
  std::string& text_;
};

}  // namespace

bool writeLaunchDocument(const OvSettingsData& record, std::string& text) {
  text.reserve(text.size() + roomFor(record));
  for (const LaunchFileKey& key : launchFileKeys()) {
    if (!std::visit(LineWriter(record, key, text), key.field)) return false;
  }
  return true;
}

}  // namespace orvane
