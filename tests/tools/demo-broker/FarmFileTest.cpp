#include <algorithm>

#include <png.h>

#include "Support/TemporaryFolder.h"
#include "Support/ico2png.h"
#include "demo-broker/FarmFile.h"
#include "demo-broker/IconStrings.h"

using namespace orvane::demo;

namespace {

TEST(FarmFileTest, TellsWhereAndWhatIsWrong) {
  const struct {
    const char* xml;
    const char* message;
  } cases[] = {
      {"<farm name='x'>\n<user name='a'></farm>", "line 2: Start-end tags mismatch"},
      {"<house/>", "line 1: the root is not <farm>"},
      {"<farm/>", "line 1: <farm> needs the attribute name"},
      {"<farm name='x' colour='red'/>", "line 1: <farm> has no attribute colour"},
      {"<farm name='x'>\n\n<door/></farm>", "line 3: <farm> holds no <door>"},
      {"<farm name='x'>\nhello</farm>", "line 2: text has no meaning in <farm>"},
      {"<farm name='x' anonymous='maybe'/>", "line 1: anonymous=\"maybe\" is neither yes nor no"},
      {"<farm name='x'><cookies uses='-1'/></farm>", "line 1: uses=\"-1\" is no number"},
      {"<farm name='x'><cookies uses='99999999999'/></farm>", "line 1: uses=\"99999999999\" is no number"},
      {"<farm name='x'><folder name='f'><user name='a'/></folder></farm>", "line 1: <folder> holds no <user>"},
      {"<farm name='x'><application name='a' icon='none'/></farm>", "line 1: the icon none.png can't be read"},
      {"<farm name='x'><application name='a' icon='bad'/></farm>", "line 1: bad.png: no PNG picture: "},
      {"<farm name='x'><file path='/p' source='gone'/></farm>", "line 1: the file gone can't be read"},
      {"<farm name='x'><session domain='d'/></farm>", "line 1: <session> needs the attribute uname"},
      {"<farm name='x'><ticket text='a:b' user='u'/></farm>", "line 1: the text of a ticket can't hold a colon"},
      {"<farm name='x'><ticket text='t' user='u'/></farm>", "line 1: no user of this domain and name"},
      {"<farm name='x'><fault kind='stall' nth='0'/></farm>", "line 1: a fault counts from 1"},
      {"<farm name='x'><fault kind='odd'/></farm>", "line 1: kind=\"odd\" is no kind of fault"},
      {"<farm name='x'><fault kind='status' status='99'/></farm>", "line 1: a status lies between 200 and 599"},
      {"<farm name='x'><fault kind='refuse' status='500'/></farm>", "line 1: <fault> has no attribute status"},
      {"<farm name='x'><fault kind='stall' request='login'/></farm>",
       "line 1: request=\"login\" is neither a message nor a path"},
  };
  const TemporaryFolder folder;
  writeFile(folder.file("bad.png"), "\x89PNG\r\n\x1a\n and then nothing");
  for (const auto& [xml, message] : cases) {
    const std::string file = folder.file("farm.xml");
    writeFile(file, xml);
    try {
      loadFarmFile(file);
      ADD_FAILURE() << xml;
    } catch (const FarmFileError& error) {
      EXPECT_THAT(error.what(), testing::StartsWith(file + ": " + message));
    }
  }
  EXPECT_THROW(loadFarmFile(folder.path()), FarmFileError);
}

TEST(FarmFileTest, ApplicationsTakeOverWhatStandsAroundThem) {
  const FarmDescription farm = parseFarm(R"(<farm name="x">
      <launch servername="A" protocol="1"/>
      <folder name="f" groups="g h" servername="B">
        <application name="in"/><application name="own" groups="k" servername="C"/></folder>
      <application name="out" errorcode="7"/></farm>)",
                                         "x", {});
  const Application &in = farm.applications.at(0), &own = farm.applications.at(1), &out = farm.applications.at(2);
  EXPECT_EQ(in.folder + own.folder + out.folder, "ff");
  EXPECT_EQ(in.groups, (std::set<std::string>{"g", "h"}));
  EXPECT_EQ(own.groups, (std::set<std::string>{"k"}));
  EXPECT_TRUE(out.groups.empty());
  EXPECT_EQ(in.launch.at("servername") + own.launch.at("servername") + out.launch.at("servername"), "BCA");
  EXPECT_EQ(in.launch.at("protocol"), "1");
  EXPECT_EQ(out.refusal.value().code, 7);
}

TEST(FarmFileTest, TheSampleFarmIsWhole) {
  const FarmDescription farm = sampleFarm();
  EXPECT_GE(farm.applications.size(), 40u);
  for (const Application& application : farm.applications) {
    ASSERT_TRUE(application.icon) << application.name;
    const auto image = ico2png_decode_icon_string(application.icon->large);
    ASSERT_TRUE(image && image->width == 32) << application.name;
    EXPECT_EQ(image->rgba[3], 0) << "the tile's corner is round";
    EXPECT_EQ(image->rgba[4 * (3 * 32 + 16) + 3], 255);
    EXPECT_TRUE(ico2png_decode_icon_string(application.icon->small)) << application.name;
  }
  const auto path = farm.configuration.value().path;
  EXPECT_TRUE(std::any_of(farm.files.begin(), farm.files.end(), [&](const auto& file) { return file.path == path; }));
}

std::string pngOf(uint32_t width, uint32_t height, const std::vector<uint32_t>& abgr) {
  png_image image{};
  image.version = PNG_IMAGE_VERSION;
  image.width = width;
  image.height = height;
  image.format = PNG_FORMAT_RGBA;
  png_alloc_size_t size = 0;
  png_image_write_to_memory(&image, nullptr, &size, 0, abgr.data(), 0, nullptr);
  std::string png(size, '\0');
  png_image_write_to_memory(&image, png.data(), &size, 0, abgr.data(), 0, nullptr);
  return png;
}

TEST(IconFromPngTest, WritesMaskAndColoursFromTheBottomUp) {
  std::vector<uint32_t> pixels(32 * 32, 0xFF332211);
  pixels[1] = 0x00000000;            // top row, transparent
  pixels[31 * 32 + 9] = 0x7F000000;  // bottom row, less than half opaque
  const Icon icon = iconFromPng(pngOf(32, 32, pixels));

  const std::string& text = icon.large;
  ASSERT_EQ(text.size(), 2u * (20 + 48 + 128 + 48 + 4096));
  EXPECT_EQ(text.substr(0, 8), "00000001");
  EXPECT_EQ(text.substr(2 * 20, 2 * 16),
            "00000028"
            "00000020"
            "00000020"
            "0001"
            "0001");
  EXPECT_EQ(text.substr(2 * 40, 8), "00000080");
  EXPECT_EQ(text.substr(2 * 68, 8), "00400000") << "the bottom row comes first";
  EXPECT_EQ(text.substr(2 * (68 + 124), 8), "40000000");
  EXPECT_EQ(text.substr(2 * 196, 2 * 16),
            "00000028"
            "00000020"
            "00000020"
            "0001"
            "0020");
  EXPECT_EQ(text.substr(2 * 216, 8), "00001000");
  EXPECT_EQ(text.substr(2 * 244, 16), "332211FF332211FF");
  EXPECT_EQ(text.substr(2 * (244 + 31 * 128), 16), "332211FF00000000");
  EXPECT_EQ(icon.small.size(), 2u * (20 + 48 + 32 + 48 + 1024));
}

TEST(IconFromPngTest, ScalesPicturesOfAnySizeAndRefusesHugeOnes) {
  EXPECT_EQ(iconFromPng(pngOf(1, 1, {0xFF000080})).large.substr(2 * 244, 8), "000080FF");
  const Icon halves = iconFromPng(pngOf(2, 1, {0xFF0000FF, 0xFFFF0000}));
  EXPECT_EQ(halves.small.substr(2 * 148, 8) + halves.small.substr(2 * (148 + 60), 8), "0000FFFFFF0000FF");
  EXPECT_THROW(iconFromPng(pngOf(1025, 1, std::vector<uint32_t>(1025))), std::runtime_error);
  EXPECT_THROW(iconFromPng(""), std::runtime_error);
}

}  // namespace
