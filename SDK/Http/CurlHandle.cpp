#include "Http/CurlHandle.h"

namespace orvane {

CurlHandle makeCurlHandle() {
  // Never undone: other threads may hold handles until the process ends.
  static const CURLcode setUp = curl_global_init(CURL_GLOBAL_ALL);
  return CurlHandle(setUp == CURLE_OK ? curl_easy_init() : nullptr);
}

}  // namespace orvane
