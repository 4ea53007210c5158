#include "OrvaneCommon/OvUClipboard.h"

#include <sstream>

#include "OrvaneCommon/UrlParts.h"

std::vector<std::string> OvU_GetPasteboardFileNames(const orvane::Clipboard& clipboard) {
  std::vector<std::string> names;
  std::istringstream lines(clipboard.bytes("text/uri-list").value_or(""));
  for (std::string line; std::getline(lines, line);) {
    if (line.ends_with('\r')) line.pop_back();
    const orvane::UrlParts uri(line);
    if (uri.part(CURLUPART_SCHEME) != "file") continue;
    const std::string path = uri.part(CURLUPART_PATH, true);
    if (!path.empty()) names.push_back(path);
  }
  return names;
}
