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

  void add(const char* name, const std::string& text) { addTo(root_, name, text); }
  void add(const char* name, const char* text) { addTo(root_, name, text); }
  void add(const char* name, int value) { addTo(root_, name, std::to_string(value)); }
  void add(const char* name, bool value) { addTo(root_, name, value ? "1" : "0"); }

  /// Fields added from now on go into a new child element of this name.
  void openSection(const char* name) { root_ = root_.append_child(name); }

  /// The document as one line.
  std::string text() const;

 private:
  void addTo(pugi::xml_node parent, const char* name, const std::string& text);

  bool utf8_;
  pugi::xml_document document_;
  pugi::xml_node root_;
};

}  // namespace orvane
