#pragma once

#include <string>
#include <utility>
#include <variant>

#include "Broker/SimpleXML.h"

/// The text of an icon. A list holds thousands of them and few are ever looked at, so the text of one that a broker
/// sent stays where the answer holds it, shared by all icons of the list, until somebody asks for it.
///
/// Several threads may read one object at a time.
class IconText {
 public:
  IconText() = default;
  explicit IconText(std::string text) : text_(std::move(text)) {}
  /// The content of an element in an answer.
  explicit IconText(SimpleXML content) : text_(std::move(content)) {}

  std::string text() const {
    const auto* own = std::get_if<std::string>(&text_);
    return own ? *own : std::get<SimpleXML>(text_).text();
  }

 private:
  std::variant<std::string, SimpleXML> text_;
};
