#include "Platform/KeyedArchive.h"
#include "PythonArchive.h"
#include "Support/TemporaryFolder.h"

using namespace testing;
using orvane::KeyedArchiver;
using orvane::KeyedObject;

namespace {

// A farm's shape, with every operation and values at the borders of their sizes.
std::string sample() {
  KeyedArchiver archiver;
  archiver.encodeDictionary("root", [](KeyedArchiver& root) {
    root.encodeObjects("farms", "OvFarm", 2, [](KeyedArchiver& farm, size_t index) {
      farm.encodeString("farmName", index == 0 ? "" : "Grüße 😀 \xFF\xC3(\xED\xA0\x80" + std::string(1, '\0') + "end");
      farm.encodeString("$odd", std::string(300, 'x'));
      farm.encodeBool("doAutoLaunch", index == 0);
      farm.encodeInteger("defaultLocationIndex", index == 0 ? -1 : INT64_MAX);
      farm.encodeObject("display", "OvDisplay", [](KeyedArchiver& display) { display.encodeInteger("width", 65536); });
      farm.encodeStrings("apps", index == 0 ? std::vector<std::string>{} : std::vector<std::string>(20, "Word"));
    });
    root.encodeNumber("$index", 4294967295);
    root.encodeBool("flag", true);
  });
  archiver.encodeString("0:user:", "secret");
  archiver.encodeInteger("least", INT64_MIN);
  const std::vector<uint8_t> bytes = archiver.finish();
  return {bytes.begin(), bytes.end()};
}

TEST(KeyedArchiveTest, GivesBackWhatWasWritten) {
  const KeyedObject top = openArchive(sample());
  EXPECT_EQ(top.className(), "");
  EXPECT_THAT(top.keys(), ElementsAre("0:user:", "least", "root"));
  EXPECT_EQ(top.string("0:user:"), "secret");
  EXPECT_EQ(top.integer("least"), INT64_MIN);
  const KeyedObject root = top.dictionary("root").value();
  EXPECT_EQ(root.integer("$index"), 4294967295);
  EXPECT_EQ(root.boolean("flag"), true);
  EXPECT_EQ(root.string("none"), std::nullopt);
  const std::vector<KeyedObject> farms = root.objects("farms", "OvFarm").value();
  ASSERT_EQ(farms.size(), 2u);
  EXPECT_THAT(farms[0].keys(),
              ElementsAre("$odd", "apps", "defaultLocationIndex", "display", "doAutoLaunch", "farmName"));
  EXPECT_EQ(farms[0].className(), "OvFarm");
  EXPECT_EQ(farms[0].string("farmName"), "");
  EXPECT_EQ(farms[0].string("$odd"), std::string(300, 'x'));
  EXPECT_EQ(farms[0].boolean("doAutoLaunch"), true);
  EXPECT_EQ(farms[0].integer("defaultLocationIndex"), -1);
  EXPECT_THAT(farms[0].strings("apps"), Optional(IsEmpty()));
  EXPECT_EQ(farms[0].object("display", "OvDisplay")->integer("width"), 65536);
  EXPECT_EQ(farms[1].string("farmName"), "Grüße 😀 \uFFFD\uFFFD(\uFFFD\uFFFD\uFFFD\uFFFDend");
  EXPECT_EQ(farms[1].integer("defaultLocationIndex"), INT64_MAX);
  EXPECT_THAT(farms[1].strings("apps"), Optional(ElementsAreArray(std::vector<std::string>(20, "Word"))));
}

TEST(KeyedArchiveTest, AnotherReaderReadsWhatWasWritten) {
  const TemporaryFolder folder;
  writeFile(folder.file("archive"), sample());
  const std::string longText(300, 'x');
  std::string apps = "\"Word\"";
  for (int i = 1; i < 20; ++i) apps += ", \"Word\"";
  const std::string display = R"("display": {"$class": "OvDisplay", "width": 65536}, )";
  EXPECT_EQ(runPythonArchive("dump", folder.file("archive")),
            R"({"0:user:": "secret", "least": -9223372036854775808, "root": {"$index": 4294967295, "farms": [)"
            R"({"$class": "OvFarm", "$odd": ")" +
                longText + R"(", "apps": [], "defaultLocationIndex": -1, )" + display +
                R"("doAutoLaunch": true, "farmName": ""}, )"
                R"({"$class": "OvFarm", "$odd": ")" +
                longText + R"(", "apps": [)" + apps + R"(], "defaultLocationIndex": 9223372036854775807, )" + display +
                "\"doAutoLaunch\": false, \"farmName\": \"Grüße 😀 \uFFFD\uFFFD(\uFFFD\uFFFD\uFFFD\uFFFDend\"}], "
                R"("flag": true}})");
}

TEST(KeyedArchiveTest, ReadsWhatAnotherWriterWrote) {
  const TemporaryFolder folder;
  runPythonArchive("write", folder.file("archive"), R"({"root": {
    "farms": [{"$class": ["MCFarm", "MCRecord"], "farmName": "Büro", "userDescription": null, "$odd": 3,
               "configName": {"$mutable": "changed"}, "port": {"$number": 443}, "doReconnect": {"$number": false},
               "apps": ["a", {"$mutable": "b"}]}],
    "index": 7, "none": null}})");
  const KeyedObject root =
      openArchive(contentOf(folder.file("archive")), {{"MCFarm", "OvFarm"}}).dictionary("root").value();
  EXPECT_EQ(root.integer("index"), 7);
  EXPECT_FALSE(root.dictionary("none").has_value());
  for (const char* className : {"OvFarm", "MCRecord", "NSObject"}) {
    const KeyedObject farm = root.objects("farms", className).value().at(0);
    EXPECT_EQ(farm.className(), "OvFarm");
    EXPECT_EQ(farm.string("farmName"), "Büro");
    EXPECT_EQ(farm.string("userDescription"), std::nullopt);
    EXPECT_EQ(farm.string("configName"), "changed");
    EXPECT_EQ(farm.integer("$odd"), 3);
    EXPECT_EQ(farm.integer("port"), 443);
    EXPECT_EQ(farm.boolean("doReconnect"), false);
    EXPECT_THAT(farm.strings("apps"), Optional(ElementsAre("a", "b")));
  }
  EXPECT_THAT(failureOf([&] { root.objects("farms", "MCFarm"); }), EndsWith("\"farms\" is not of the class MCFarm"));
}

TEST(KeyedArchiveTest, AValueOfAnotherKindIsAnErrorAndNotNothing) {
  const KeyedObject root = openArchive(sample()).dictionary("root").value();
  const KeyedObject farm = root.objects("farms", "OvFarm").value().at(1);
  EXPECT_THAT(failureOf([&] { farm.boolean("farmName"); }), EndsWith("\"farmName\" is not true or false"));
  EXPECT_THAT(failureOf([&] { farm.integer("doAutoLaunch"); }), EndsWith("is not an integer"));
  EXPECT_THAT(failureOf([&] { farm.string("apps"); }), EndsWith("is not a text"));
  EXPECT_THAT(failureOf([&] { farm.strings("farmName"); }), EndsWith("is not of the class NSArray"));
  EXPECT_THAT(failureOf([&] { root.strings("farms"); }), EndsWith("is not a list of texts"));
  EXPECT_THAT(failureOf([&] { farm.object("display", "OvFarm"); }), EndsWith("is not of the class OvFarm"));
  EXPECT_THAT(failureOf([&] { farm.object("farmName", "OvFarm"); }), EndsWith("is not of the class OvFarm"));
  EXPECT_THAT(failureOf([&] { farm.objects("apps", "OvFarm"); }), EndsWith("is not of the class OvFarm"));
  EXPECT_THAT(failureOf([&] { farm.dictionary("apps"); }), EndsWith("is not of the class NSDictionary"));
  EXPECT_THAT(failureOf([] { KeyedArchiver().encodeNumber("n", uint64_t{1} << 63); }), HasSubstr("too large"));
}

}  // namespace
