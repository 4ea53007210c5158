#include <algorithm>
#include <climits>

#include "Support/BuiltInMessages.h"

namespace {

const std::string kLocales[] = {"en-us", "de-de", "es-es", "fr-fr", "ja-jp", "ko-kr", "zh-cn", "zh-hk"};

TEST(BuiltInMessages, EveryLanguageHasItsOwnFiveMessages) {
  for (int index = kMessageErrorOccurred; index <= kMessageUnsupportedProtocol; ++index) {
    std::vector<std::string> texts;
    for (const std::string& locale : kLocales) texts.push_back(i18n_get_locale_string(locale.c_str(), index));
    EXPECT_THAT(texts, testing::Each(testing::Not(testing::IsEmpty())));
    std::sort(texts.begin(), texts.end());
    EXPECT_EQ(std::unique(texts.begin(), texts.end()), texts.end()) << index;
  }
}

// The result is used as a format with the code as its only argument.
TEST(BuiltInMessages, OnlyTheFirstMessageHoldsADirectiveAndInChineseNoneDoes) {
  for (const std::string& locale : kLocales) {
    for (int index = kMessageErrorOccurred; index <= kMessageUnsupportedProtocol; ++index) {
      const std::string text = i18n_get_locale_string(locale.c_str(), index);
      const bool hasDirective = index == kMessageErrorOccurred && !locale.starts_with("zh");
      EXPECT_EQ(std::count(text.begin(), text.end(), '%'), hasDirective ? 1 : 0) << text;
      EXPECT_EQ(text.find("%d") != std::string::npos, hasDirective) << text;
    }
  }
  EXPECT_THAT(i18n_get_locale_string("zh-hk", kMessageErrorOccurred), testing::HasSubstr("\xEF\xBC\x85"
                                                                                         "d"));
}

TEST(BuiltInMessages, AnyOtherLocaleIsEnglishAndAnyOtherIndexEmpty) {
  for (const char* locale : {"en-us", "en-US", "de-DE", "de", "de-de ", "", static_cast<const char*>(nullptr)}) {
    EXPECT_STREQ(i18n_get_locale_string(locale, kMessageAccessDenied), "Access denied.");
  }
  EXPECT_STREQ(i18n_get_locale_string("fr-fr", kMessageAccessDenied), "Acc\u00E8s refus\u00E9.");
  for (const int index : {-1, 5, INT_MAX, INT_MIN}) EXPECT_STREQ(i18n_get_locale_string("de-de", index), "");
}

}  // namespace
