#include "Http/Downloads.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <string>

#include <fcntl.h>
#include <unistd.h>

#include "Http/CurlHandle.h"
#include "Http/HttpClient.h"
#include "Http/HttpException.h"
#include "Support/FileReplacement.h"
#include "Support/OvWriteLog.h"

namespace {

struct FileCloser {
  void operator()(FILE* file) const { fclose(file); }
};
using File = std::unique_ptr<FILE, FileCloser>;

// As fopen's "wb", but what it creates is readable to its owner only. Unbuffered, so that a full disk is met within the
// transfer.
File createFile(const char* path) {
  const int descriptor = open(path, O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0600);
  if (descriptor < 0) return nullptr;
  File file(fdopen(descriptor, "wb"));
  if (file) {
    setvbuf(file.get(), nullptr, _IONBF, 0);
  } else {
    close(descriptor);
  }
  return file;
}

// Where a body goes, and how much of it may still come.
struct BodyFile {
  FILE* const file;
  size_t room = HttpClient::kMaximumBodySize;
};

size_t writeToFile(const char* bytes, size_t size, size_t nmemb, void* body) {
  auto& target = *static_cast<BodyFile*>(body);
  if (size * nmemb > target.room) return 0;
  target.room -= size * nmemb;
  return fwrite(bytes, size, nmemb, target.file);
}

void logFailure(const char* function, const HttpException& exception) {
  OvWriteLog(2, "%s: HttpException, errorCode=%d, errorText=%s", function, exception.getErrorCode(), exception.what());
}

}  // namespace

bool ovutils_download_url(const char* url, const char* path) {
  try {
    HttpClient client;
    client.setURL(url);
    client.setUserAgent("OVTSC");
    const std::string body = client.get();
    return orvane::replaceFile(path, body.data(), body.size());
  } catch (const HttpException& exception) {
    logFailure(__func__, exception);
    return false;
  }
}

bool ovutils_download_url_to_buffer(const char* url, void** buffer, size_t* size) {
  *buffer = nullptr;
  *size = 0;
  try {
    HttpClient client;
    client.setURL(url);
    const std::string body = client.get();
    *buffer = malloc(std::max<size_t>(body.size(), 1));  // an empty body is a success and no null pointer
    if (!*buffer) return false;
    memcpy(*buffer, body.data(), body.size());
    *size = body.size();
    return true;
  } catch (const HttpException& exception) {
    logFailure(__func__, exception);
    return false;
  }
}

bool ovutilsext_download_url(const char* url, const char* path) {
  const File file = createFile(path);
  if (!file) return false;
  const orvane::CurlHandle handle = orvane::makeCurlHandle();
  if (!handle) return false;
  curl_easy_setopt(handle.get(), CURLOPT_URL, url);
  curl_easy_setopt(handle.get(), CURLOPT_WRITEFUNCTION, &writeToFile);
  BodyFile body{file.get()};
  curl_easy_setopt(handle.get(), CURLOPT_WRITEDATA, &body);
  curl_easy_setopt(handle.get(), CURLOPT_SSL_VERIFYPEER, 0L);
  curl_easy_setopt(handle.get(), CURLOPT_FOLLOWLOCATION, 1L);
  return orvane::performTransfer(handle.get()) == CURLE_OK;
}
