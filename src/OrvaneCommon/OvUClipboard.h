#pragma once

#include <string>
#include <vector>

#include "Platform/Clipboard.h"

/// The paths of the files that the clipboard holds as a list of file URIs (text/uri-list), in its order; empty if it
/// holds no such list. Comments, other URIs, files of other hosts and names with control characters are passed over.
/// Main thread only.
std::vector<std::string> OvU_GetPasteboardFileNames(const orvane::Clipboard& clipboard);
