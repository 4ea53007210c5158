#include <cstdlib>

#include "Crypto/KeyMaterial.h"
#include "Crypto/crypto.h"
#include "Support/TemporaryFolder.h"

namespace {

struct Free {
  void operator()(char* text) const { free(text); }
};

TEST(TicketGrantingResponse, IsTheHeadTheFixedBlockAndTheFile) {
  const TemporaryFolder folder;
  const std::string path = folder.file("ticket");
  struct Row {
    std::string content, size, firstDigits;
  };
  for (const Row& row : {Row{"", "00000000", ""}, Row{"J\xAB", "02000000", "4AAB"},
                         Row{std::string(0x12345, 'A'), "45230100", "4141"}}) {
    writeFile(path, row.content);
    const std::unique_ptr<char, Free> response(crypto_create_tgt_response(path.c_str()));
    ASSERT_NE(response, nullptr);

    const std::string text = response.get();
    ASSERT_EQ(text.size(), 32 + 2130 + 2 * row.content.size());
    EXPECT_EQ(text.substr(0, 32), "010000000000000029040000" + row.size);
    std::vector<unsigned char> block(1065);
    ASSERT_EQ(crypto_hextobin(text.substr(32, 2130).c_str(), block.data(), block.size()), block.size());
    EXPECT_THAT(block, testing::ElementsAreArray(orvane::keymaterial::kTicketGrantingBlock));
    EXPECT_EQ(text.substr(2162, 4), row.firstDigits);
  }
}

TEST(TicketGrantingResponse, AFileThatCanNotBeReadGivesNone) {
  const TemporaryFolder folder;
  EXPECT_EQ(crypto_create_tgt_response(nullptr), nullptr);
  EXPECT_EQ(crypto_create_tgt_response(folder.file("none").c_str()), nullptr);
  EXPECT_EQ(crypto_create_tgt_response(folder.path().c_str()), nullptr);
}

}  // namespace
