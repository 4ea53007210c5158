#pragma once

#include <string>
#include <string_view>

namespace orvane {

/// `text`, a URL as people write it, in the form that goes over the wire: every byte that no URL has, those of UTF-8
/// beyond ASCII among them, becomes "%XX". What is escaped already and what has a meaning in URLs, "#" and "["
/// included, stays; a "%" that escapes nothing becomes "%25".
std::string escapedUrl(std::string_view text);

/// A path with all but unreserved characters and "/" percent-escaped, "%" included: the path of a URL that means just
/// this path. Any thread.
std::string escapedPath(std::string_view path);

}  // namespace orvane
