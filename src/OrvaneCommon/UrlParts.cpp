#include "OrvaneCommon/UrlParts.h"

namespace orvane {

UrlParts::UrlParts(const std::string& url)
    : handle_(curl_url()),
      isUrl_(handle_ && url.find('\0') == std::string::npos &&
             curl_url_set(handle_.get(), CURLUPART_URL, url.c_str(), CURLU_NON_SUPPORT_SCHEME | CURLU_PATH_AS_IS) ==
                 CURLUE_OK) {}

std::string UrlParts::part(CURLUPart part, bool decoded) const {
  char* text = nullptr;
  if (!isUrl_ || curl_url_get(handle_.get(), part, &text, decoded ? CURLU_URLDECODE : 0) != CURLUE_OK) return "";
  const std::unique_ptr<char, void (*)(void*)> owner(text, curl_free);
  return text;
}

}  // namespace orvane
