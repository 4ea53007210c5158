#include "Model/WildcardPattern.h"

#include <algorithm>
#include <functional>

#include "Model/FoldCase.h"

namespace orvane {
namespace {

constexpr size_t kNone = std::string_view::npos;

bool continuesCharacter(char byte) { return (static_cast<unsigned char>(byte) & 0xC0) == 0x80; }

// The position `count` characters behind `position`, which stands between two characters.
size_t skipCharacters(std::string_view text, size_t position, size_t count) {
  for (; count > 0; --count) {
    if (position == text.size()) return kNone;
    do {
      ++position;
    } while (position < text.size() && continuesCharacter(text[position]));
  }
  return position;
}

}  // namespace

WildcardPattern::WildcardPattern(std::string_view pattern) : pieces_(piecesOf(foldCase(pattern))) {}

std::vector<WildcardPattern::Piece> WildcardPattern::piecesOf(std::string_view foldedPattern) {
  std::vector<Piece> pieces(1);
  for (size_t i = 0; i < foldedPattern.size(); ++i) {
    std::vector<Run>& runs = pieces.back().runs;
    if (foldedPattern[i] == '*') {
      // Of the first piece it matters that it is empty: nothing is tied to the text's begin then.
      if (pieces.size() == 1 || !pieces.back().empty()) pieces.emplace_back();
    } else if (foldedPattern[i] == '?') {
      ++runs.back().anyCharacters;
    } else {
      if (foldedPattern[i] == '\\' && i + 1 < foldedPattern.size()) ++i;
      if (runs.back().anyCharacters > 0) runs.emplace_back();
      runs.back().literal.push_back(foldedPattern[i]);
    }
  }
  return pieces;
}

bool WildcardPattern::matchesFolded(std::string_view foldedText) const {
  size_t position = pieces_.front().endAt(foldedText, 0);
  if (pieces_.size() == 1) return position == foldedText.size();
  for (size_t i = 1; i + 1 < pieces_.size() && position != kNone; ++i) {
    position = pieces_[i].endOfFirst(foldedText, position);
  }
  if (position == kNone) return false;
  if (pieces_.back().empty()) return true;
  const size_t last = pieces_.back().beginOfLast(foldedText);
  return last != kNone && last >= position && pieces_.back().endAt(foldedText, last) == foldedText.size();
}

size_t WildcardPattern::Piece::endAt(std::string_view text, size_t begin, size_t firstRun) const {
  size_t position = begin;
  for (size_t i = firstRun; i < runs.size() && position != kNone; ++i) {
    if (!text.substr(position).starts_with(runs[i].literal)) return kNone;
    position = skipCharacters(text, position + runs[i].literal.size(), runs[i].anyCharacters);
  }
  return position;
}

size_t WildcardPattern::Piece::endOfFirst(std::string_view text, size_t begin) const {
  // Behind a star it makes no difference where the characters of any kind stand that the piece begins with.
  const bool beginsWithAny = runs.front().literal.empty();
  const size_t firstRun = beginsWithAny ? 1 : 0;
  if (beginsWithAny) begin = skipCharacters(text, begin, runs.front().anyCharacters);
  if (begin == kNone || firstRun == runs.size()) return begin;

  const Run& first = runs[firstRun];
  while ((begin = text.find(first.literal, begin)) != kNone) {
    size_t end = skipCharacters(text, begin + first.literal.size(), first.anyCharacters);
    if (end != kNone) end = endAt(text, end, firstRun + 1);
    if (end != kNone) return end;
    ++begin;
  }
  return kNone;
}

size_t WildcardPattern::Piece::beginOfLast(std::string_view text) const {
  size_t characters = 0;
  for (const Run& run : runs) {
    characters += run.anyCharacters;
    characters += static_cast<size_t>(std::ranges::count_if(run.literal, std::not_fn(continuesCharacter)));
  }
  size_t position = text.size();
  for (; characters > 0; --characters) {
    if (position == 0) return kNone;
    do {
      --position;
    } while (position > 0 && continuesCharacter(text[position]));
  }
  return position;
}

}  // namespace orvane
