#include "Links/XmlEncode.h"

namespace {

const char* entityOf(char byte) {
  switch (byte) {
    case '"':
      return "&quot;";
    case '&':
      return "&amp;";
    case '\'':
      return "&apos;";
    case '<':
      return "&lt;";
    case '>':
      return "&gt;";
    default:
      return nullptr;
  }
}

}  // namespace

std::string XmlEncode(const std::string& text) {
  std::string encoded;
  encoded.reserve(text.size());
  for (const char byte : text) {
    if (const char* entity = entityOf(byte)) {
      encoded += entity;
    } else {
      encoded += byte;
    }
  }
  return encoded;
}
