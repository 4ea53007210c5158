#include <numeric>

#include "Crypto/KeyMaterial.h"
#include "Crypto/RC4StreamCipher.h"
#include "Crypto/crypto.h"

using namespace orvane::keymaterial;

namespace {

using Bytes = std::vector<unsigned char>;

// The two sizes of the block, each with its functions.
struct Form {
  std::vector<size_t> positions;
  int (*encrypt)(const char*, char*, size_t);
  int (*decrypt)(const char*, char*, size_t);

  size_t size() const { return positions.size(); }

  std::string enciphered(const char* text) const {
    std::string hex(2 * size() + 1, 'x');
    EXPECT_EQ(encrypt(text, hex.data(), hex.size()), 1);
    return hex.c_str();
  }

  // All `outSize` bytes of the output.
  std::string deciphered(const std::string& hex, int result, size_t outSize) const {
    std::string out(outSize, 'x');
    EXPECT_EQ(decrypt(hex.c_str(), out.data(), outSize), result);
    return out;
  }
  std::string deciphered(const std::string& hex) const { return deciphered(hex, 1, size() + 1).c_str(); }
};

const Form kForm256 = {{kScatter256.begin(), kScatter256.end()}, crypto_encrypt256, crypto_decrypt256};
const Form kForm1024 = {{kScatter1024.begin(), kScatter1024.end()}, crypto_encrypt1024, crypto_decrypt1024};

class ScatterBlock : public testing::TestWithParam<int> {
 protected:
  const Form& form = GetParam() == 256 ? kForm256 : kForm1024;
};
INSTANTIATE_TEST_SUITE_P(Sizes, ScatterBlock, testing::Values(256, 1024));

std::string someText(size_t length) {
  std::string text(length, '\0');
  for (size_t i = 0; i < length; ++i) text[i] = static_cast<char>(1 + i * 37 % 255);
  return text;
}

// A second reading and writing of the format, by no code of the tree but the cipher.
Bytes underFixedKey(Bytes bytes) {
  unsigned char key[8];
  for (unsigned i = 0; i < 8; ++i) key[i] = static_cast<unsigned char>(kFixedKeyWords[i / 4] >> (8 * (i % 4)) & 0xFF);
  RC4StreamCipher(key, 8).Encrypt(bytes.data(), bytes.data(), static_cast<long>(bytes.size()));
  return bytes;
}

Bytes blockBehind(const std::string& hex) {
  Bytes bytes;
  for (size_t i = 0; i + 1 < hex.size(); i += 2) {
    bytes.push_back(static_cast<unsigned char>(std::stoi(hex.substr(i, 2), nullptr, 16)));
  }
  return underFixedKey(bytes);
}

std::string hexOf(const Bytes& plain) {
  std::string hex;
  for (const int byte : underFixedKey(plain)) {
    hex += "0123456789ABCDEF"[byte / 16];
    hex += "0123456789ABCDEF"[byte % 16];
  }
  return hex;
}

TEST_P(ScatterBlock, HoldsTheCharactersAtTheTablesPositionsAndAddsUpToZero) {
  for (const size_t length : {size_t{0}, size_t{1}, size_t{20}, form.size() - 2}) {
    const std::string text = someText(length);
    const Bytes block = blockBehind(form.enciphered(text.c_str()));
    ASSERT_EQ(block.size(), form.size());
    EXPECT_EQ(std::accumulate(block.begin(), block.end(), 0u) % 256, 0u);
    for (size_t i = 0; i <= length; ++i) EXPECT_EQ(static_cast<char>(block[form.positions[i]]), text.c_str()[i]) << i;
  }
}

TEST_P(ScatterBlock, TextsOfEveryLengthComeBackCutAtTheCapacity) {
  for (size_t length = 0; length < form.size() + 3; ++length) {
    const std::string text = someText(length);
    EXPECT_EQ(form.deciphered(form.enciphered(text.c_str())), text.substr(0, form.size() - 1));
  }
  EXPECT_EQ(form.deciphered(form.enciphered(nullptr)), "");
}

TEST_P(ScatterBlock, TheSameTextTwiceGivesTwoUpperCaseTextsAndBothAreRead) {
  const std::string first = form.enciphered("secret"), second = form.enciphered("secret");
  EXPECT_NE(first, second);
  EXPECT_EQ((first + second).find_first_not_of("0123456789ABCDEF"), std::string::npos);
  EXPECT_EQ(form.deciphered(first), "secret");
  EXPECT_EQ(form.deciphered(second), "secret");
}

TEST_P(ScatterBlock, AnyChangedDigitGivesAnEmptyText) {
  const std::string hex = form.enciphered("secret");
  for (size_t i = 0; i < hex.size(); ++i) {
    std::string damaged = hex;
    damaged[i] = damaged[i] == '0' ? '1' : '0';
    EXPECT_EQ(form.deciphered(damaged, 1, 10), std::string(10, '\0')) << i;
  }
}

TEST_P(ScatterBlock, OnlyTheExactSizeIsABlock) {
  const std::string hex = form.enciphered("secret");
  EXPECT_EQ(form.deciphered(hex + "F"), "secret") << "an odd digit is lost";
  for (const std::string& text : {std::string(), hex.substr(1), hex + "00", hex + hex}) {
    EXPECT_EQ(form.deciphered(text, 0, 10), std::string(10, '\0'));
  }
  EXPECT_EQ(form.decrypt(nullptr, nullptr, 0), 0);
}

TEST_P(ScatterBlock, TheOutputSizeIsKept) {
  std::string tooSmall(2 * form.size(), 'x');
  EXPECT_EQ(form.encrypt("secret", tooSmall.data(), tooSmall.size()), 1);
  EXPECT_EQ(tooSmall, std::string(2 * form.size(), '\0'));
  const std::string hex = form.enciphered("secret");
  for (size_t size = 0; size < 10; ++size) {
    EXPECT_EQ(form.deciphered(hex, 1, size), std::string("secret\0\0\0\0", 10).substr(0, size));
  }
}

TEST(Password, ResultsByTheNumberOfBytes) {
  const std::string shortForm = someText(255);
  struct Row {
    std::string hex;
    int result;
    std::string password;
  };
  for (const Row& row :
       {Row{"", 1, ""}, Row{"F", 1, ""},
        Row{hexOf({'s', 'h', 'o', 'r', 't', ' ', 'f', 'o', 'r', 'm'}), 1, "short form"},
        Row{hexOf({'a', '\0', 'b'}), 1, "a"}, Row{hexOf({shortForm.begin(), shortForm.end()}), 1, shortForm},
        Row{kForm256.enciphered("block"), 1, "block"}, Row{std::string(514, '0'), 0, ""},
        Row{std::string(2048, '0'), 0, ""}, Row{std::string(2050, '0'), 0, ""}}) {
    char out[257] = "old";
    EXPECT_EQ(crypto_decrypt_password(row.hex.c_str(), out, sizeof out), row.result) << row.hex.size();
    EXPECT_EQ(out, row.password) << row.hex.size();
  }
  EXPECT_EQ(crypto_decrypt_password(nullptr, nullptr, 0), 1);
}

TEST(Password, TheShortFormIsCutSoThatItsZeroFits) {
  char out[4] = {'x', 'x', 'x', 'x'};
  EXPECT_EQ(crypto_decrypt_password(hexOf({'a', 'b', 'c', 'd'}).c_str(), out, sizeof out), 1);
  EXPECT_STREQ(out, "abc");
}

}  // namespace
