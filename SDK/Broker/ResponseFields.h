#pragma once

#include <list>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <utility>

#include "Broker/SimpleXML.h"

namespace orvane {

/// An element of a response, and the setter of the record that takes it.
template <typename Record, typename Value>
struct FieldRow {
  const char* element;
  void (Record::*set)(Value);
};
template <typename Record>
using TextRow = FieldRow<Record, std::string>;
template <typename Record>
using NumberRow = FieldRow<Record, int>;

/// Text of the wire as UTF-8: `text` itself if the broker speaks UTF-8. Null gives an empty text.
std::string decodedText(const char* text, bool utf8);

/// The fields of a response, or of one item of a list in it: each is searched for on its own, so their order is free.
/// A field that is missing gives nothing; one without content gives 0 or an empty text.
class ResponseFields {
 public:
  /// `content` is what stands between the tags of the response or item.
  ResponseFields(SimpleXML content, bool utf8) : content_(std::move(content)), utf8_(utf8) {}

  /// How the broker says that it refuses; the code 0 if it doesn't.
  struct Error {
    int code;
    std::string text;
  };
  Error error() const { return {number("errorcode").value_or(0), text("errortext").value_or("")}; }

  std::optional<int> number(const char* name) const;
  std::optional<std::string> text(const char* name) const;
  /// The field as the wire has it: not decoded, not even copied.
  std::optional<SimpleXML> content(const char* name) const;
  /// A number that only counts if the element has content.
  std::optional<int> numberWithContent(const char* name) const;

  /// Hands the fields that are there to the setters of the rows; the record keeps its value for any other.
  template <typename Record>
  void readTexts(std::span<const TextRow<Record>> rows, Record& record) const {
    for (const auto& row : rows) set(record, row, text(row.element));
  }
  template <typename Record>
  void readNumbers(std::span<const NumberRow<Record>> rows, Record& record) const {
    for (const auto& row : rows) set(record, row, number(row.element));
  }

  /// A record for each element `name`, in order, up to the first that doesn't end; `read` fills it from the item's
  /// fields.
  template <typename Record, typename Read>
  std::list<std::shared_ptr<Record>> list(const char* name, Read read) const {
    std::list<std::shared_ptr<Record>> records;
    SimpleXML attributes;
    SimpleXML item;
    int offset = 0;
    while ((offset = content_.FindTag(name, attributes, item, offset)) > 0)
      read(ResponseFields(item, utf8_), *records.emplace_back(std::make_shared<Record>()));
    return records;
  }

 private:
  template <typename Record, typename Value>
  static void set(Record& record, const FieldRow<Record, Value>& row, std::optional<Value> value) {
    if (value) (record.*row.set)(std::move(*value));
  }

  bool find(const char* name, SimpleXML& field) const;

  SimpleXML content_;
  bool utf8_;
};

}  // namespace orvane
