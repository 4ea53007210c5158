#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace orvane {

/// A pattern that a whole text matches or not, regardless of letter case (foldCase): `*` stands for any characters or
/// none, `?` for one character, `\` takes its meaning from the character behind it. A `\` at the end stands for itself.
///
/// Any bytes are a pattern, and matching takes time proportional to the text's length at best, and to that times the
/// pattern's length at worst, however many stars there are. Reading may be done on several threads.
class WildcardPattern {
 public:
  explicit WildcardPattern(std::string_view pattern);

  /// @param foldedText the text as foldCase() returns it.
  bool matchesFolded(std::string_view foldedText) const;

 private:
  // Bytes as they stand, then so many characters of any kind.
  struct Run {
    std::string literal{};
    size_t anyCharacters = 0;
  };
  // What stands between two stars. Only the first run's literal may be empty.
  struct Piece {
    std::vector<Run> runs{1};

    bool empty() const { return runs.size() == 1 && runs[0].literal.empty() && runs[0].anyCharacters == 0; }
    // Where the runs from `firstRun` on end if they stand at `begin`; npos if they don't.
    size_t endAt(std::string_view text, size_t begin, size_t firstRun = 0) const;
    // Where the piece ends if it stands behind `begin`, as near as it can.
    size_t endOfFirst(std::string_view text, size_t begin) const;
    // Where it begins if it stands at the text's end.
    size_t beginOfLast(std::string_view text) const;
  };

  static std::vector<Piece> piecesOf(std::string_view foldedPattern);

  std::vector<Piece> pieces_;  // never empty; a single one if the pattern has no star
};

}  // namespace orvane
