#include "Messages.h"

#include <strings.h>

#include "Support/TextCoding.h"

namespace orvane::demo {
namespace {

struct StringSink : pugi::xml_writer {
  std::string text;
  void write(const void* data, size_t size) override { text.append(static_cast<const char*>(data), size); }
};

void collectFields(pugi::xml_node parent, const std::string& prefix, Message& message) {
  for (const pugi::xml_node child : parent.children()) {
    if (child.type() != pugi::node_element) continue;
    const std::string name = prefix + child.name();
    if (prefix.empty() && child.find_child([](pugi::xml_node inner) { return inner.type() == pugi::node_element; })) {
      collectFields(child, name + "/", message);
    } else {
      message.fields.emplace_back(name, decode(message.coding, child.text().get()));
    }
  }
}

}  // namespace

std::string encode(Coding coding, const std::string& text) {
  return coding == Coding::kUtf8 ? text : utf8ToCp1252(text);
}

std::string decode(Coding coding, const std::string& bytes) {
  return coding == Coding::kUtf8 ? bytes : cp1252ToUtf8(bytes);
}

std::string Message::field(std::string_view fieldName) const {
  for (const auto& [candidate, text] : fields) {
    if (candidate == fieldName) return text;
  }
  return {};
}

std::optional<Message> parseMessage(const std::string& body) {
  static constexpr std::string_view kSuffix = "-req";
  pugi::xml_document document;
  // With the coding given, the parser leaves the bytes alone and looks for no other coding in them.
  constexpr unsigned kOptions =
      (pugi::parse_default | pugi::parse_declaration | pugi::parse_ws_pcdata_single) & ~unsigned{pugi::parse_eol};
  if (!document.load_buffer(body.data(), body.size(), kOptions, pugi::encoding_utf8)) return std::nullopt;

  Message message;
  const pugi::xml_node root = document.document_element();
  const std::string_view rootName = root.name();
  if (rootName.size() <= kSuffix.size() || !rootName.ends_with(kSuffix)) return std::nullopt;
  message.name = rootName.substr(0, rootName.size() - kSuffix.size());

  const pugi::xml_node first = document.first_child();
  if (first.type() == pugi::node_declaration && strcasecmp(first.attribute("encoding").value(), "UTF-8") == 0) {
    message.coding = Coding::kUtf8;
  }
  collectFields(root, "", message);
  return message;
}

AnswerWriter::AnswerWriter(const std::string& rootName, Coding coding) : coding_(coding) {
  if (coding == Coding::kUtf8) {
    pugi::xml_node declaration = document_.append_child(pugi::node_declaration);
    declaration.append_attribute("version") = "1.0";
    declaration.append_attribute("encoding") = "UTF-8";
  }
  root_ = document_.append_child(rootName.c_str());
}

void AnswerWriter::add(pugi::xml_node parent, std::string_view name, const std::string& text) {
  pugi::xml_node element = parent.append_child(std::string(name).c_str());
  if (!text.empty()) element.text().set(encode(coding_, text).c_str());
}

void AnswerWriter::addUnlessEmpty(pugi::xml_node parent, std::string_view name, const std::string& text) {
  if (!text.empty()) add(parent, name, text);
}

std::string AnswerWriter::text() const {
  StringSink sink;
  document_.save(sink, "", pugi::format_raw | pugi::format_no_declaration, pugi::encoding_utf8);
  return std::move(sink.text);
}

}  // namespace orvane::demo
