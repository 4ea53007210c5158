#include "Support/SecureMemory.h"

namespace {

// A vector of plain bytes keeps its buffer when it shrinks, so what is left there shows once it grows back in place.
TEST(SecureMemory, AWipeReachesWhatLiesBehindTheSize) {
  struct Untouched {
    char value;
    Untouched() {}  // NOLINT: growing must not write
  };
  std::vector<Untouched> secret(100);
  for (Untouched& byte : secret) byte.value = 's';
  const Untouched* const memory = secret.data();
  {
    const orvane::WipeAtEnd wipeAtEnd(secret);
    secret.resize(3);
  }
  EXPECT_TRUE(secret.empty());
  secret.resize(100);
  ASSERT_EQ(secret.data(), memory);
  for (const Untouched& byte : secret) EXPECT_EQ(byte.value, 0);
}

}  // namespace
