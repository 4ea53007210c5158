#include "Platform/BinaryPropertyListWriter.h"

#include <algorithm>
#include <bit>

namespace orvane {
namespace {

// The sizes that a number may have in the file: 1, 2, 4 or 8 bytes.
unsigned int bytesFor(uint64_t value) {
  return value <= UINT8_MAX ? 1 : value <= UINT16_MAX ? 2 : value <= UINT32_MAX ? 4 : 8;
}

template <typename Bytes>
void append(Bytes& bytes, uint64_t value, unsigned int size) {
  for (unsigned int shift = 8 * size; shift > 0; shift -= 8)
    bytes.push_back(static_cast<uint8_t>(value >> (shift - 8)));
}

template <typename Bytes>
void appendInteger(Bytes& bytes, uint64_t value) {
  const unsigned int size = bytesFor(value);
  bytes.push_back(static_cast<uint8_t>(0x10 | std::countr_zero(size)));
  append(bytes, value, size);
}

template <typename Bytes>
void appendMarker(Bytes& bytes, unsigned int kind, size_t count) {
  bytes.push_back(static_cast<uint8_t>(kind | std::min<size_t>(count, 0xF)));
  if (count >= 0xF) appendInteger(bytes, count);
}

size_t markerSize(size_t count) { return count < 0xF ? 1 : 2 + bytesFor(count); }

// Takes the first character off `text`; U+FFFD for a byte that begins no character of well-formed UTF-8, and for zero.
char32_t takeCharacter(std::string_view& text) {
  const auto byteAt = [&](size_t i) { return static_cast<uint8_t>(text[i]); };
  const uint8_t first = byteAt(0);
  const size_t size = first < 0x80 ? 1 : first < 0xE0 ? 2 : first < 0xF0 ? 3 : 4;
  constexpr char32_t kSmallest[] = {1, 0x80, 0x800, 0x10000};
  char32_t character = size == 1 ? first : first & (0x7FU >> size);
  bool good = size <= text.size() && (first < 0x80 || (first >= 0xC2 && first <= 0xF4));
  for (size_t i = 1; good && i < size; ++i) {
    good = (byteAt(i) & 0xC0U) == 0x80;
    character = character << 6 | (byteAt(i) & 0x3FU);
  }
  good =
      good && character >= kSmallest[size - 1] && character <= 0x10FFFF && (character < 0xD800 || character > 0xDFFF);
  text.remove_prefix(good ? size : 1);
  return good ? character : 0xFFFD;
}

template <typename Use>
void forEachUnit(std::string_view text, Use use) {
  while (!text.empty()) {
    const char32_t character = takeCharacter(text);
    if (character > 0xFFFF) {
      use(0xD7C0 + (character >> 10));
      use(0xDC00 | (character & 0x3FF));
    } else {
      use(character);
    }
  }
}

}  // namespace

BinaryPropertyListWriter::Object BinaryPropertyListWriter::add(const Entry& entry) {
  entries_.push_back(entry);
  return static_cast<Object>(entries_.size() - 1);
}

BinaryPropertyListWriter::Object BinaryPropertyListWriter::scalar(Kind kind, uint64_t value) {
  const auto [known, isNew] = scalars_.try_emplace({kind, value});
  if (!isNew) return known->second;
  const size_t start = leaves_.size();
  if (kind == kInteger) {
    appendInteger(leaves_, value);
  } else if (kind == kUid) {
    const unsigned int size = bytesFor(value);
    leaves_.push_back(static_cast<uint8_t>(kUid | (size - 1)));
    append(leaves_, value, size);
  } else {
    leaves_.push_back(static_cast<uint8_t>(kind | value));
  }
  return known->second = add({kind, start, leaves_.size() - start});
}

BinaryPropertyListWriter::Object BinaryPropertyListWriter::text(std::string_view text) {
  const size_t start = leaves_.size();
  if (std::all_of(text.begin(), text.end(), [](char c) { return c != 0 && static_cast<uint8_t>(c) < 0x80; })) {
    appendMarker(leaves_, kAscii, text.size());
    leaves_.insert(leaves_.end(), text.begin(), text.end());
    return add({kAscii, start, leaves_.size() - start});
  }
  size_t units = 0;
  forEachUnit(text, [&](char32_t) { ++units; });
  appendMarker(leaves_, kUtf16, units);
  forEachUnit(text, [&](char32_t unit) { append(leaves_, unit, 2); });
  return add({kUtf16, start, leaves_.size() - start});
}

BinaryPropertyListWriter::Object BinaryPropertyListWriter::name(std::string_view name) {
  const auto [known, isNew] = names_.try_emplace(std::string(name));
  if (isNew) known->second = text(name);
  return known->second;
}

BinaryPropertyListWriter::Object BinaryPropertyListWriter::array(std::span<const Object> items) {
  const size_t start = references_.size();
  references_.insert(references_.end(), items.begin(), items.end());
  return add({kArray, start, items.size()});
}

BinaryPropertyListWriter::Object BinaryPropertyListWriter::dictionary(std::span<const Object> keys,
                                                                      std::span<const Object> values) {
  const size_t start = references_.size();
  references_.insert(references_.end(), keys.begin(), keys.end());
  references_.insert(references_.end(), values.begin(), values.end());
  return add({kDictionary, start, keys.size()});
}

std::vector<uint8_t> BinaryPropertyListWriter::finish(Object root) const {
  const unsigned int referenceSize = bytesFor(entries_.size() - 1);
  const auto isContainer = [](const Entry& entry) { return entry.kind == kArray || entry.kind == kDictionary; };
  const auto references = [](const Entry& entry) { return entry.kind == kDictionary ? 2 * entry.count : entry.count; };

  constexpr std::string_view kHeader = "bplist00";
  std::vector<uint64_t> offsets;
  offsets.reserve(entries_.size());
  uint64_t end = kHeader.size();
  for (const Entry& entry : entries_) {
    offsets.push_back(end);
    end += isContainer(entry) ? markerSize(entry.count) + references(entry) * referenceSize : entry.count;
  }
  const unsigned int offsetSize = bytesFor(end);

  constexpr size_t kTrailerSize = 32;
  std::vector<uint8_t> bytes(kHeader.begin(), kHeader.end());
  bytes.reserve(end + entries_.size() * offsetSize + kTrailerSize);
  for (const Entry& entry : entries_) {
    if (!isContainer(entry)) {
      const auto leaf = leaves_.begin() + static_cast<std::ptrdiff_t>(entry.start);
      bytes.insert(bytes.end(), leaf, leaf + static_cast<std::ptrdiff_t>(entry.count));
      continue;
    }
    appendMarker(bytes, entry.kind, entry.count);
    for (size_t i = 0; i < references(entry); ++i) append(bytes, references_[entry.start + i], referenceSize);
  }
  for (const uint64_t offset : offsets) append(bytes, offset, offsetSize);
  append(bytes, 0, 6);
  append(bytes, offsetSize, 1);
  append(bytes, referenceSize, 1);
  append(bytes, entries_.size(), 8);
  append(bytes, root, 8);
  append(bytes, end, 8);
  return bytes;
}

}  // namespace orvane
