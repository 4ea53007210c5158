#include "Model/FoldCase.h"
#include "Model/WildcardPattern.h"

namespace {

struct Case {
  std::string pattern;
  std::vector<std::string> matching;
  std::vector<std::string> others;
};

const Case kCases[] = {
    {"", {""}, {"a"}},
    {"abc", {"abc", "ABC"}, {"", "ab", "abcd", "xabc"}},
    {"*", {"", "any thing"}, {}},
    {"a*c", {"ac", "abc", "acc", "aXcYc"}, {"a", "ca", "acd", "bac"}},
    {"**a**b**", {"ab", "xaxbx"}, {"ba", "a", "b"}},
    {"*ab*ba*", {"abba", "ab ba"}, {"aba"}},
    {"*ab", {"ab", "abab"}, {"aba", "b"}},
    {"aa*aa", {"aaaa", "aa aa"}, {"aa", "aaa"}},
    {"?", {"a", "\u00e9", "\U0001F5A5", "\xFF"}, {"", "ab"}},
    {"*?b?*c?", {"ab.c.", "\u00e9b\u00e9\u00e9c\u00e9"}, {"b.c.", "ab.c", "abc."}},
    {"*a??d*", {"abcd", "aabcd", "a\u00e9\u00e9d"}, {"abd", "a\u00e9d"}},
    {"??*", {"ab", "abc"}, {"", "a", "\u00e9"}},
    {"*??", {"ab", "abc"}, {"", "\u00e9"}},
    {"*\\**", {"*", "2*3"}, {"", "x", "\\"}},
    {"\\?\\\\\\x", {"?\\x"}, {"a\\x", "?\\\\x"}},
    {"x\\", {"x\\"}, {"x"}},
    {"\\\u00e9", {"\u00c9"}, {"e"}},
    {"ÉÀ*ς", {"éàΣ", "ÉÀ…σ"}, {"eas"}},
    {"Ж\u212A", {"жk", "ЖK"}, {"ж"}},
    {"stra\u00dfe", {"STRA\u1e9eE"}, {"strasse"}},
    {"i", {"I"}, {"\u0130", "\u0131"}},
    {"a\xC3", {"A\xC3", "a\xFE"}, {"a", "a\u00c3"}},
};

TEST(WildcardPattern, MatchesWholeTexts) {
  for (const auto& [pattern, matching, others] : kCases) {
    const orvane::WildcardPattern wildcards(pattern);
    for (const std::string& text : matching)
      EXPECT_TRUE(wildcards.matchesFolded(orvane::foldCase(text))) << pattern << " " << text;
    for (const std::string& text : others)
      EXPECT_FALSE(wildcards.matchesFolded(orvane::foldCase(text))) << pattern << " " << text;
  }
}

TEST(WildcardPattern, StarsDoNotMultiplyTheWork) {
  std::string pattern;
  for (int count = 0; count < 10'000; ++count) pattern += "*a";
  const std::string text(100'000, 'a');
  EXPECT_TRUE(orvane::WildcardPattern(pattern + "*").matchesFolded(text));
  EXPECT_FALSE(orvane::WildcardPattern(pattern + "*b").matchesFolded(text));
}

}  // namespace
