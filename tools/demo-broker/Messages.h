#pragma once

#include <optional>
#include <pugixml.hpp>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace orvane::demo {

/// How text is coded on the wire: as UTF-8, or one byte a character (Latin-1, named after code page 1252).
enum class Coding { kSingleByte, kUtf8 };

std::string encode(Coding coding, const std::string& text);
std::string decode(Coding coding, const std::string& bytes);

/// A request message, taken apart.
struct Message {
  std::string name;  ///< the root's without "-req"
  Coding coding = Coding::kSingleByte;
  /// In their order, decoded; nested ones as `connectorinfo/locale`.
  std::vector<std::pair<std::string, std::string>> fields;

  /// The first field of this name, or empty.
  std::string field(std::string_view fieldName) const;
};

/// Nothing if `body` isn't well-formed or its root doesn't end in "-req". A message is in UTF-8 if its XML declaration
/// says so, and in single bytes otherwise.
std::optional<Message> parseMessage(const std::string& body);

/// Writes an answer. Text is given as UTF-8 and coded on its way.
class AnswerWriter {
 public:
  AnswerWriter(const std::string& rootName, Coding coding);

  pugi::xml_node root() const { return root_; }
  void add(pugi::xml_node parent, std::string_view name, const std::string& text);
  void add(std::string_view name, const std::string& text) { add(root_, name, text); }
  void add(std::string_view name, int number) { add(root_, name, std::to_string(number)); }
  /// The same, if the text isn't empty.
  void addUnlessEmpty(pugi::xml_node parent, std::string_view name, const std::string& text);

  /// The document in one line; in UTF-8 with a declaration.
  std::string text() const;

 private:
  Coding coding_;
  pugi::xml_document document_;
  pugi::xml_node root_;
};

}  // namespace orvane::demo
