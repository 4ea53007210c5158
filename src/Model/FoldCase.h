#pragma once

#include <string>
#include <string_view>

namespace orvane {

/// `utf8` with each character replaced by its simple case folding of Unicode, so that texts which differ in letter case
/// alone become equal: "É" and "é", "Σ", "σ" and "ς", but not "ß" and "ss", and not a letter and its two-part form with
/// a combining accent. No locale has a say. One character stays one character.
///
/// The result is valid UTF-8, so that its bytes sort in the order of the code points: each ill-formed sequence becomes
/// one U+FFFD. Callable on any thread.
std::string foldCase(std::string_view utf8);

}  // namespace orvane
