#include <string>

#include <gtest/gtest.h>

#include "Broker/SimpleXML.h"

namespace {

// What a search gives, on one line: offset, attributes and content, "-" for nothing.
std::string found(const std::string& text, const char* name, int startOffset = 0, const std::string& before = "") {
  SimpleXML attributes;
  SimpleXML content;
  const int skipped = static_cast<int>(before.size());
  int offset = SimpleXML(before + text).FindTag(name, attributes, content, skipped + startOffset);
  if (offset > 0) offset -= skipped;
  const auto shown = [](const SimpleXML& part) { return part.GetData() ? std::string(part.GetData()) : "-"; };
  return std::to_string(offset) + "|" + shown(attributes) + "|" + shown(content);
}

TEST(SimpleXML, FindsAnElementByItsWholeName) {
  const struct {
    const char* text;
    const char* result;
  } cases[] = {
      {"<a>x</a>", "8|-|x"},
      {"  <a>x</a>tail", "10|-|x"},
      {"<a  k=\"v\" l='w'>x</a>", "21|k=\"v\" l='w'|x"},
      {"<a\n>x</a\t>", "10|-|x"},
      {"<a></a>", "7|-|-"},
      {"<a/>", "4|-|-"},
      {"<a />", "5|-|-"},
      {"<a k=\"v\"/>x</a>", "10|k=\"v\"|-"},
      {"<a/b>x</a>", "10|/b|x"},
      {"<ab>n</ab><a>x</a>", "18|-|x"},                  // not the beginning of a longer name
      {"<a>1</ab>2</a>", "14|-|1</ab>2"},                // nor in the closing tag
      {"<a>1</a/>2</a>", "14|-|1</a/>2"},                // a slash doesn't end a closing name
      {"<a><b>1</b><a>2</a></a>", "19|-|<b>1</b><a>2"},  // the first closing tag ends it
      {"<!--<a>1</a>--><a>2</a>", "12|-|1"},             // comments have no meaning
      {"<<a>1<</a>", "10|-|1<"},
      {"<a>x", "-1|-|-"},
      {"<a>x</a", "-1|-|-"},
      {"<a", "-1|-|-"},
      {"<a ", "-1|-|-"},
      {"a>x</a>", "-1|-|-"},
      {"", "-1|-|-"},
  };
  std::string manyTags;  // so many that no list is made of them
  for (int i = 0; i < 200; ++i) manyTags += "<z/>";
  for (const auto& row : cases) {
    EXPECT_EQ(found(row.text, "a"), row.result) << row.text;
    EXPECT_EQ(found(row.text, "a", 0, manyTags), row.result) << row.text;
  }
}

TEST(SimpleXML, GoesOnFromAnOffsetAndRefusesOneOutside) {
  const std::string list = "<i>1</i><i>2</i>";
  EXPECT_EQ(found(list, "i", 8), "16|-|2");
  EXPECT_EQ(found(list, "i", 16), "-1|-|-");
  EXPECT_EQ(found(list, "i", 1000), "-1|-|-");
  EXPECT_EQ(found(list, "i", -1), "-1|-|-");
}

TEST(SimpleXML, AResultMayBeTheObjectItself) {
  SimpleXML attributes;
  SimpleXML xml("<o><i>x</i></o>");
  EXPECT_EQ(xml.FindTag("o", attributes, xml), 15);
  EXPECT_STREQ(xml.GetData(), "<i>x</i>");
  EXPECT_EQ(xml.FindTag("i", attributes, xml), 8);
  EXPECT_STREQ(xml.GetData(), "x");
}

TEST(SimpleXML, ResolvesEntities) {
  const struct {
    const char* raw;
    const char* text;
  } cases[] = {
      {"a&amp;b&#65;&bogus;c", "a&bAc"},
      {"&lt;&gt;&quot;&apos;", "<>\"'"},
      {"&#x41;&#X41;&#x6a;&#x6A;", "A"},  // a capital X is no digit
      {"&#228;", "\xE4"},
      {"&#321;", "A"},  // 0x141: cut to 8 bits
      {"&#66junk;!", "B!"},
      {"a & b", "a "},
      {"a&amp", "a"},
      {"&;x", "x"},
      {"&&amp;y", "y"},  // the first "&" reads up to the ";"
      {"a&#0;b", "a"},
  };
  for (const auto& row : cases) {
    SimpleXML attributes;
    SimpleXML content;
    ASSERT_GT(SimpleXML("<t>" + std::string(row.raw) + "</t>").FindTag("t", attributes, content), 0);
    EXPECT_STREQ(content.GetData(), row.text) << row.raw;
  }
}

}  // namespace
