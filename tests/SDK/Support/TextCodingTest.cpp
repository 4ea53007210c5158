#include <clocale>
#include <cstdlib>

#include "Support/TextCoding.h"

namespace {

using CText = std::unique_ptr<char, decltype(&free)>;

struct CodingCase {
  std::string singleByte, utf8;
};

// Text of every length and with its one odd byte at every place crosses each boundary between words and single bytes.
std::vector<CodingCase> casesOfBothDirections() {
  std::vector<CodingCase> cases = {
      {"", ""},
      {"\xE9", "\xC3\xA9"},
      {"\x80\x9F", "\xC2\x80\xC2\x9F"},
      {"\xBF\xC0\xFF", "\xC2\xBF\xC3\x80\xC3\xBF"},
      {"\xC3\xA9", "\xC3\x83\xC2\xA9"},
  };
  for (size_t length = 0; length < 20; ++length) {
    for (size_t place = 0; place <= length; ++place) {
      const std::string before(place, 'x');
      const std::string behind(length - place, 'y');
      cases.push_back({before + "\xFC" + behind, before + "\xC3\xBC" + behind});
    }
  }
  return cases;
}

TEST(TextCoding, EveryByteIsTheCodePointOfItsValueInBothDirections) {
  for (const CodingCase& row : casesOfBothDirections()) {
    EXPECT_EQ(orvane::cp1252ToUtf8(row.singleByte), row.utf8);
    EXPECT_EQ(orvane::utf8ToCp1252(row.utf8), row.singleByte);
    EXPECT_EQ(std::string(CText(ovutils_cp1252_to_utf8(row.singleByte.c_str()), &free).get()), row.utf8);
    EXPECT_EQ(std::string(CText(ovutils_utf8_to_cp1252(row.utf8.c_str()), &free).get()), row.singleByte);
  }
}

TEST(TextCoding, TowardsASingleByteWhatHasNoRuleStays) {
  const CodingCase cases[] = {
      {"\xE2\x82\xAC", "\xE2\x82\xAC"},  // the euro sign's three bytes
      {"\xF0\x9F\x98\x80 \xE9", "\xF0\x9F\x98\x80 \xC3\xA9"},
      {"a\xC3", "a\xC3"},  // nothing follows the lead byte
      {"a\xC2", "a\xC2"},
      {"\xC1", "\xC3\x41"},  // whatever follows is taken
      {"\x81", "\xC2\x41"},
      {"\xC3\xC3", "\xC3\xC3\xC3"},
  };
  for (const CodingCase& row : cases) {
    EXPECT_EQ(orvane::utf8ToCp1252(row.utf8), row.singleByte);
    EXPECT_EQ(std::string(CText(ovutils_utf8_to_cp1252(row.utf8.c_str()), &free).get()), row.singleByte);
  }
}

TEST(TextCoding, NullStaysNullAndAZeroByteInAStringStays) {
  EXPECT_EQ(ovutils_cp1252_to_utf8(nullptr), nullptr);
  EXPECT_EQ(ovutils_utf8_to_cp1252(nullptr), nullptr);
  EXPECT_EQ(orvane::cp1252ToUtf8(std::string("\0\xE9", 2)), std::string("\0\xC3\xA9", 3));
  EXPECT_EQ(orvane::utf8ToCp1252(std::string("\0\xC3\xA9", 3)), std::string("\0\xE9", 2));
}

TEST(TextCoding, WideTextFollowsTheLocale) {
  const std::string before = setlocale(LC_CTYPE, nullptr);
  ASSERT_NE(setlocale(LC_CTYPE, "C.UTF-8"), nullptr);
  for (const std::wstring& wide : {std::wstring(), std::wstring(L"plain"), std::wstring(L"\u00E9\u20AC\U0001F600")}) {
    EXPECT_EQ(ovutils_string_to_wstring(ovutils_wstring_to_string(wide)), wide);
  }
  EXPECT_EQ(ovutils_wstring_to_string(L"a\u20AC"), "a\xE2\x82\xAC");
  EXPECT_EQ(ovutils_string_to_wstring("good \xFF"), L"");
  setlocale(LC_CTYPE, "C");
  EXPECT_EQ(ovutils_wstring_to_string(L"good \u20AC"), "");
  setlocale(LC_CTYPE, before.c_str());
}

TEST(TextCoding, AWindowsLocaleIsMadeOfAUtf8LocaleOnly) {
  const std::string language(120, 'a');
  const std::pair<std::string, std::string> cases[] = {
      {"en_US.UTF-8", "en-us"},
      {"de_DE.utf-8", "de-de"},
      {"de_DE", ""},
      {"de.UTF-8", ""},
      {"de_DE.ISO8859-1", ""},
      {"de_DE.UTF-8@euro", ""},
      {"de_DE.", ""},
      {"", ""},
      {"de_DE.UTF8", ""},
      {".UTF-8", ""},
      {"_.UTF-8", "-"},
      {"C", ""},
      {language + "_X.UTF-8", language + "-x"},  // 128 bytes
      {language + "_XY.UTF-8", ""},
  };
  for (const auto& [posix, windows] : cases) EXPECT_EQ(ovutils_get_windows_locale(posix.c_str()), windows) << posix;
  EXPECT_EQ(ovutils_get_windows_locale(nullptr), "");
}

}  // namespace
