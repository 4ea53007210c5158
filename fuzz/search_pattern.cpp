// What users type into the search field, and names that brokers give. The input is a size byte, so much pattern, and a
// name; with the size's high bit the name is repeated to 8 KiB, to find patterns that take too long.

#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>
#include <vector>

#include <time.h>

#include "Model/AppFolderItem.h"
#include "Model/FoldCase.h"
#include "Model/WildcardPattern.h"

namespace {

constexpr size_t kLongName = 8 * 1024;
constexpr size_t kMostForTable = 256;
constexpr double kMostSeconds = 5;  // far from what it takes, and even farther from what backtracking would

void require(bool holds) {
  if (!holds) abort();
}

// Valid UTF-8 as its characters, each as it is spelled.
std::vector<std::string> characters(std::string_view utf8) {
  std::vector<std::string> result;
  for (const char byte : utf8) {
    if ((static_cast<unsigned char>(byte) & 0xC0) != 0x80) result.emplace_back();
    result.back().push_back(byte);
  }
  return result;
}

// A row of the table of which begins of the pattern match which begins of the text, for one more of the pattern.
bool matchesByTable(const std::vector<std::string>& pattern, const std::vector<std::string>& text) {
  std::vector<bool> row(text.size() + 1);
  row[0] = true;
  for (size_t i = 0; i < pattern.size(); ++i) {
    std::vector<bool> next(text.size() + 1);
    const bool quoted = pattern[i] == "\\" && i + 1 < pattern.size();
    const std::string& wanted = quoted ? pattern[++i] : pattern[i];
    if (!quoted && wanted == "*") {
      next[0] = row[0];
      for (size_t end = 1; end <= text.size(); ++end) next[end] = next[end - 1] || row[end];
    } else {
      for (size_t end = 1; end <= text.size(); ++end) {
        next[end] = row[end - 1] && ((!quoted && wanted == "?") || wanted == text[end - 1]);
      }
    }
    row = next;
  }
  return row.back();
}

double secondsOfThisThread() {
  timespec time{};
  clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
  return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) / 1e9;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  if (size == 0) return 0;
  const std::string_view rest(reinterpret_cast<const char*>(data) + 1, size - 1);
  const std::string_view pattern = rest.substr(0, data[0] & 0x7F);
  std::string name(rest.substr(pattern.size()));
  const bool longName = (data[0] & 0x80) != 0 && !name.empty();
  while (longName && name.size() < kLongName) name += std::string(name);

  const auto item = std::make_shared<AppItem>();
  item->setDisplayName(name);
  const auto folder = AppFolderItem::appFolder();
  folder->addItem(item);

  const double before = secondsOfThisThread();
  const bool matches = orvane::WildcardPattern(pattern).matchesFolded(item->foldedDisplayName());
  const bool found = !folder->applicationItemsUsingFilterPattern(pattern).empty();
  require(secondsOfThisThread() - before < kMostSeconds);
  if (name.size() > kMostForTable) return 0;

  const std::vector<std::string> text = characters(item->foldedDisplayName());
  const std::string folded = orvane::foldCase(pattern);
  require(matches == matchesByTable(characters(folded), text));
  require(found == (pattern.empty() || matchesByTable(characters("*" + folded + "*"), text)));
  return 0;
}
