#include "Support/MemoryDump.h"

namespace {

std::string dumpOf(const char* title, const void* bytes, size_t size) {
  testing::internal::CaptureStdout();
  ovutils_dump_memory(title, bytes, size);
  return testing::internal::GetCapturedStdout();
}

TEST(MemoryDump, ShowsSixteenBytesALineAndFillsTheLast) {
  EXPECT_EQ(dumpOf("title", "0123456789abcdefXY\xFF", 19),
            "title\n{\n"
            "30 31 32 33 34 35 36 37 38 39 61 62 63 64 65 66   0123456789abcdef\n"
            "58 59 ff                                          XY\xFF\n"
            "}\n");
  EXPECT_EQ(dumpOf("", "0123456789abcdef", 16),
            "{\n30 31 32 33 34 35 36 37 38 39 61 62 63 64 65 66   0123456789abcdef\n}\n");
}

TEST(MemoryDump, NothingMakesNoLine) {
  EXPECT_EQ(dumpOf(nullptr, "x", 0), "{\n}\n");
  EXPECT_EQ(dumpOf(nullptr, nullptr, 7), "{\n}\n");
}

}  // namespace
