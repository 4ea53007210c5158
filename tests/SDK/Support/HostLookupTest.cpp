#include <cstring>

#include <unistd.h>

#include "Support/HostLookup.h"

namespace {

// Names that the resolver settles on this machine.
const std::string kTooLong(300, 'a');

struct LookupCase {
  std::string name;
  size_t canonicalSize, addressSize;
  int result;
  std::string address;
};

TEST(HostLookup, StoresTheFirstAddressOrNothingAtAll) {
  const LookupCase cases[] = {
      {"127.0.0.1", 64, 64, 0, "127.0.0.1"},
      {"255.1.20.0", 64, 64, 0, "255.1.20.0"},
      {"localhost", 64, 64, 0, "127.0.0.1"},
      {"localhost", 0, 10, 0, "127.0.0.1"},
      {"localhost", 64, 9, -1, ""},
      {"localhost", 5, 64, -1, ""},
      {"::1", 64, 64, -1, ""},
      {"", 64, 64, -1, ""},
      {kTooLong, 64, 64, -1, ""},
  };
  for (const LookupCase& row : cases) {
    SCOPED_TRACE(row.name);
    char canonical[64] = "left over";
    char address[64] = "left over";
    EXPECT_EQ(ovutils_get_host_by_name(row.name.c_str(), canonical, row.canonicalSize, address, row.addressSize),
              row.result);
    EXPECT_EQ(address, row.address);
    if (row.canonicalSize == 0) {
      EXPECT_STREQ(canonical, "left over");
    } else {
      EXPECT_EQ(*canonical != '\0', row.result == 0);
    }
  }
}

TEST(HostLookup, BuffersAreOptional) {
  EXPECT_EQ(tcpGetHostByName("127.0.0.1", nullptr, 5, nullptr, 5), 0);
  EXPECT_EQ(tcpGetHostByName(nullptr, nullptr, 0, nullptr, 0), -1);
  char buffer[4] = "abc";
  EXPECT_EQ(tcpGetHostByName("127.0.0.1", nullptr, 0, buffer, 0), -1);
  EXPECT_STREQ(buffer, "abc");
  EXPECT_EQ(tcpGetHostName(nullptr, 5), -1);
  EXPECT_EQ(tcpGetIPAddress(nullptr, 5), -1);
}

TEST(HostLookup, TheOwnNameFitsOrIsNotStored) {
  char expected[256] = {};
  ASSERT_EQ(gethostname(expected, sizeof expected - 1), 0);
  const size_t length = strlen(expected);
  char name[256] = {};
  EXPECT_EQ(ovutils_get_hostname(name, length + 1), 0);
  EXPECT_STREQ(name, expected);
  EXPECT_EQ(ovutils_get_hostname(name, length), -1);
  EXPECT_STREQ(name, "");
}

TEST(HostLookup, ThreadsGetTheirOwnAnswers) {
  std::vector<std::string> answers(4);
  std::vector<std::thread> threads;
  for (size_t i = 0; i < answers.size(); ++i) {
    threads.emplace_back([&answers, i] {
      const std::string name = "127.0.0." + std::to_string(i);
      for (int round = 0; round < 100; ++round) {
        char address[64] = {};
        tcpGetHostByName(name.c_str(), nullptr, 0, address, sizeof address);
        answers[i] = address;
      }
    });
  }
  for (std::thread& thread : threads) thread.join();
  EXPECT_THAT(answers, testing::ElementsAre("127.0.0.0", "127.0.0.1", "127.0.0.2", "127.0.0.3"));
}

}  // namespace
