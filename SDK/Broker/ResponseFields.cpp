#include "Broker/ResponseFields.h"

#include <cstdlib>

#include "Support/TextCoding.h"

namespace orvane {

std::string decodedText(const char* text, bool utf8) {
  if (!text) return {};
  return utf8 ? text : cp1252ToUtf8(text);
}

bool ResponseFields::find(const char* name, SimpleXML& field) const {
  SimpleXML attributes;
  return content_.FindTag(name, attributes, field) > 0;
}

std::optional<int> ResponseFields::number(const char* name) const {
  SimpleXML field;
  if (!find(name, field)) return std::nullopt;
  const char* digits = field.GetData();
  return digits ? atoi(digits) : 0;
}

std::optional<int> ResponseFields::numberWithContent(const char* name) const {
  SimpleXML field;
  if (!find(name, field) || !field.GetData()) return std::nullopt;
  return atoi(field.GetData());
}

std::optional<std::string> ResponseFields::text(const char* name) const {
  SimpleXML field;
  if (!find(name, field)) return std::nullopt;
  return decodedText(field.GetData(), utf8_);
}

std::optional<SimpleXML> ResponseFields::content(const char* name) const {
  SimpleXML field;
  if (!find(name, field)) return std::nullopt;
  return field;
}

}  // namespace orvane
