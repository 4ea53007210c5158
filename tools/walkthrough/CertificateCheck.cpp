#include "CertificateCheck.h"

#include <memory>

#include <curl/curl.h>

namespace orvane::walkthrough {

std::string certificateProblem(const std::string& url, const std::string& certificateFile) {
  constexpr long kConnectTimeoutSeconds = 10;
  const std::unique_ptr<CURL, decltype(&curl_easy_cleanup)> handle(curl_easy_init(), &curl_easy_cleanup);
  if (!handle) return "out of memory";
  char details[CURL_ERROR_SIZE] = {};
  curl_easy_setopt(handle.get(), CURLOPT_URL, url.c_str());
  curl_easy_setopt(handle.get(), CURLOPT_CAINFO, certificateFile.c_str());
  // Otherwise each authority that the system trusts could vouch for the broker as well.
  curl_easy_setopt(handle.get(), CURLOPT_CAPATH, nullptr);
  curl_easy_setopt(handle.get(), CURLOPT_SSL_VERIFYPEER, 1L);
  curl_easy_setopt(handle.get(), CURLOPT_SSL_VERIFYHOST, 2L);
  curl_easy_setopt(handle.get(), CURLOPT_CONNECT_ONLY, 1L);
  curl_easy_setopt(handle.get(), CURLOPT_CONNECTTIMEOUT, kConnectTimeoutSeconds);
  curl_easy_setopt(handle.get(), CURLOPT_ERRORBUFFER, details);
  const CURLcode result = curl_easy_perform(handle.get());
  if (result == CURLE_OK) return {};
  return *details ? details : curl_easy_strerror(result);
}

}  // namespace orvane::walkthrough
