#pragma once

#include <map>
#include <pugixml.hpp>
#include <set>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace orvane::demo {

/// A farm file that can't be used; the text is `FILE: line N: what is wrong`.
class FarmFileError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

/// The text of a farm file, for the line numbers of messages.
struct FarmFileText {
  std::string fileName;
  std::string text;
};

/// Reads the attributes of one element and complains about those that nobody asked for. All functions that read throw
/// FarmFileError. The file's text must outlive it.
class ElementReader {
 public:
  ElementReader(const FarmFileText& file, pugi::xml_node element) : file_(file), element_(element) {}

  pugi::xml_node element() const { return element_; }
  bool has(const char* name) const { return !element_.attribute(name).empty(); }

  /// Empty if the attribute is absent.
  std::string text(const char* name);
  /// Neither absent nor empty.
  std::string requiredText(const char* name);
  /// A decimal number of 0 or above.
  int number(const char* name, int ifAbsent);
  int requiredNumber(const char* name);
  /// "yes" or "no".
  bool yesOrNo(const char* name, bool ifAbsent);
  /// The words between blanks.
  std::set<std::string> words(const char* name);
  /// The attributes that are there of these, as they stand.
  std::map<std::string, std::string> anyOf(const std::vector<std::string_view>& names);

  /// Call when all is read: no attribute may be left over.
  void finish() const;

  [[noreturn]] void fail(const std::string& what) const;

 private:
  const FarmFileText& file_;
  pugi::xml_node element_;
  std::set<std::string> asked_;
};

/// Throws FarmFileError for the place `offset` bytes into the file.
[[noreturn]] void failAt(const FarmFileText& file, ptrdiff_t offset, const std::string& what);

}  // namespace orvane::demo
