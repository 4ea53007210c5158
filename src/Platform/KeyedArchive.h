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

#include "Platform/KeyedArchiveError.h"

/// @file
/// Keyed archives: object graphs in the layout of the platform's keyed archiver, as a binary property list
/// (docs/farm-store.md). An object is a record of a named class with values under keys.

namespace orvane {

/// Writes one keyed archive, from the top down: what is encoded goes into the object that is being written, at first
/// into the archive's top. One thread at a time. A key is given once for each object.
///
/// Once an EncodeFields has thrown, the archive can only be let go. What was encoded is wiped with the archiver.
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

  /// Values that are objects of their own. The texts are UTF-8; U+FFFD stands for each byte of one that isn't, and for
  /// a zero byte.
  /// @throws KeyedArchiveError for a number above 2^63 - 1, which no reader could give back.
  void encodeNumber(std::string_view key, uint64_t value);
  void encodeString(std::string_view key, std::string_view text);
  void encodeStrings(std::string_view key, const std::vector<std::string>& texts);

  /// An object of the class `className` whose fields `encodeFields` encodes before the call returns.
  void encodeObject(std::string_view key, std::string_view className, const EncodeFields& encodeFields);
  /// A list of `count` objects of one class; `encodeFields` is called for each index in order.
  void encodeObjects(std::string_view key, std::string_view className, size_t count,
                     const std::function<void(KeyedArchiver&, size_t)>& encodeFields);
  /// A dictionary: what `encodeEntries` encodes becomes its entries, all of them objects of their own.
  void encodeDictionary(std::string_view key, const EncodeFields& encodeEntries);

  /// The archive's bytes. Called once, when the top is complete; nothing can be encoded after that.
  std::vector<uint8_t> finish();

 private:
  class Archive;
  std::unique_ptr<Archive> archive_;
};

struct KeyedArchiveContents;
struct KeyedRecord;
struct KeyedValue;

/// An object of an archive that was opened; keeps the archive alive. Any number of threads may read.
///
/// Reading never changes anything. A key that is absent gives no value, and so does one whose value is nil; a value of
/// another kind than asked for throws KeyedArchiveError, since an archive that says something else than expected must
/// not be taken for an empty one. An entry of a list is never nil.
///
/// Whoever reads an archive by recursion needs no limits of his own: see openKeyedArchive.
class KeyedObject {
 public:
  /// The class's name after the renaming of openKeyedArchive; empty for the archive's top.
  std::string className() const;
  /// In the order of their bytes.
  std::vector<std::string> keys() const;

  std::optional<bool> boolean(std::string_view key) const;
  std::optional<int64_t> integer(std::string_view key) const;
  /// UTF-8.
  std::optional<std::string> string(std::string_view key) const;
  std::optional<std::vector<std::string>> strings(std::string_view key) const;
  /// An object whose class, or a class that it was archived as a kind of, is `className`.
  std::optional<KeyedObject> object(std::string_view key, std::string_view className) const;
  /// A list of such objects. An object that stands several times in it comes several times.
  std::optional<std::vector<KeyedObject>> objects(std::string_view key, std::string_view className) const;
  /// A dictionary as an object with its entries under their keys.
  std::optional<KeyedObject> dictionary(std::string_view key) const;

 private:
  friend KeyedObject openKeyedArchive(std::span<const uint8_t> bytes,
                                      const std::map<std::string, std::string>& renamedClasses);

  KeyedObject(std::shared_ptr<const KeyedArchiveContents> contents, std::shared_ptr<const KeyedRecord> record);

  KeyedValue value(std::string_view key) const;
  KeyedObject objectOf(const KeyedValue& value, std::string_view key, std::string_view className) const;

  std::shared_ptr<const KeyedArchiveContents> contents_;
  std::shared_ptr<const KeyedRecord> record_;
};

/// Opens an archive: its top, whose keys are those of the archived root objects. Nothing is kept of `bytes`.
///
/// `renamedClasses` gives for a class's archived name the one that it is to be read by.
///
/// The archive is checked as a whole first, so that neither opening nor reading it takes time or memory out of
/// proportion to its size. It must be a tree in which no object is reached by more than kMaxDepth references, nor
/// contains itself; and all that a recursive reader would meet, counting each object as often as it is met, must stay
/// within expansionLimit() (Platform/ArchiveLimits.h).
/// @throws KeyedArchiveError with words for the log if the bytes are no such archive; no bytes at all aren't one
/// either.
KeyedObject openKeyedArchive(std::span<const uint8_t> bytes,
                             const std::map<std::string, std::string>& renamedClasses = {});

}  // namespace orvane
