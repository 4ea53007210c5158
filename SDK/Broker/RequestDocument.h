#pragma once

#include <pugixml.hpp>
#include <string>

namespace orvane {

/// A request to a broker while it is built: a root element and its fields, each with one text, in the order of the
/// calls.
class RequestDocument {
 public:
  /// With `utf8` texts go out as they are, under an XML declaration; else in the wire's single-byte form.
  RequestDocument(const char* message, bool utf8);

  void add(const char* name, const std::string& text);
  void add(const char* name, const char* text) { add(name, std::string(text)); }
  void add(const char* name, int value) { add(name, std::to_string(value)); }
  void add(const char* name, bool value) { add(name, value ? "1" : "0"); }

  /// Fields added from now on go into a new child element of this name.
  void openSection(const char* name) { section_ = section_.append_child(name); }

  /// The document as one line.
  std::string text() const;

 private:
  bool utf8_;
  pugi::xml_document document_;
  pugi::xml_node section_;  // the root, or what openSection opened last: where fields go
};

}  // namespace orvane
