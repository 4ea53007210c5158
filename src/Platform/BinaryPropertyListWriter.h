#pragma once

#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "Support/SecureMemory.h"

namespace orvane {

/// Builds one binary property list from its leaves up to its root.
///
/// The library that reads property lists could write them too, but takes a time that grows with the square of the
/// number of values, which is half a minute for a list of a few thousand farms.
///
/// The objects that are passed to a container must have been made by the same writer. Texts are wiped with it, but not
/// names.
class BinaryPropertyListWriter {
 public:
  using Object = uint32_t;

  Object boolean(bool value) { return scalar(kSimple, value ? 0x9 : 0x8); }
  Object integer(int64_t value) { return scalar(kInteger, static_cast<uint64_t>(value)); }
  Object uid(uint32_t value) { return scalar(kUid, value); }
  /// See KeyedArchiver for what isn't UTF-8.
  Object text(std::string_view text);
  /// A text that is likely to come again: one object for all that are equal.
  Object name(std::string_view name);
  Object array(std::span<const Object> items);
  /// The values are in the order of the keys, which are texts.
  Object dictionary(std::span<const Object> keys, std::span<const Object> values);

  std::vector<uint8_t> finish(Object root) const;

 private:
  enum Kind : uint8_t {
    kSimple = 0x00,
    kInteger = 0x10,
    kAscii = 0x50,
    kUtf16 = 0x60,
    kUid = 0x80,
    kArray = 0xA0,
    kDictionary = 0xD0,
  };

  // A container's references are encoded at the end, since their size depends on how many objects there are.
  struct Entry {
    Kind kind;
    size_t start;  // in references_ if it is a container, otherwise in leaves_
    size_t count;  // of a container's items or pairs, otherwise of encoded bytes
  };

  struct Scalar {
    Kind kind;
    uint64_t value;
    bool operator==(const Scalar&) const = default;
  };
  struct HashOfScalar {
    size_t operator()(const Scalar& scalar) const { return std::hash<uint64_t>()(scalar.value * 256 + scalar.kind); }
  };

  // A buffer that grows leaves nothing behind.
  template <typename Value>
  struct WipingAllocator {
    using value_type = Value;
    WipingAllocator() = default;
    template <typename Other>
    explicit WipingAllocator(const WipingAllocator<Other>&) {}
    bool operator==(const WipingAllocator&) const { return true; }
    Value* allocate(size_t count) { return std::allocator<Value>().allocate(count); }
    void deallocate(Value* memory, size_t count) {
      wipe(memory, count * sizeof(Value));
      std::allocator<Value>().deallocate(memory, count);
    }
  };

  Object scalar(Kind kind, uint64_t value);
  Object add(const Entry& entry);

  std::vector<Entry> entries_{};
  std::vector<uint8_t, WipingAllocator<uint8_t>> leaves_{};
  std::vector<Object> references_{};
  std::unordered_map<Scalar, Object, HashOfScalar> scalars_{};
  std::unordered_map<std::string, Object> names_{};
};

}  // namespace orvane
