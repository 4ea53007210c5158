#include <map>
#include <utility>

#include "Platform/BinaryPropertyListWriter.h"
#include "Platform/KeyedArchive.h"

namespace orvane {

class KeyedArchiver::Archive {
 public:
  using Object = BinaryPropertyListWriter::Object;

  Archive() { add(writer_.name("$null")); }

  BinaryPropertyListWriter& writer() { return writer_; }

  /// Adds an object and returns the UID that stands for it.
  Object add(Object object) {
    objects_.push_back(object);
    return writer_.uid(static_cast<uint32_t>(objects_.size() - 1));
  }

  void put(std::string_view key, Object value) {
    const bool isReserved = !fields_.areEntries && key.starts_with('$');
    const Object name = writer_.name(isReserved ? std::string("$").append(key) : key);
    fields_.keys.push_back(fields_.areEntries ? add(name) : name);
    fields_.values.push_back(value);
  }

  void putPrimitive(std::string_view key, Object value) { put(key, fields_.areEntries ? add(value) : value); }

  /// An object of the class whose names these are, itself first; `encode` puts its fields. It comes before the objects
  /// that it refers to.
  template <typename Encode>
  Object addRecord(std::initializer_list<std::string_view> classNames, const Encode& encode) {
    const Object uid = add(objects_.front());
    const size_t index = objects_.size() - 1;
    Fields outer = std::exchange(fields_, {});
    encode();
    fields_.keys.push_back(writer_.name("$class"));
    fields_.values.push_back(classOf(classNames));
    objects_[index] = finishFields();
    fields_ = std::move(outer);
    return uid;
  }

  template <typename EncodeItem>
  Object addList(size_t count, const EncodeItem& encodeItem) {
    return addRecord({"NSMutableArray", "NSArray", "NSObject"}, [&] {
      std::vector<Object> items;
      items.reserve(count);
      for (size_t i = 0; i < count; ++i) items.push_back(encodeItem(i));
      put("NS.objects", writer_.array(items));
    });
  }

  template <typename Encode>
  Object addDictionary(const Encode& encodeEntries) {
    return addRecord({"NSMutableDictionary", "NSDictionary", "NSObject"}, [&] {
      fields_.areEntries = true;
      encodeEntries();
      const Fields entries = std::exchange(fields_, {});
      put("NS.keys", writer_.array(entries.keys));
      put("NS.objects", writer_.array(entries.values));
    });
  }

  std::vector<uint8_t> finish() {
    const Object top = finishFields();
    const Object keys[] = {writer_.name("$version"), writer_.name("$archiver"), writer_.name("$top"),
                           writer_.name("$objects")};
    const Object values[] = {writer_.integer(100000), writer_.name("NSKeyedArchiver"), top, writer_.array(objects_)};
    return writer_.finish(writer_.dictionary(keys, values));
  }

 private:
  // Of the object that is being written.
  struct Fields {
    bool areEntries = false;  // of a dictionary: keys and values are objects of their own
    std::vector<Object> keys{};
    std::vector<Object> values{};
  };

  Object finishFields() { return writer_.dictionary(fields_.keys, fields_.values); }

  Object classOf(std::initializer_list<std::string_view> names) {
    if (const auto known = classes_.find(*names.begin()); known != classes_.end()) return known->second;
    std::vector<Object> items;
    for (const std::string_view name : names) items.push_back(writer_.name(name));
    const Object keys[] = {writer_.name("$classname"), writer_.name("$classes")};
    const Object values[] = {items.front(), writer_.array(items)};
    return classes_[std::string(*names.begin())] = add(writer_.dictionary(keys, values));
  }

  BinaryPropertyListWriter writer_{};
  std::vector<Object> objects_{};
  Fields fields_{};
  std::map<std::string, Object, std::less<>> classes_{};  // their UIDs
};

KeyedArchiver::KeyedArchiver() : archive_(std::make_unique<Archive>()) {}
KeyedArchiver::~KeyedArchiver() = default;

void KeyedArchiver::encodeBool(std::string_view key, bool value) {
  archive_->putPrimitive(key, archive_->writer().boolean(value));
}

void KeyedArchiver::encodeInteger(std::string_view key, int64_t value) {
  archive_->putPrimitive(key, archive_->writer().integer(value));
}

void KeyedArchiver::encodeNumber(std::string_view key, uint64_t value) {
  if (value > INT64_MAX) throw KeyedArchiveError("\"" + std::string(key) + "\" is too large a number for an archive");
  archive_->put(key, archive_->add(archive_->writer().integer(static_cast<int64_t>(value))));
}

void KeyedArchiver::encodeString(std::string_view key, std::string_view text) {
  archive_->put(key, archive_->add(archive_->writer().text(text)));
}

void KeyedArchiver::encodeStrings(std::string_view key, const std::vector<std::string>& texts) {
  archive_->put(
      key, archive_->addList(texts.size(), [&](size_t i) { return archive_->add(archive_->writer().text(texts[i])); }));
}

void KeyedArchiver::encodeObject(std::string_view key, std::string_view className, const EncodeFields& encodeFields) {
  archive_->put(key, archive_->addRecord({className, "NSObject"}, [&] { encodeFields(*this); }));
}

void KeyedArchiver::encodeObjects(std::string_view key, std::string_view className, size_t count,
                                  const std::function<void(KeyedArchiver&, size_t)>& encodeFields) {
  archive_->put(key, archive_->addList(count, [&](size_t i) {
    return archive_->addRecord({className, "NSObject"}, [&] { encodeFields(*this, i); });
  }));
}

void KeyedArchiver::encodeDictionary(std::string_view key, const EncodeFields& encodeEntries) {
  archive_->put(key, archive_->addDictionary([&] { encodeEntries(*this); }));
}

std::vector<uint8_t> KeyedArchiver::finish() { return archive_->finish(); }

}  // namespace orvane
