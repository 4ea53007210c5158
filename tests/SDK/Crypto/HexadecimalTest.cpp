#include <set>

#include "Crypto/crypto.h"

namespace {

TEST(Hexadecimal, EveryByteIsTwoUpperCaseDigitsAndComesBackInEitherCase) {
  for (int value = 0; value < 256; ++value) {
    const auto byte = static_cast<unsigned char>(value);
    char upper[3], lower[3], text[3];
    snprintf(upper, sizeof upper, "%02X", value);
    snprintf(lower, sizeof lower, "%02x", value);
    EXPECT_EQ(crypto_bintohex(&byte, 1, text, sizeof text), 1u);
    EXPECT_STREQ(text, upper);

    unsigned char back[2] = {};
    EXPECT_EQ(crypto_hextobin((std::string(upper) + lower).c_str(), back, 2), 2u);
    EXPECT_EQ(back[0], byte);
    EXPECT_EQ(back[1], byte);
    EXPECT_EQ(crypto_hexdigit_to_nibble(static_cast<char>(value)),
              value && isxdigit(value) ? std::stoi(std::string(1, static_cast<char>(value)), nullptr, 16) : 0);
  }
}

TEST(Hexadecimal, OutputIsZeroedEvenWhereTheTextDoesNotFit) {
  const unsigned char bytes[] = {0xAB, 0xCD};
  for (const auto& [size, result] : {std::pair{0u, 0u}, {1u, 0u}, {4u, 0u}, {5u, 2u}, {9u, 2u}}) {
    std::string out(size, 'x');
    EXPECT_EQ(crypto_bintohex(bytes, 2, out.data(), size), result) << size;
    EXPECT_EQ(out, std::string(result ? "ABCD" : "").append(size - 2 * result, '\0'));
  }
  char out[] = "old";
  EXPECT_EQ(crypto_bintohex(bytes, SIZE_MAX / 2 + 1, out, sizeof out), 0u) << "2 * count + 1 overflows";
}

TEST(Hexadecimal, ReadsWhatFitsAndNothingElse) {
  struct Row {
    const char* text;
    std::vector<unsigned char> bytes;
  };
  for (const Row& row : {Row{nullptr, {}},
                         {"", {}},
                         {"A", {}},
                         {"0102030405", {}},
                         {"01020304F", {1, 2, 3, 4}},
                         {"1g:2 /\xFFx", {0x10, 2, 0, 0}},
                         {"@A`aGf", {0x0A, 0x0A, 0x0F}}}) {
    std::vector<unsigned char> out(4);
    out.resize(crypto_hextobin(row.text, out.data(), out.size()));
    EXPECT_EQ(out, row.bytes) << (row.text ? row.text : "null");
  }
}

TEST(Identifier, FillsSixteenBytesThatDifferEachTime) {
  std::set<std::vector<unsigned char>> seen;
  for (int i = 0; i < 100; ++i) {
    std::vector<unsigned char> bytes(16);
    EXPECT_EQ(UuidCreate_OvCommon(bytes.data()), 0);
    seen.insert(bytes);
  }
  EXPECT_EQ(seen.size(), 100u);
}

}  // namespace
