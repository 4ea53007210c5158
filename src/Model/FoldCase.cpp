#include "Model/FoldCase.h"

#include <unicode/uchar.h>
#include <unicode/utf8.h>

namespace orvane {
namespace {

// The macro's own arithmetic isn't written for this warning.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wconversion"
UChar32 nextCharacter(std::string_view utf8, size_t& position) {
  UChar32 character = 0;
  U8_NEXT_OR_FFFD(utf8.data(), position, utf8.size(), character);
  return character;
}
#pragma GCC diagnostic pop

}  // namespace

// ICU rather than towlower, which follows the process's locale, and has no folding ("ς" isn't "σ" in lower case). The
// desktop's toolkit brings it into the process anyway, and this table needs no data file to be opened.
std::string foldCase(std::string_view utf8) {
  std::string folded;
  folded.reserve(utf8.size());
  for (size_t position = 0; position < utf8.size();) {
    const UChar32 character = u_foldCase(nextCharacter(utf8, position), U_FOLD_CASE_DEFAULT);
    char bytes[U8_MAX_LENGTH];
    size_t size = 0;
    U8_APPEND_UNSAFE(bytes, size, character);
    folded.append(bytes, size);
  }
  return folded;
}

}  // namespace orvane
