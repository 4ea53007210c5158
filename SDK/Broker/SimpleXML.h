#pragma once

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

/// Reads a broker's answers: not as an XML document but as text that is searched for one element at a time.
///
/// An object holds the raw text of an element, or nothing. What FindTag finds shares the bytes it was found in: no text
/// is copied but by GetData. Comments and CDATA have no meaning; an element ends at the first closing tag of its name,
/// so that elements of one name can't nest. Any bytes are safe to read, in time linear in the text for each call.
/// One thread at a time for each object.
class SimpleXML {
 public:
  SimpleXML() = default;
  explicit SimpleXML(std::string text);

  /// Searches for the element `name` from the byte `startOffset` on. Its raw attribute text goes to `attributes` and
  /// its raw content to `content` (each nothing if there is none; either may be this object).
  ///
  /// A name counts only if white space, "/" or ">" follows it, and a closing one if white space or ">" does.
  /// @return the offset behind the element, or -1 if there is none, or none that ends.
  int FindTag(const char* name, SimpleXML& attributes, SimpleXML& content, int startOffset = 0) const;

  /// The text with its entities resolved, or null if there is none. Made by the first call and owned by the object.
  ///
  /// A numeric entity is the one byte of its value; an unknown one is nothing; an "&" that no ";" follows ends the
  /// text.
  const char* GetData() const;

  /// What GetData gives, as a text of its own that isn't kept: for a large text that is asked for once. Empty if there
  /// is none. Several threads may call it at a time.
  std::string text() const;

 private:
  struct Document;
  class Beginning;
  enum class TagKind { kOpening, kClosing };

  // A "<" of this text: where it stands, and which one of the document it is.
  struct Tag {
    size_t offset;
    size_t index;
  };

  Tag tagAt(size_t index) const;
  Tag firstTagFrom(size_t offset) const;
  Tag tagBehind(Tag tag) const;
  // The first tag from `from` on that may begin so, or the first at all if the document has no list of its tags.
  Tag nextLike(Tag from, const Beginning& wanted) const;
  Tag findName(Tag from, TagKind kind, std::string_view name) const;
  size_t base() const;
  SimpleXML part(size_t begin, size_t end, size_t firstTag) const;

  std::shared_ptr<const Document> document_;  // null: nothing
  std::string_view raw_;                      // within the document's text
  size_t firstTag_ = 0;                       // the first of the document's tags that doesn't stand before raw_
  mutable std::optional<std::string> data_;
};
