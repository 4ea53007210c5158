// Any text as a link, as base64 and as a text for XML.

#include <array>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <string>
#include <string_view>

#include "Links/DecodeBase64.h"
#include "Links/OvUrlScheme.h"
#include "Links/XmlEncode.h"
#include "Support/OvException.h"

namespace {

void require(bool holds) {
  if (!holds) abort();
}

class CountingHandler : public OvUrlSchemeHandler {
 public:
  void autoDetect(const char* url, const char* farmGuid) override {
    count(url, farmGuid);
    const std::string_view guid = farmGuid;
    require(guid.empty() || guid.starts_with('{') || guid.ends_with('}'));
  }
  void loadConfig(const char* url, const char* farmGuid, bool) override { count(url, farmGuid); }
  void connectFarm(const char* farmGuid) override { count("", farmGuid); }
  void launchApp(const char* url) override { count(url, ""); }

  int calls = 0;

 private:
  void count(const char* url, const char* farmGuid) {
    ++calls;
    length_ += strlen(url) + strlen(farmGuid);
  }

  size_t length_ = 0;
};

void parseLink(const std::string& text) {
  CountingHandler handler;
  try {
    OvUrlScheme(&handler).parseURL(text);
    require(handler.calls == 1);
  } catch (const OvException& exception) {
    const std::string& error = exception.getErrorText();
    require(handler.calls == 0 && exception.getErrorCode() == 0);
    require(error == "Invalid URL specified." || error == "invalid URL" ||
            error.ends_with(" is absent in query string."));
  }
}

// Bit by bit, as a second opinion.
std::string decoded(const std::string& text) {
  constexpr std::string_view kDigits = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/-_";
  std::string bytes;
  unsigned int bits = 0;
  int count = 0;
  for (const char character : text) {
    const size_t position = kDigits.find(character);
    if (position == std::string_view::npos) continue;
    bits = (bits << 6 | static_cast<unsigned int>(position < 64 ? position : position - 2)) & 0xFFFF;
    count += 6;
    if (count < 8) continue;
    count -= 8;
    bytes += static_cast<char>(bits >> count & 0xFF);
  }
  return bytes;
}

void encodeForXml(const std::string& text) {
  std::string encoded = XmlEncode(text);
  require(encoded.find_first_of("\"'<>") == std::string::npos);
  constexpr std::array<std::array<const char*, 2>, 5> kEntities = {
      {{"&quot;", "\""}, {"&apos;", "'"}, {"&lt;", "<"}, {"&gt;", ">"}, {"&amp;", "&"}}};
  for (const auto& [entity, character] : kEntities) {
    for (size_t at = 0; (at = encoded.find(entity, at)) != std::string::npos; ++at) {
      encoded.replace(at, strlen(entity), character);
    }
  }
  require(encoded == text);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const std::string text(reinterpret_cast<const char*>(data), size);
  parseLink(text);
  // A query too, without the rest of a link having to be found first.
  for (const char* command : {"autodetect", "connectfarm", "launchapp", "loadconfig"}) {
    parseLink(std::string("orvane://") + command + "/?" + text);
  }
  require(DecodeBase64(text) == decoded(text));
  encodeForXml(text);
  return 0;
}
