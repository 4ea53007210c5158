#include "Platform/BinaryPropertyListCheck.h"

#include <algorithm>
#include <cstring>
#include <string>

#include "Platform/ArchiveLimits.h"
#include "Platform/KeyedArchiveError.h"

namespace orvane {
namespace {

constexpr size_t kHeaderSize = 8;
constexpr size_t kTrailerSize = 32;

[[noreturn]] void fail(const char* what) { throw KeyedArchiveError(std::string("property list: ") + what); }

class Check {
 public:
  explicit Check(std::span<const uint8_t> bytes) : bytes_(bytes), budget_(expansionLimit(bytes.size())) {}

  void run() {
    readTrailer();
    visit(root_, 1);
  }

 private:
  enum Kind : unsigned int {
    kSimple = 0x0,
    kInteger = 0x1,
    kReal = 0x2,
    kDate = 0x3,
    kData = 0x4,
    kAscii = 0x5,
    kUtf16 = 0x6,
    kUid = 0x8,
    kArray = 0xA,
    kDictionary = 0xD,
  };

  struct Object {
    unsigned int kind;
    unsigned int low;  // the marker's lower half
    uint64_t content;  // where what follows the marker and the count begins
    uint64_t count;    // of a kind that has one
  };

  uint64_t number(uint64_t offset, uint64_t size) const {
    uint64_t value = 0;
    for (uint64_t i = 0; i < size; ++i) value = value << 8 | bytes_[offset + i];
    return value;
  }

  void readTrailer() {
    if (bytes_.empty()) fail("there is none");
    if (bytes_.size() > kMaxArchiveSize) fail("too large");
    if (bytes_.size() < kHeaderSize + kTrailerSize || memcmp(bytes_.data(), "bplist00", kHeaderSize) != 0) {
      fail("not a binary one");
    }
    const size_t trailer = bytes_.size() - kTrailerSize;
    offsetSize_ = bytes_[trailer + 6];
    referenceSize_ = bytes_[trailer + 7];
    objectCount_ = number(trailer + 8, 8);
    root_ = number(trailer + 16, 8);
    objectsEnd_ = number(trailer + 24, 8);
    if (offsetSize_ < 1 || offsetSize_ > 8 || referenceSize_ < 1 || referenceSize_ > 8) fail("wrong sizes of offsets");
    if (objectsEnd_ < kHeaderSize || objectsEnd_ > trailer || objectCount_ > (trailer - objectsEnd_) / offsetSize_) {
      fail("the table of offsets is not within the bytes");
    }
  }

  // Makes sure that `count` pieces of `size` bytes lie between `offset` and the end of the objects.
  void requireWithin(uint64_t offset, uint64_t count, uint64_t size) const {
    if (count > (objectsEnd_ - offset) / size) fail("an object reaches beyond the others");
  }

  Object object(uint64_t index) const {
    if (index >= objectCount_) fail("a reference to an object that isn't there");
    const uint64_t offset = number(objectsEnd_ + index * offsetSize_, offsetSize_);
    if (offset < kHeaderSize || offset >= objectsEnd_) fail("an offset is not one of an object");
    const unsigned int head = bytes_[offset];
    Object object{head >> 4, head & 0xF, offset + 1, head & 0xF};
    const bool counted = object.kind == kData || object.kind == kAscii || object.kind == kUtf16 ||
                         object.kind == kArray || object.kind == kDictionary;
    if (counted && object.low == 0xF) {
      requireWithin(object.content, 1, 1);
      const unsigned int marker = bytes_[object.content++];
      if (marker >> 4 != kInteger || (marker & 0xF) > 3) fail("a count is not a number");
      const uint64_t size = uint64_t{1} << (marker & 0xF);
      requireWithin(object.content, 1, size);
      object.count = number(object.content, size);
      object.content += size;
    }
    return object;
  }

  void spend(uint64_t cost) {
    if (cost > budget_) fail("shared values amount to too much");
    budget_ -= cost;
  }

  // Recurses to kMaxNesting at most.
  void visit(uint64_t index, unsigned int level) {
    if (level > kMaxNesting) fail("nested too deeply");
    spend(kValueCost);
    const Object object = this->object(index);
    switch (object.kind) {
      case kSimple:
        if (object.low != 0x8 && object.low != 0x9) fail("an object of no known kind");
        break;
      case kInteger:
        visitInteger(object);
        break;
      case kReal:
        if (object.low != 2 && object.low != 3) fail("an object of no known kind");
        requireWithin(object.content, 1, uint64_t{1} << object.low);
        break;
      case kDate:
        if (object.low != 3) fail("an object of no known kind");
        requireWithin(object.content, 1, 8);
        break;
      case kUid:
        visitUid(object);
        break;
      case kData:
      case kAscii:
      case kUtf16:
        visitBytes(object);
        break;
      case kArray:
      case kDictionary:
        visitContainer(object, level);
        break;
      default:
        fail("an object of no known kind");
    }
  }

  void visitInteger(const Object& object) const {
    if (object.low > 4) fail("an object of no known kind");
    requireWithin(object.content, 1, uint64_t{1} << object.low);
    if (object.low == 4 && (number(object.content, 8) != 0 || number(object.content + 8, 8) > INT64_MAX)) {
      fail("an integer of more than 63 bits");
    }
  }

  void visitUid(const Object& object) const {
    const uint64_t size = object.low + 1;
    if (size != 1 && size != 2 && size != 4 && size != 8) fail("an object of no known kind");
    requireWithin(object.content, 1, size);
    if (number(object.content, size) > UINT32_MAX) fail("a UID of more than 32 bits");
  }

  void visitBytes(const Object& object) {
    requireWithin(object.content, object.count, object.kind == kUtf16 ? 2 : 1);
    // A unit of UTF-16 is up to three bytes of UTF-8.
    spend(object.kind == kUtf16 ? 3 * object.count : object.count);
    if (object.kind == kAscii && !std::ranges::all_of(bytes_.subspan(object.content, object.count),
                                                      [](uint8_t byte) { return byte > 0 && byte < 0x80; })) {
      fail("an ASCII text is not one");
    }
    if (object.kind == kUtf16) visitUnits(object);
  }

  void visitUnits(const Object& object) const {
    bool pairBegun = false;
    for (uint64_t i = 0; i < object.count; ++i) {
      const uint64_t unit = number(object.content + 2 * i, 2);
      const bool isSecond = unit >= 0xDC00 && unit <= 0xDFFF;
      if (unit == 0 || isSecond != pairBegun) fail("a UTF-16 text is not one");
      pairBegun = unit >= 0xD800 && unit <= 0xDBFF;
    }
    if (pairBegun) fail("a UTF-16 text is not one");
  }

  void visitContainer(const Object& object, unsigned int level) {
    const bool dictionary = object.kind == kDictionary;
    requireWithin(object.content, object.count, (dictionary ? 2 : 1) * referenceSize_);
    for (uint64_t i = 0; i < object.count; ++i) {
      const uint64_t item = number(object.content + i * referenceSize_, referenceSize_);
      if (dictionary) {
        const unsigned int kind = this->object(item).kind;
        if (kind != kAscii && kind != kUtf16) fail("a key is not a text");
        visit(number(object.content + (object.count + i) * referenceSize_, referenceSize_), level + 1);
      }
      visit(item, level + 1);
    }
  }

  const std::span<const uint8_t> bytes_;
  uint64_t budget_;
  uint64_t offsetSize_ = 0;
  uint64_t referenceSize_ = 0;
  uint64_t objectCount_ = 0;
  uint64_t root_ = 0;
  uint64_t objectsEnd_ = 0;  // the table of offsets begins there
};

}  // namespace

void checkBinaryPropertyList(std::span<const uint8_t> bytes) { Check(bytes).run(); }

}  // namespace orvane
