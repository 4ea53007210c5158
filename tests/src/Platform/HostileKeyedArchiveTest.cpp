// Archives that lie, at both levels: the property list's bytes, and the objects that it holds.

#include "Platform/KeyedArchive.h"
#include "PythonArchive.h"
#include "Support/TemporaryFolder.h"

using namespace testing;
using namespace std::string_literals;
using orvane::KeyedArchiver;

namespace {

std::string bigEndian(uint64_t value, int size) {
  std::string bytes;
  for (int shift = 8 * (size - 1); shift >= 0; shift -= 8) bytes += static_cast<char>(value >> shift & 0xFF);
  return bytes;
}

// A property list of these encoded objects, the first of which is the root, with references and offsets of `size`
// bytes.
std::string propertyList(const std::vector<std::string>& objects, int size = 1) {
  std::string bytes = "bplist00";
  std::string offsets;
  for (const std::string& object : objects) {
    offsets += bigEndian(bytes.size(), size);
    bytes += object;
  }
  const size_t table = bytes.size();
  return bytes + offsets + bigEndian(0, 6) + bigEndian(size, 1) + bigEndian(size, 1) + bigEndian(objects.size(), 8) +
         bigEndian(0, 8) + bigEndian(table, 8);
}

std::string replaced(std::string bytes, size_t fromEnd, const std::string& by) {
  return bytes.replace(bytes.size() - fromEnd, by.size(), by);
}

TEST(HostileKeyedArchiveTest, BytesThatAreNoSoundPropertyListAreRefused) {
  const std::string good = propertyList({"\xA1\1", "\x51x"});
  std::vector<std::string> twice;  // 40 arrays that hold the next one twice
  std::vector<std::string> deep;
  for (char i = 1; i <= 40; ++i) {
    twice.push_back("\xA2"s + i + i);
    deep.push_back("\xA1"s + i);
  }
  for (auto* objects : {&twice, &deep}) objects->push_back("\x08");
  // 1,000 references to a text of 60,000 bytes.
  std::string longReferences;
  for (int i = 0; i < 1000; ++i) longReferences += "\0\1"s;
  const std::string manyTimes = "\xAF\x11\x03\xE8"s + longReferences;
  const std::string longText = "\x5F\x11\xEA\x60"s + std::string(60000, 'x');

  const std::pair<std::string, const char*> cases[] = {
      {good, "no dictionary"},  // the property list itself is sound
      {propertyList({"\xA2\1\2"s, "\x12\xFF\xFF\xFF\xFF"s, "\x83\xFF\xFF\xFF\xFF"s}, 1), "no dictionary"},
      {"", "there is none"},
      {"<?xml version=\"1.0\"?><plist version=\"1.0\"><dict/></plist>", "not a binary one"},
      {"bplist00", "not a binary one"},
      {replaced(good, 26, "\0"s), "sizes of offsets"},
      {replaced(good, 26, "\x09"), "sizes of offsets"},
      {replaced(good, 25, "\0"s), "sizes of offsets"},
      {replaced(good, 24, bigEndian(3, 8)), "table of offsets"},
      {replaced(good, 24, bigEndian(UINT64_MAX, 8)), "table of offsets"},
      {replaced(good, 16, bigEndian(2, 8)), "isn't there"},
      {replaced(good, 8, bigEndian(0, 8)), "table of offsets"},
      {replaced(good, 8, bigEndian(UINT64_MAX, 8)), "table of offsets"},
      {replaced(good, 34, "\7"), "offset is not one"},
      {replaced(good, 34, "\xC"), "offset is not one"},
      {propertyList({"\xA1\2"}), "isn't there"},
      {propertyList({"\xA2\1"}), "reaches beyond"},
      {propertyList({"\xAF\x13\x80\0\0\0\0\0\0\1\0"s}), "reaches beyond"},  // twice that is 2 again
      {propertyList({"\xDF\x13\x80\0\0\0\0\0\0\1\0"s}), "reaches beyond"},
      {propertyList({"\x6F\x13\x80\0\0\0\0\0\0\1\0\0"s}), "reaches beyond"},
      {propertyList({"\x5F\x14"}), "a count is not"},
      {propertyList({"\x5F\x13"}), "reaches beyond"},
      {propertyList({"\x5F"}), "reaches beyond"},
      {propertyList({"\x53xy"}), "reaches beyond"},
      {propertyList({"\x13\1"}), "reaches beyond"},
      {propertyList({"\x15"}), "no known kind"},
      {propertyList({"\x14\0\0\0\0\0\0\0\0\x80\0\0\0\0\0\0\0"s}), "63 bits"},
      {propertyList({"\x14\0\0\0\0\0\0\0\1\0\0\0\0\0\0\0\0"s}), "63 bits"},
      {propertyList({"\x23\1"}), "reaches beyond"},
      {propertyList({"\x24"}), "no known kind"},
      {propertyList({"\x33\1"}), "reaches beyond"},
      {propertyList({"\x82\1\1\1"}), "no known kind"},
      {propertyList({"\x87\0\0\0\1\0\0\0\0"s}), "32 bits"},
      {propertyList({"\0"s}), "no known kind"},
      {propertyList({"\xC0"}), "no known kind"},
      {propertyList({"\x52g\xFC"}), "ASCII"},
      {propertyList({"\xD1\1\2",
                     "\x53"
                     "a\0b"s,
                     "\x08"}),
       "ASCII"},
      {propertyList({"\xD1\1\2", "\x62\0a\0\0"s, "\x08"}), "UTF-16"},
      {propertyList({"\x61\xD8\0"s}), "UTF-16"},
      {propertyList({"\x62\xD8\0\0a"s}), "UTF-16"},
      {propertyList({"\x61\xDC\0"s}), "UTF-16"},
      {propertyList({"\xD1\1\1", "\x08"}), "a key is not"},
      {propertyList({"\xA1\0"s}), "nested too deeply"},
      {propertyList(deep), "nested too deeply"},
      {propertyList(twice), "too"},
      {propertyList({manyTimes, longText}, 2), "too much"},
  };
  for (const auto& [bytes, words] : cases) {
    EXPECT_THAT(failureOf([&] { openArchive(bytes); }), HasSubstr(words)) << PrintToString(bytes.substr(0, 80));
  }
  for (const int size : {2, 3, 5, 8}) {
    const std::string reference = bigEndian(1, size);
    EXPECT_THAT(failureOf([&] {
                  openArchive(propertyList({"\xA1" + reference, "\x51x"}, size));
                }),
                HasSubstr("no dictionary"));
  }
}

TEST(HostileKeyedArchiveTest, ObjectsThatDontMakeAnArchiveAreRefused) {
  constexpr const char* kRefused[][2] = {
      {R"({"$version": 100000, "$archiver": "Other", "$objects": ["$null"], "$top": {}})", "another archiver"},
      {R"({"$version": 100000, "$objects": ["$null"], "$top": {}})", "no $archiver"},
      {R"({"$version": 100000, "$archiver": 5, "$objects": ["$null"], "$top": {}})", "no $archiver"},
      {R"({"$version": 1, "$archiver": "NSKeyedArchiver", "$objects": ["$null"], "$top": {}})", "another version"},
      {R"({"$archiver": "NSKeyedArchiver", "$objects": ["$null"], "$top": {}})", "no $version"},
      {R"({"$version": 100000, "$archiver": "NSKeyedArchiver", "$objects": ["$null"]})", "no $top"},
      {R"({"$version": 100000, "$archiver": "NSKeyedArchiver", "$objects": ["$null"], "$top": []})", "no $top"},
      {R"({"$version": 100000, "$archiver": "NSKeyedArchiver", "$top": {}})", "no $objects"},
      {R"({"$version": 100000, "$archiver": "NSKeyedArchiver", "$objects": {}, "$top": {}})", "no $objects"},
      {R"({"$version": 100000, "$archiver": "NSKeyedArchiver", "$objects": [], "$top": {}})", "not nil"},
      {R"({"$version": 100000, "$archiver": "NSKeyedArchiver", "$objects": [{}], "$top": {}})", "not nil"},
  };
  constexpr const char* kRefusedObjects[][2] = {
      {R"(1], "$top": {"root": {"$uid": 2}})", "isn't there"},
      {R"(1], "$top": {"root": {"$uid": 4294967295}})", "isn't there"},
      {R"({"$class": {"$uid": 9}}], "$top": {})", "isn't there"},
      {R"({"$class": 1}], "$top": {})", "class is not a reference"},
      {R"({"$class": {"$uid": 0}}], "$top": {})", "has no name"},
      {R"({"$class": {"$uid": 2}}, {"$classname": 5}], "$top": {})", "has no name"},
      {R"({"a": {"$uid": 1}}], "$top": {"root": {"$uid": 1}})", "circle"},
      {R"({"a": [[{"$uid": 2}]]}, {"b": {"c": {"$uid": 1}}}], "$top": {"root": {"$uid": 1}})", "circle"},
  };
  std::string all = "{";
  std::map<std::string, const char*> words;
  const auto add = [&](const std::string& archive, const char* expected) {
    const std::string name = std::to_string(words.size());
    all += (words.empty() ? "\"" : ", \"") + name + "\": " + archive;
    words[name] = expected;
  };
  for (const auto& [archive, expected] : kRefused) add(archive, expected);
  for (const auto& [rest, expected] : kRefusedObjects) {
    add(R"({"$version": 100000, "$archiver": "NSKeyedArchiver", "$objects": ["$null", )"s + rest + "}", expected);
  }
  const TemporaryFolder folder;
  ASSERT_EQ(runPythonArchive("property-lists", folder.path(), all + "}"), "");
  for (const auto& [name, expected] : words) {
    EXPECT_THAT(failureOf([&] { openArchive(contentOf(folder.file(name))); }), HasSubstr(expected)) << name;
  }
}

// Archives of `depth` objects, each of which refers to the next one `width` times.
std::string chain(size_t depth, size_t width) {
  std::string objects = "\"$null\"";
  for (size_t i = 1; i <= depth; ++i) {
    objects += R"(, {"a": {"$repeat": [)" + std::to_string(width) + R"(, {"$uid": )" + std::to_string(i + 1) + "}]}}";
  }
  return R"({"$version": 100000, "$archiver": "NSKeyedArchiver", "$objects": [)" + objects +
         R"(, "end"], "$top": {"root": {"$uid": 1}}})";
}

TEST(HostileKeyedArchiveTest, WhatARecursiveReaderMeetsIsBounded) {
  const TemporaryFolder folder;
  ASSERT_EQ(
      runPythonArchive("property-lists", folder.path(),
                       R"({"deepest": )" + chain(63, 1) + R"(, "deeper": )" + chain(64, 1) + R"(, "far": )" +
                           chain(1000, 1) + R"(, "bomb": )" + chain(60, 2) + R"(, "wide": )" + chain(3, 500) + "}"),
      "");
  const auto failure = [&](const char* name) { return failureOf([&] { openArchive(contentOf(folder.file(name))); }); };
  EXPECT_EQ(failure("deepest"), "");
  EXPECT_THAT(failure("deeper"), HasSubstr("too deeply"));
  EXPECT_THAT(failure("far"), HasSubstr("too deeply"));
  EXPECT_THAT(failure("bomb"), HasSubstr("too much"));
  EXPECT_THAT(failure("wide"), HasSubstr("too much"));
}

TEST(HostileKeyedArchiveTest, AVeryLongListIsRead) {
  KeyedArchiver archiver;
  archiver.encodeStrings("root", std::vector<std::string>(200000, "x"));
  EXPECT_EQ(orvane::openKeyedArchive(archiver.finish()).strings("root")->size(), 200000u);
}

// Whatever a single byte is changed to, and wherever the bytes end: an archive or a clean error.
TEST(HostileKeyedArchiveTest, DamageAnywhereIsAnErrorOrAnotherArchive) {
  KeyedArchiver archiver;
  archiver.encodeDictionary("root", [](KeyedArchiver& root) {
    root.encodeObjects("farms", "OvFarm", 2, [](KeyedArchiver& farm, size_t) {
      farm.encodeString("name", "Büro");
      farm.encodeInteger("width", 1000);
    });
  });
  const std::vector<uint8_t> good = archiver.finish();
  const auto read = [](std::span<const uint8_t> bytes) {
    return failureOf([&] {
      const auto root = orvane::openKeyedArchive(bytes).dictionary("root");
      if (!root) return;
      for (const auto& farm : root->objects("farms", "OvFarm").value_or(std::vector<orvane::KeyedObject>())) {
        farm.string("name");
        farm.integer("width");
      }
    });
  };
  ASSERT_EQ(read(good), "");
  for (size_t size = 0; size < good.size(); ++size) EXPECT_NE(read(std::span(good).first(size)), "") << size;
  for (size_t i = 0; i < good.size(); ++i) {
    std::vector<uint8_t> bytes = good;
    for (const unsigned int change : {0x01, 0x0F, 0x10, 0x80, 0xFF}) {
      bytes[i] = static_cast<uint8_t>(good[i] ^ change);
      read(bytes);
    }
  }
}

}  // namespace
