#include "Broker/RequestDocument.h"

#include "Support/TextCoding.h"

namespace orvane {

namespace {

class StringWriter : public pugi::xml_writer {
 public:
  void write(const void* data, size_t size) override { text.append(static_cast<const char*>(data), size); }
  std::string text;
};

}  // namespace

RequestDocument::RequestDocument(const char* message, bool utf8) : utf8_(utf8) {
  if (utf8_) {
    pugi::xml_node declaration = document_.append_child(pugi::node_declaration);
    declaration.append_attribute("version") = "1.0";
    declaration.append_attribute("encoding") = "UTF-8";
  }
  section_ = document_.append_child(message);
}

void RequestDocument::add(const char* name, const std::string& text) {
  section_.append_child(name).text().set(utf8_ ? text.c_str() : utf8ToCp1252(text).c_str());
}

std::string RequestDocument::text() const {
  StringWriter writer;
  document_.save(writer, "\t", pugi::format_raw | pugi::format_no_declaration, pugi::encoding_utf8);
  return std::move(writer.text);
}

}  // namespace orvane
