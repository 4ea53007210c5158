#include "Support/OvException.h"
#include "Support/OvUrlParser.h"

namespace {

using Parameters = std::map<std::string, std::string>;

struct SplitCase {
  std::string text, scheme, host;
  int32_t port;
  std::string path, query;
};

TEST(OvUrlParser, SplitsATextIntoItsParts) {
  const SplitCase cases[] = {
      {"https://broker", "https", "broker", -1, "", ""},
      {"https://broker:8443/a/b?c=d?e", "https", "broker", 8443, "/a/b", "c=d?e"},
      {"https://broker/a?b", "https", "broker", -1, "/a", "b"},
      {"https://broker/a?", "https", "broker", -1, "/a", ""},
      {"orvane://host?a=b", "orvane", "", -1, "host", "a=b"},
      {"orvane:///launch?a=b", "orvane", "", -1, "launch", "a=b"},
      {"orvane:///launch", "orvane", "launch", -1, "", ""},
      {"orvane:///launch/x?a=b", "orvane", "launch", -1, "/x", "a=b"},
      {"://", "", "", -1, "", ""},
      // Slashes and colons count wherever they stand.
      {"http://host?u=a/b?c", "http", "host?u=a", -1, "/b", "c"},
      {"http://host/a?b=http:///c", "http://host/a?b=http", "c", -1, "", ""},
      {"http://host/a?b=c:80", "http", "host/a?b=c", 80, "", ""},
      {"http://host:80?a=b", "http", "host", 80, "", ""},
      // The port as atoi reads it.
      {"http://h:1/", "http", "h", 1, "/", ""},
      {"http://h:65535", "http", "h", 65535, "", ""},
      {"http://h: \t+0080x9/", "http", "h", 80, "/", ""},
  };
  for (const SplitCase& row : cases) {
    SCOPED_TRACE(row.text);
    OvUrlParser parser;
    parser.parse(row.text);
    EXPECT_EQ(parser.url(), row.text);
    EXPECT_EQ(parser.scheme(), row.scheme);
    EXPECT_EQ(parser.host(), row.host);
    EXPECT_EQ(parser.port(), row.port);
    EXPECT_EQ(parser.path(), row.path);
    EXPECT_EQ(parser.query(), row.query);
  }
}

TEST(OvUrlParser, RefusesATextWithoutMarkerOrWithABadPort) {
  const std::string texts[] = {"",
                               "broker",
                               "https:/broker",
                               "https//broker",
                               "http://h:",
                               "http://h:/a",
                               "http://h:0",
                               "http://h:65536",
                               "http://h:-80",
                               "http://h:x80",
                               "http://h:4294967376",  // 80 in 32 bits
                               "http://h:" + std::string(1000, '9'),
                               "http://h/a?b=c:d",
                               "http://h:+-80"};
  for (const std::string& text : texts) {
    SCOPED_TRACE(text);
    try {
      OvUrlParser().parse(text);
      ADD_FAILURE();
    } catch (const OvException& exception) {
      EXPECT_EQ(exception.getErrorCode(), 0);
      EXPECT_EQ(exception.getErrorText(), "Invalid URL specified.");
    }
  }
}

TEST(OvUrlParser, ReadsTheQuerysPairs) {
  const std::pair<std::string, Parameters> cases[] = {
      {"a=1&b=2", {{"a", "1"}, {"b", "2"}}},
      {"a=1&a=2", {{"a", "1"}}},
      {"a=%41&b=c=d==", {{"a", "%41"}, {"b", "c=d=="}}},
      {"a=&=b", {{"a", ""}, {"", "b"}}},
      {"a&b=c&d=e", {{"a&b", "c"}, {"b", "c"}, {"d", "e"}}},
      {"a=1&b&c=d", {{"a", "1"}, {"b&c", "d"}, {"c", "d"}}},
      {"a=1&b", {{"a", "1"}, {"b", ""}}},
      {"a=1&b&c", {{"a", "1"}, {"b", ""}, {"c", ""}}},
      {"a", {{"a", ""}}},
      {"", {}},
  };
  for (const auto& [query, parameters] : cases) {
    OvUrlParser parser;
    parser.parse("orvane://host/?" + query);
    EXPECT_EQ(parser.parameters(), parameters) << query;
  }
}

TEST(OvUrlParser, ASecondParseKeepsNothingOfTheFirst) {
  OvUrlParser parser;
  parser.parse("http://a:80/b?c=d");
  parser.parse("https://e");
  EXPECT_EQ(parser.host(), "e");
  EXPECT_EQ(parser.port(), -1);
  EXPECT_EQ(parser.path() + parser.query(), "");
  EXPECT_TRUE(parser.parameters().empty());
  parser.parse(parser.url());
  EXPECT_EQ(parser.host(), "e");
  EXPECT_THROW(parser.parse("nothing"), OvException);
  EXPECT_EQ(parser.host() + parser.scheme(), "");
}

TEST(OvUrlParser, AQueryOfValuelessPartsCantExhaustMemory) {
  std::string parts;
  for (int i = 0; i < 100000; ++i) parts += "a&";
  OvUrlParser parser;
  EXPECT_THROW(parser.parse("orvane://h/?" + parts + "=b"), OvException);
  EXPECT_NO_THROW(parser.parse("orvane://h/?" + parts));
  EXPECT_NO_THROW(parser.parse("orvane://h/?a=" + std::string(4000000, 'b')));
}

}  // namespace
