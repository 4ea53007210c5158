#include "Http/HttpClient.h"

#include <algorithm>
#include <memory>
#include <new>

#include "Http/CurlHandle.h"
#include "Http/HttpException.h"
#include "Support/OvWriteLog.h"

namespace {

// A server may announce any size it likes.
constexpr curl_off_t kMaximumReserve = 64 << 20;

struct HeaderListDeleter {
  void operator()(curl_slist* list) const { curl_slist_free_all(list); }
};
using HeaderList = std::unique_ptr<curl_slist, HeaderListDeleter>;

[[noreturn]] void throwCurlError(CURLcode code) { throw HttpException(code, curl_easy_strerror(code)); }

// What libcurl would take for something else. Blanks and control characters it refuses by itself, but a zero ends its
// text, and what stands before an "@" would be sent to the host as credentials.
bool isMisleading(const std::string& url) {
  const size_t authority = url.find("://") + 3;
  const size_t end = std::min(url.find_first_of("/?#", authority), url.size());
  return url.find('\0') != std::string::npos || url.find('@', authority) < end;
}

HeaderList makeHeaders(const std::string& userAgent, const std::string& contentType) {
  for (const std::string& value : {userAgent, contentType}) {
    if (value.find_first_of("\r\n") != std::string::npos) throwCurlError(CURLE_BAD_FUNCTION_ARGUMENT);
  }
  HeaderList headers(curl_slist_append(nullptr, ("User-Agent: " + userAgent).c_str()));
  if (!headers || !curl_slist_append(headers.get(), ("Content-Type: " + contentType).c_str())) {
    throwCurlError(CURLE_OUT_OF_MEMORY);
  }
  return headers;
}

struct Collector {
  CURL* handle;
  std::string body;

  // Taking less than all that is offered ends the transfer with CURLE_WRITE_ERROR.
  static size_t collect(const char* bytes, size_t size, size_t nmemb, void* object) {
    OvWriteLog(5, "httpResponse, size=%d, nmemb=%d", static_cast<int>(size), static_cast<int>(nmemb));
    auto& [handle, body] = *static_cast<Collector*>(object);
    const size_t count = size * nmemb;
    if (count > HttpClient::kMaximumBodySize - body.size()) return 0;
    try {
      if (body.empty()) body.reserve(announcedSize(handle));
      body.append(bytes, count);
    } catch (const std::bad_alloc&) {  // must not unwind through libcurl
      return 0;
    }
    return count;
  }

  static size_t announcedSize(CURL* handle) {
    curl_off_t announced = -1;
    curl_easy_getinfo(handle, CURLINFO_CONTENT_LENGTH_DOWNLOAD_T, &announced);
    return static_cast<size_t>(std::clamp<curl_off_t>(announced, 0, kMaximumReserve));
  }
};

}  // namespace

HttpClient::HttpClient() : handle_(orvane::makeCurlHandle().release()) {}

HttpClient::~HttpClient() { orvane::CurlHandleDeleter()(handle_); }

std::string HttpClient::get() { return sendRequest("GET", nullptr); }

std::string HttpClient::post(const std::string& content) { return sendRequest("POST", &content); }

std::string HttpClient::sendRequest(const std::string& method, const std::string* content) {
  const std::string url = method == "GET" ? getURL() : getURLWithoutQuery();
  if (url.size() > kMaximumUrlLength || isMisleading(url)) throwCurlError(CURLE_URL_MALFORMAT);
  if (!handle_) throwCurlError(CURLE_FAILED_INIT);
  const bool isPost = method == "POST";
  // A POST without this option would send what comes from the standard input.
  const char* fields = content ? content->c_str() : isPost ? "" : nullptr;
  const HeaderList headers = makeHeaders(getUserAgent(), getContentType());
  Collector collector{handle_, {}};

  curl_easy_reset(handle_);
  OvWriteLog(5, "HttpClient::sendRequest: url=%s, content=%s", url.c_str(), fields ? fields : "");
  curl_easy_setopt(handle_, CURLOPT_URL, url.c_str());
  curl_easy_setopt(handle_, CURLOPT_POST, isPost ? 1L : 0L);
  if (getUseSSL()) {
    curl_easy_setopt(handle_, CURLOPT_SSL_VERIFYHOST, 0L);
    curl_easy_setopt(handle_, CURLOPT_SSL_VERIFYPEER, 0L);
  }
  if (fields) curl_easy_setopt(handle_, CURLOPT_POSTFIELDS, fields);
  curl_easy_setopt(handle_, CURLOPT_WRITEFUNCTION, &Collector::collect);
  curl_easy_setopt(handle_, CURLOPT_WRITEDATA, &collector);
  curl_easy_setopt(handle_, CURLOPT_CONNECTTIMEOUT, static_cast<long>(getConnectTimeout()));
  curl_easy_setopt(handle_, CURLOPT_HTTPHEADER, headers.get());

  const CURLcode result = orvane::performTransfer(handle_);
  if (result != CURLE_OK) throwCurlError(result);
  long status = 0;
  curl_easy_getinfo(handle_, CURLINFO_RESPONSE_CODE, &status);
  if (status != 200) throw HttpException(static_cast<int>(status), "error response received from HTTP server");
  return std::move(collector.body);
}
