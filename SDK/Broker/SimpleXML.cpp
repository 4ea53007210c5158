#include "Broker/SimpleXML.h"

#include <algorithm>
#include <climits>
#include <cstdint>
#include <cstring>
#include <utility>
#include <vector>

namespace {

constexpr size_t kNotFound = std::string_view::npos;

// The first bytes of a text, to be compared at one go. Behind the end of a shorter one stand zeros.
uint32_t beginningOf(std::string_view text) {
  uint32_t beginning = 0;
  memcpy(&beginning, text.data(), std::min(text.size(), sizeof beginning));
  return beginning;
}

// A "<" of a document. What follows it is noted so that a search needn't look at the text, which is far away in memory.
struct TagPosition {
  uint32_t offset;
  uint32_t following;
};

// All tags of a text, or nothing if there are so many that a list of them would take much memory and save little time:
// an answer that holds icons has one in hundreds of bytes.
constexpr size_t kBytesPerTag = 32;

std::optional<std::vector<TagPosition>> tagsOf(std::string_view text) {
  std::vector<TagPosition> tags;
  const size_t most = text.size() <= UINT32_MAX ? text.size() / kBytesPerTag + 64 : 0;
  for (size_t tag = 0; (tag = text.find('<', tag)) != kNotFound; ++tag) {
    if (tags.size() == most) return std::nullopt;
    tags.push_back({static_cast<uint32_t>(tag), beginningOf(text.substr(tag + 1))});
  }
  return tags;
}

bool isWhiteSpace(char c) { return c == ' ' || (c >= '\t' && c <= '\r'); }

// The byte of a numeric entity, given what stands behind "&#": digits beyond 8 bits fall away.
char numericEntity(std::string_view digits) {
  const bool hexadecimal = digits.starts_with('x');
  const unsigned base = hexadecimal ? 16 : 10;
  if (hexadecimal) digits.remove_prefix(1);
  unsigned value = 0;
  for (const char c : digits) {
    unsigned digit = base;
    if (c >= '0' && c <= '9') digit = static_cast<unsigned>(c - '0');
    if (c >= 'a' && c <= 'f') digit = static_cast<unsigned>(c - 'a' + 10);
    if (c >= 'A' && c <= 'F') digit = static_cast<unsigned>(c - 'A' + 10);
    if (digit >= base) break;
    value = value * base + digit;
  }
  return static_cast<char>(value & 0xff);
}

constexpr std::pair<std::string_view, char> kNamedEntities[] = {
    {"lt", '<'}, {"gt", '>'}, {"amp", '&'}, {"quot", '"'}, {"apos", '\''}};

void appendEntity(std::string& text, std::string_view entity) {
  if (entity.starts_with('#')) {
    text += numericEntity(entity.substr(1));
    return;
  }
  const auto* named = std::ranges::find(kNamedEntities, entity, &std::pair<std::string_view, char>::first);
  if (named != std::end(kNamedEntities)) text += named->second;
}

std::string unescaped(std::string_view raw) {
  std::string text;
  while (true) {
    const size_t ampersand = raw.find('&');
    text += raw.substr(0, ampersand);
    if (ampersand == kNotFound) return text;
    const size_t end = raw.find(';', ampersand);
    if (end == kNotFound) return text;
    appendEntity(text, raw.substr(ampersand + 1, end - ampersand - 1));
    raw.remove_prefix(end + 1);
  }
}

}  // namespace

// The whole text that was given, and its tags, looked up once: most of an answer is icons, and its fields are searched
// for one by one.
struct SimpleXML::Document {
  explicit Document(std::string all) : text(std::move(all)), tags(tagsOf(text)) {}

  const std::string text;
  const std::optional<std::vector<TagPosition>> tags;
};

// What follows the "<" of a tag, as far as the list of tags knows it.
class SimpleXML::Beginning {
 public:
  Beginning(bool isClosing, std::string_view name) {
    char bytes[sizeof value_] = {'/'};
    const size_t slash = isClosing ? 1 : 0;
    const size_t length = std::min(name.size(), sizeof bytes - slash);
    memcpy(bytes + slash, name.data(), length);
    memcpy(&value_, bytes, sizeof value_);
    memset(bytes, 0, sizeof bytes);
    memset(bytes, 0xff, slash + length);
    memcpy(&mask_, bytes, sizeof mask_);
  }

  bool fits(uint32_t following) const { return ((following ^ value_) & mask_) == 0; }

 private:
  uint32_t value_;
  uint32_t mask_;
};

SimpleXML::SimpleXML(std::string text) {
  if (text.empty()) return;
  document_ = std::make_shared<const Document>(std::move(text));
  raw_ = document_->text;
}

size_t SimpleXML::base() const { return static_cast<size_t>(raw_.data() - document_->text.data()); }

SimpleXML::Tag SimpleXML::tagAt(size_t index) const {
  const std::vector<TagPosition>& tags = *document_->tags;
  const bool inside = index < tags.size() && tags[index].offset < base() + raw_.size();
  return {inside ? tags[index].offset - base() : kNotFound, index};
}

SimpleXML::Tag SimpleXML::firstTagFrom(size_t offset) const {
  if (!document_->tags) return {raw_.find('<', offset), 0};
  if (offset == 0) return tagAt(firstTag_);
  const std::vector<TagPosition>& tags = *document_->tags;
  const auto first = std::ranges::lower_bound(tags.begin() + static_cast<std::ptrdiff_t>(firstTag_), tags.end(),
                                              base() + offset, {}, &TagPosition::offset);
  return tagAt(static_cast<size_t>(first - tags.begin()));
}

SimpleXML::Tag SimpleXML::tagBehind(Tag tag) const {
  return document_->tags ? tagAt(tag.index + 1) : Tag{raw_.find('<', tag.offset + 1), 0};
}

SimpleXML::Tag SimpleXML::nextLike(Tag from, const Beginning& wanted) const {
  if (!document_->tags) return from;
  const std::vector<TagPosition>& tags = *document_->tags;
  const size_t end = base() + raw_.size();
  while (from.index < tags.size() && tags[from.index].offset < end && !wanted.fits(tags[from.index].following))
    ++from.index;
  return tagAt(from.index);
}

SimpleXML::Tag SimpleXML::findName(Tag from, TagKind kind, std::string_view name) const {
  const bool isClosing = kind == TagKind::kClosing;
  const Beginning wanted(isClosing, name);
  Tag tag = from;
  for (; (tag = nextLike(tag, wanted)).offset != kNotFound; tag = tagBehind(tag)) {
    std::string_view rest = raw_.substr(tag.offset + 1);
    if (isClosing) {
      if (!rest.starts_with('/')) continue;
      rest.remove_prefix(1);
    }
    if (rest.size() <= name.size() || !rest.starts_with(name)) continue;
    const char next = rest[name.size()];
    if (isWhiteSpace(next) || next == '>' || (!isClosing && next == '/')) break;
  }
  return tag;
}

SimpleXML SimpleXML::part(size_t begin, size_t end, size_t firstTag) const {
  SimpleXML found;
  if (begin == end) return found;
  found.document_ = document_;
  found.raw_ = raw_.substr(begin, end - begin);
  found.firstTag_ = firstTag;
  return found;
}

int SimpleXML::FindTag(const char* name, SimpleXML& attributes, SimpleXML& content, int startOffset) const {
  if (!document_ || startOffset < 0 || raw_.size() > INT_MAX) return -1;
  const std::string_view wanted(name);

  const Tag opening = findName(firstTagFrom(static_cast<size_t>(startOffset)), TagKind::kOpening, wanted);
  if (opening.offset == kNotFound) return -1;
  size_t attributesBegin = opening.offset + 1 + wanted.size();
  while (attributesBegin < raw_.size() && isWhiteSpace(raw_[attributesBegin])) ++attributesBegin;
  const size_t openingEnd = raw_.find('>', attributesBegin);
  if (openingEnd == kNotFound) return -1;

  const bool isEmpty = openingEnd > attributesBegin && raw_[openingEnd - 1] == '/';
  if (isEmpty) {
    // Made before either is assigned, since either may be this object.
    SimpleXML foundAttributes = part(attributesBegin, openingEnd - 1, opening.index + 1);
    attributes = std::move(foundAttributes);
    content = SimpleXML();
    return static_cast<int>(openingEnd + 1);
  }

  Tag contentTag = tagBehind(opening);
  while (contentTag.offset < openingEnd) contentTag = tagBehind(contentTag);
  const Tag closing = findName(contentTag, TagKind::kClosing, wanted);
  if (closing.offset == kNotFound) return -1;
  const size_t closingEnd = raw_.find('>', closing.offset);
  if (closingEnd == kNotFound) return -1;
  SimpleXML foundAttributes = part(attributesBegin, openingEnd, opening.index + 1);
  SimpleXML foundContent = part(openingEnd + 1, closing.offset, contentTag.index);
  attributes = std::move(foundAttributes);
  content = std::move(foundContent);
  return static_cast<int>(closingEnd + 1);
}

std::string SimpleXML::text() const {
  std::string text = unescaped(raw_);
  text.resize(strlen(text.c_str()));  // a zero byte ends it here as it does for the users of GetData
  return text;
}

const char* SimpleXML::GetData() const {
  if (!document_) return nullptr;
  if (!data_) data_ = unescaped(raw_);
  return data_->c_str();
}
