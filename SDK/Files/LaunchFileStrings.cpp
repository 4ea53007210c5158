#include "Files/LaunchFileStrings.h"

#include <cstdlib>

#include "Files/OvSettingsData.h"
#include "Support/TextCoding.h"

namespace orvane {

void appendEscaped(std::string& out, const char* text) {
  for (; *text; ++text) {
    switch (*text) {
      case '%':
        out += "%%";
        break;
      case '\n':
        out += "%0a";
        break;
      case '\r':
        out += "%0d";
        break;
      default:
        out += *text;
    }
  }
}

void undoEscapes(char* text) {
  const char* from = text;
  char* to = text;
  while (*from) {
    if (*from != '%' || *++from == '%') {
      *to++ = *from++;
    } else {
      char digits[3] = {};
      for (int i = 0; i < 2 && *from; ++i) digits[i] = *from++;
      *to++ = static_cast<char>(strtoul(digits, nullptr, 16));
    }
  }
  *to = '\0';
}

void read_ovl_string(std::string_view tag, char* text, char*& field) {
  if (field || (tag != "s" && tag != "u")) return;
  undoEscapes(text);
  if (tag == "u") {
    assignText(field, text);
  } else {
    field = ovutils_cp1252_to_utf8(text);
  }
}

void write_ovl_string(std::string& stream, std::string_view key, const char* value) {
  if (!value) return;
  stream += key;
  stream += ":u:";
  appendEscaped(stream, value);
  stream += '\n';
}

}  // namespace orvane
