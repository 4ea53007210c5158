#pragma once

#include <string>

/// `text` with the five characters that XML takes for its own (" & ' < >) as entities, for use in an element or an
/// attribute. All other bytes are kept as they are. Any thread.
std::string XmlEncode(const std::string& text);
