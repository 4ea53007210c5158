#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

/// @file
/// Keyed archives: object graphs in the layout of the platform's keyed archiver, as a binary property list
/// (docs/farm-store.md). An object is a record of a named class with values under keys.

namespace orvane {

/// Writes one keyed archive, from the top down: what is encoded goes into the object that is being written, at first
/// into the archive's top. One thread at a time. A key is given once for each object.
class KeyedArchiver {
 public:
  using EncodeFields = std::function<void(KeyedArchiver&)>;

  KeyedArchiver();
  ~KeyedArchiver();
  KeyedArchiver(const KeyedArchiver&) = delete;
  KeyedArchiver& operator=(const KeyedArchiver&) = delete;

  /// Values that stand in the record itself.
  void encodeBool(std::string_view key, bool value);
  void encodeInteger(std::string_view key, int64_t value);

  /// Values that are objects of their own. A number is unsigned; the texts are UTF-8.
  void encodeNumber(std::string_view key, uint64_t value);
  void encodeString(std::string_view key, std::string_view text);
  void encodeStrings(std::string_view key, const std::vector<std::string>& texts);

  /// An object of the class `className` whose fields `encodeFields` encodes before the call returns.
  void encodeObject(std::string_view key, std::string_view className, const EncodeFields& encodeFields);
  /// A list of `count` objects of one class; `encodeFields` is called for each index in order.
  void encodeObjects(std::string_view key, std::string_view className, size_t count,
                     const std::function<void(KeyedArchiver&, size_t)>& encodeFields);
  /// A dictionary: what `encodeEntries` encodes with the object operations above becomes its entries.
  void encodeDictionary(std::string_view key, const EncodeFields& encodeEntries);

  /// The archive's bytes; nothing can be encoded after that. Empty if memory runs out.
  std::vector<uint8_t> finish();
};

/// An object of an archive that was opened; keeps the archive alive. Any number of threads may read.
///
/// Reading never changes anything. A key that is absent gives no value; a value of another kind than asked for throws
/// KeyedArchiveError, since an archive that says something else than expected must not be taken for an empty one.
class KeyedObject {
 public:
  /// The class's name after the renaming of KeyedUnarchiver::open; empty for the archive's top.
  std::string className() const;
  std::vector<std::string> keys() const;

  std::optional<bool> boolean(std::string_view key) const;
  std::optional<int64_t> integer(std::string_view key) const;
  std::optional<std::string> string(std::string_view key) const;
  std::optional<std::vector<std::string>> strings(std::string_view key) const;
  /// An object whose class is `className`.
  std::optional<KeyedObject> object(std::string_view key, std::string_view className) const;
  /// A list of such objects. An object that stands several times in it comes several times.
  std::optional<std::vector<KeyedObject>> objects(std::string_view key, std::string_view className) const;
  /// A dictionary as an object with its entries under their keys.
  std::optional<KeyedObject> dictionary(std::string_view key) const;
};

}  // namespace orvane
