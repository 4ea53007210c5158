#include <cctype>

#include "Links/DecodeBase64.h"

namespace {

TEST(DecodeBase64, TakesBothAlphabetsWithOrWithoutPaddingInAnyLength) {
  std::string longText, longBytes;
  for (int i = 0; i < 5000; ++i) {
    longText += "aHI0";
    longBytes += "hr4";
  }
  const std::pair<std::string, std::string> cases[] = {
      {"", ""},
      {"Q", ""},
      {"QQ", "A"},
      {"QQ==", "A"},
      {"QUJ", "AB"},
      {"QUJDR", "ABC"},
      {"aHR0cDovL3g", "http://x"},
      {"-_8", "\xFB\xFF"},
      {"+/8", "\xFB\xFF"},
      {"AAAA", std::string(3, '\0')},
      {"QQ==QUJD", "A\x04\x14\x24"},  // the bits go on behind a padding
      {"." + longText + "aHI", longBytes + "hr"}};
  for (const auto& [text, bytes] : cases) EXPECT_EQ(DecodeBase64(text), bytes) << text;
}

TEST(DecodeBase64, PassesOverEveryByteOutsideTheAlphabet) {
  for (int value = 0; value < 256; ++value) {
    const char byte = static_cast<char>(value);
    if ((value < 128 && isalnum(value)) || std::string("+/-_").find(byte) != std::string::npos) continue;
    for (size_t position = 0; position <= 4; ++position) {
      EXPECT_EQ(DecodeBase64(std::string("QUJD").insert(position, 300, byte)), "ABC") << value << " at " << position;
    }
  }
}

}  // namespace
