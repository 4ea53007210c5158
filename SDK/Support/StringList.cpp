#include "Support/StringList.h"

#include <algorithm>
#include <cstring>
#include <string_view>

int ovutils_stringlist_get_size(const char* list) {
  if (!list || !*list) return 0;
  const std::string_view text = list;
  return static_cast<int>(std::count(text.begin(), text.end(), ',')) + 1;
}

int ovutils_stringlist_get_item(const char* list, int index, char* buffer, size_t bufferSize) {
  if (!buffer) bufferSize = 0;
  if (bufferSize > 0) memset(buffer, 0, bufferSize);
  if (!list || index < 0) return 0;
  for (std::string_view rest = list;;) {
    const size_t start = rest.find_first_not_of(',');
    if (start == std::string_view::npos) return 0;
    rest.remove_prefix(start);
    const std::string_view item = rest.substr(0, rest.find(','));
    if (index-- == 0) {
      if (bufferSize > 0) item.copy(buffer, bufferSize - 1);
      return 1;
    }
    rest.remove_prefix(item.size());
  }
}
