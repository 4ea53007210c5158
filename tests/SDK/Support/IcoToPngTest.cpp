#include <random>
#include <span>
#include <sstream>

#include <png.h>

#include "Support/IconStrings.h"
#include "Support/OvWriteLog.h"
#include "Support/ResourceLimit.h"
#include "Support/TemporaryFolder.h"
#include "Support/ico2png.h"

using icon_strings::colorHeader;
using icon_strings::with;

namespace {

using Bytes = std::vector<uint8_t>;
constexpr size_t kMask = icon_strings::kMaskHeader;

IconPicture randomPicture(uint32_t width, uint32_t height) {
  std::mt19937 random(width * 1000 + height);
  IconPicture picture{width, height, Bytes(size_t{width} * height * 4)};
  for (size_t i = 0; i < picture.rgba.size(); ++i) {
    picture.rgba[i] = static_cast<uint8_t>(i % 4 == 3 ? (random() % 2) * 255 : random());
  }
  return picture;
}

using Converter = decltype(ico2png_convert_icon_string_to_ico_buffer);
using Saver = decltype(ico2png_save_icon_string_to_ico_file);

// What a converter makes; empty on failure, when nothing of what the caller had may be left in the output.
Bytes converted(Converter convert, const char* iconString) {
  unsigned char stale = 0;
  unsigned char* buffer = &stale;
  unsigned int size = 77;
  const int result = convert(iconString, &buffer, &size);
  EXPECT_EQ(result, buffer ? 1 : 0);
  EXPECT_EQ(result, size > 0 ? 1 : 0);
  Bytes bytes(buffer, buffer + size);
  free(buffer);
  return bytes;
}
Bytes icoOf(const std::string& string) { return converted(ico2png_convert_icon_string_to_ico_buffer, string.c_str()); }
Bytes pngOf(const std::string& string) { return converted(ico2png_convert_icon_string_to_png_buffer, string.c_str()); }

// The pixels of a PNG file, by another reader.
Bytes pixelsOf(const Bytes& file, uint32_t width, uint32_t height) {
  png_image image{};
  image.version = PNG_IMAGE_VERSION;
  if (!png_image_begin_read_from_memory(&image, file.data(), file.size())) return {};
  EXPECT_EQ(image.width, width);
  EXPECT_EQ(image.height, height);
  image.format = PNG_FORMAT_RGBA;
  Bytes pixels(PNG_IMAGE_SIZE(image));
  return png_image_finish_read(&image, nullptr, pixels.data(), 0, nullptr) ? pixels : Bytes{};
}

Bytes decodedPixels(const std::string& string) {
  const auto image = ico2png_decode_icon_string(string);
  return image ? image->rgba : Bytes{};
}

TEST(IcoToPng, ThePngShowsThePictureUprightAndMasked) {
  const std::pair<unsigned, std::array<unsigned, 4>> keptBits[] = {
      {16, {0xF8, 0xFC, 0xF8, 0xFF}}, {24, {0xFF, 0xFF, 0xFF, 0xFF}}, {32, {0xFF, 0xFF, 0xFF, 0xFF}}};
  for (const auto& [bitCount, kept] : keptBits) {
    for (const auto& [width, height] : {std::pair{8u, 1u}, {32u, 32u}, {48u, 7u}, {256u, 3u}}) {
      SCOPED_TRACE(testing::Message() << bitCount << " bits, " << width << " x " << height);
      const IconPicture picture = randomPicture(width, height);
      Bytes expected = picture.rgba;
      for (size_t i = 0; i < expected.size(); ++i) expected[i] = static_cast<uint8_t>(expected[i] & kept[i % 4]);
      const std::string string = icon_strings::make(picture, bitCount);

      const Bytes png = pngOf(string);
      ASSERT_GT(png.size(), 32u);

      EXPECT_EQ(pixelsOf(png, width, height), expected);
      EXPECT_EQ(decodedPixels(string), expected);
      EXPECT_EQ(Bytes(png.begin() + 24, png.begin() + 29), (Bytes{8, PNG_COLOR_TYPE_RGBA, 0, 0, 0}));
      EXPECT_EQ(std::string(png.end() - 8, png.end() - 4), "IEND");
    }
  }
}

TEST(IcoToPng, CapitalDigitsCountAndAnyOtherCharacterIsZero) {
  const std::string string = icon_strings::make(randomPicture(16, 4), 32);
  std::string capital = string;
  for (char& digit : capital) digit = static_cast<char>(toupper(digit));
  ASSERT_FALSE(icoOf(string).empty());
  EXPECT_EQ(icoOf(capital), icoOf(string));
  for (const char other : {'g', 'G', '/', ':', '@', '`', ' ', '\x80', '\xFF'}) {
    std::string strange = string;
    std::replace(strange.begin(), strange.end(), '0', other);
    EXPECT_EQ(icoOf(strange), icoOf(string)) << other;
  }
}

TEST(IcoToPng, TheImageSizeTellsHowAPixelIsStored) {
  const IconPicture picture = randomPicture(8, 4);
  const size_t header = colorHeader(picture);
  const std::string string = icon_strings::make(picture, 24);
  EXPECT_EQ(decodedPixels(with(string, header + icon_strings::kBitCount, 32, 2)), picture.rgba);
  EXPECT_EQ(decodedPixels(with(string, header + icon_strings::kSizeImage, 8 * 4 * 3 + 31) + std::string(62, 'f')),
            picture.rgba);
}

// Rows of 12 pixels and one mask byte: the last four share the next row's byte, and in the last row they have none.
TEST(IcoToPng, AMaskBitBehindTheMaskIsClear) {
  IconPicture picture = randomPicture(8, 2);
  for (size_t i = 3; i < picture.rgba.size(); i += 4) picture.rgba[i] = 0;
  std::string string = icon_strings::make(picture, 32);
  string.insert((68 + 2) * 2, "ffffffff");  // between the mask and the colours: a header that is 4 bytes longer
  string = with(string, kMask + icon_strings::kSize, 44);
  string = with(string, colorHeader(picture) + 4 + icon_strings::kWidth, 12);

  const Bytes pixels = decodedPixels(string);

  ASSERT_EQ(pixels.size(), 12u * 2 * 4);
  for (size_t pixel = 0; pixel < 24; ++pixel) {
    EXPECT_EQ(pixels[pixel * 4 + 3], pixel >= 8 && pixel < 12 ? 255 : 0) << pixel;
  }
}

TEST(IcoToPng, TheIcoFileHasTheIconInItsOwnByteOrder) {
  struct Row {
    unsigned bitCount;
    uint32_t compression;
    std::string colorMasks;
  };
  for (const Row& row : {Row{16, 0, ""}, {24, 0, ""}, {32, 1, ""}, {32, 3, "0000ff00ff00000000ff0000"}}) {
    SCOPED_TRACE(row.bitCount);
    const IconPicture picture = randomPicture(264, 32);
    const size_t header = colorHeader(picture);
    std::string string = icon_strings::make(picture, row.bitCount);
    string = with(string, header + icon_strings::kCompression, row.compression);
    string = with(string, header + icon_strings::kClrUsed, 0x123456);
    const auto bitsSize = static_cast<uint32_t>(264 * 32 * row.bitCount / 8);

    const uint32_t imageSize = 40 + (row.compression == 3 ? 12 : 0) + bitsSize + 33 * 32;
    const uint32_t directory[] = {0, 1, 1, 8, 32, 0x56, 0, 1, row.bitCount, imageSize, 22};
    const uint32_t bitmap[] = {40, 264, 64, 1, row.bitCount, row.compression, bitsSize, 0, 0, 0x123456, 0};
    std::string expected;
    auto add = [&expected](std::span<const uint32_t> numbers, std::string_view sizes) {
      for (size_t i = 0; i < sizes.size(); ++i) {
        for (int byte = 0; byte < sizes[i] - '0'; ++byte)
          icon_strings::append(expected, numbers[i] >> 8 * byte & 0xFF, 1);
      }
    };
    add(directory, "22211112244");
    add(bitmap, "44422444444");
    expected += row.colorMasks + string.substr((header + 48) * 2) + string.substr(68 * 2, 33 * 32 * 2);

    std::string digits;
    for (const uint8_t byte : icoOf(string)) icon_strings::append(digits, byte, 1);
    EXPECT_EQ(digits, expected);
  }
}

TEST(IcoToPng, WhatDoesNotFitIsRefused) {
  using namespace icon_strings;
  const IconPicture picture = randomPicture(8, 2);
  const std::string string = make(picture, 32);  // 64 bytes of colours, 2 of mask
  const size_t color = colorHeader(picture);
  for (size_t size = 0; size < string.size(); ++size) {
    ASSERT_TRUE(icoOf(string.substr(0, size)).empty()) << size;
    ASSERT_TRUE(pngOf(string.substr(0, size)).empty()) << size;
  }
  ASSERT_FALSE(pngOf(string).empty());
  EXPECT_TRUE(pngOf(string + "0").empty());
  EXPECT_TRUE(converted(ico2png_convert_icon_string_to_ico_buffer, nullptr).empty());
  EXPECT_TRUE(converted(ico2png_convert_icon_string_to_png_buffer, nullptr).empty());

  struct Row {
    size_t offset;
    size_t bytes;
    std::vector<uint32_t> refused;
    std::vector<uint32_t> refusedAsPicture;
  };
  const Row rows[] = {
      {kMask + kSize, 4, {0, 39, 41, 0x7FFFFFFF, 0x80000000, 0xFFFFFFFF}, {}},
      {kMask + kSizeImage, 4, {0, 1, 3, 0x7FFFFFFF, 0x80000000, 0xFFFFFFFF}, {}},
      {color + kSize, 4, {0, 39, 41, 0x7FFFFFFF, 0x80000000, 0xFFFFFFFF}, {}},
      {color + kSizeImage, 4, {65, 0x7FFFFFFF, 0x80000000, 0xFFFFFFFF}, {0, 31}},
      {color + kWidth, 4, {0, 0x80000000, 0xFFFFFFFF}, {1, 16, 17, 0x40000000, 0x7FFFFFFF}},
      {color + kHeight, 4, {0, 0x80000000, 0xFFFFFFFF}, {1, 3, 0x7FFFFFFF}},
      {color + kBitCount, 2, {0, 1, 4, 8, 15, 33, 0xFFFF}, {}},
  };
  for (const Row& row : rows) {
    auto expectRefused = [&](const std::vector<uint32_t>& values, bool evenAsIco) {
      for (const uint32_t value : values) {
        SCOPED_TRACE(testing::Message() << value << " at " << row.offset);
        const std::string hostile = with(string, row.offset, value, row.bytes);
        EXPECT_EQ(icoOf(hostile).empty(), evenAsIco);
        EXPECT_TRUE(pngOf(hostile).empty());
      }
    };
    expectRefused(row.refused, true);
    expectRefused(row.refusedAsPicture, false);
  }
  // Sums and products that come right again where 32 bits wrap around.
  EXPECT_TRUE(icoOf(with(with(string, kMask + kSize, 0xFFFFFFFF), kMask + kSizeImage, 43)).empty());
  EXPECT_TRUE(icoOf(with(with(string, color + kSize, 0x80000028), color + kSizeImage, 0x80000040)).empty());
  EXPECT_TRUE(pngOf(with(with(string, color + kWidth, 4), color + kHeight, 0x40000004)).empty());
}

TEST(IcoToPng, SeveralThreadsConvertAtOnceAndLeaveTheCurrentFolderAlone) {
  const TemporaryFolder folder;
  const auto before = std::filesystem::current_path();
  std::filesystem::current_path(folder.path());
  writeFile("icon.png", "mine");
  std::vector<std::thread> threads;
  for (uint32_t number = 1; number <= 4; ++number) {
    threads.emplace_back([number] {
      const IconPicture picture = randomPicture(16, number);
      const std::string string = icon_strings::make(picture, 32);
      for (int round = 0; round < 50; ++round) ASSERT_EQ(pixelsOf(pngOf(string), 16, number), picture.rgba);
    });
  }
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(contentOf("icon.png"), "mine");
  EXPECT_EQ(std::distance(std::filesystem::directory_iterator("."), {}), 1);
  std::filesystem::current_path(before);
}

class IcoToPngLogTest : public testing::Test {
 protected:
  IcoToPngLogTest() {
    OvSetLogFile(path_.c_str());
    OvSetLogLevel(5);
  }
  ~IcoToPngLogTest() override {
    OvSetLogFile("");
    OvSetLogLevel(2);
  }
  // The messages since the last call, a line each, without their times and identifiers.
  std::string messages() const {
    std::istringstream stream(contentOf(path_));
    std::string text;
    for (std::string line; std::getline(stream, line);) {
      text += line.substr(line.find(": ", line.find(": ") + 2) + 2) + '\n';
    }
    OvDeleteLog();
    return text;
  }

  const TemporaryFolder folder_;
  const std::string path_ = folder_.file("log");
  const std::string string_ = icon_strings::make(randomPicture(32, 3), 24);
};

TEST_F(IcoToPngLogTest, FieldsAndRowsAreTracedAtLevelFive) {
  const std::string fields =
      "fIcon=1\nxHotspot=7\nyHotspot=8\ncbMask=9\ncbColor=10\n"
      "bmiMask.biWidth=32\nbmiMask.biHeight=3\nbmiMask.biBitCount=1\n"
      "bmiColor.biWidth=32\nbmiColor.biHeight=3\nbmiColor.biBitCount=24\n";
  icoOf(string_);
  EXPECT_EQ(messages(), fields);
  pngOf(string_);
  EXPECT_EQ(messages(), fields + "libpng row 1 written\nlibpng row 2 written\nlibpng row 3 written\n");
  OvSetLogLevel(4);
  pngOf(string_);
  icoOf("1");
  EXPECT_EQ(messages(), "");
}

TEST_F(IcoToPngLogTest, ARefusalAndAPictureThatLibpngDoesNotTakeAreLogged) {
  icoOf("1234");
  EXPECT_EQ(messages(), "error converting icon\n");
  EXPECT_TRUE(pngOf(icon_strings::make(randomPicture(1000008, 1), 16)).empty());
  EXPECT_THAT(messages(), testing::ContainsRegex("\nlibpng warning: [^\n]+\nlibpng error: [^\n]+\n"
                                                 "libpng encountered a fatal error\nException occurred!\n$"));
}

TEST_F(IcoToPngLogTest, AFileHoldsWhatTheBufferHoldsOrWhatItHeldBefore) {
  struct Row {
    Saver* save;
    Bytes bytes;
    std::string writeFault;
  };
  const std::string large = icon_strings::make(randomPicture(64, 64), 32);
  const std::string path = folder_.file("icon");
  const std::string missing = folder_.file("missing/icon");
  for (const Row& row : {Row{ico2png_save_icon_string_to_ico_file, icoOf(string_), "error writing icon file\n"},
                         Row{ico2png_save_icon_string_to_png_file, pngOf(string_), "Exception occurred!\n"}}) {
    ASSERT_EQ(row.save(string_.c_str(), path.c_str()), 1);
    EXPECT_EQ(contentOf(path), std::string(row.bytes.begin(), row.bytes.end()));

    {
      const ResourceLimit small(RLIMIT_FSIZE, 8192);
      EXPECT_EQ(row.save(large.c_str(), path.c_str()), 0);
    }
    EXPECT_THAT(messages(), testing::EndsWith(row.writeFault));
    EXPECT_EQ(row.save(string_.c_str(), missing.c_str()), 0);
    EXPECT_THAT(messages(), testing::EndsWith("error opening file " + missing + " for write access\n"));
    EXPECT_EQ(row.save("1234", path.c_str()), 0);
    EXPECT_EQ(row.save(string_.c_str(), nullptr), 0);
    EXPECT_EQ(contentOf(path), std::string(row.bytes.begin(), row.bytes.end()));
  }
}

}  // namespace
