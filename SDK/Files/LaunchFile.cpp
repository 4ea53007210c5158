#include <cstdlib>
#include <exception>
#include <string>
#include <string_view>

#include <unistd.h>

#include "Crypto/crypto.h"
#include "Files/LaunchFileReader.h"
#include "Files/LaunchFileWriter.h"
#include "Files/OvSettingsData.h"
#include "Http/Downloads.h"
#include "Support/FileReplacement.h"
#include "Support/SecureMemory.h"

namespace {

/// A document from the network; it may hold secrets.
class Download {
 public:
  explicit Download(const char* url) : isComplete_(ovutils_download_url_to_buffer(url, &bytes_, &size_)) {}
  ~Download() {
    orvane::wipe(bytes_, size_);
    free(bytes_);
  }
  Download(const Download&) = delete;
  Download& operator=(const Download&) = delete;

  bool isComplete() const { return isComplete_; }
  std::string_view document() const { return {static_cast<const char*>(bytes_), size_}; }

 private:
  void* bytes_ = nullptr;
  size_t size_ = 0;
  bool isComplete_;
};

bool load(OvSettingsData& record, std::string_view document) {
  orvane::readLaunchDocument(record, document);
  for (int hop = 0; orvane::isSet(record.url); ++hop) {
    if (hop == OVSETTINGS_MAXIMUM_HOPS) return false;
    const Download download(record.url);
    if (!download.isComplete()) return false;
    orvane::readLaunchDocument(record, download.document());
  }
  return true;
}

// No exception leaves a function of C linkage. What is thrown here is that memory is short.
template <typename Work>
int resultOf(Work work) {
  try {
    return work() ? 1 : 0;
  } catch (const std::exception&) {
    return 0;
  }
}

}  // namespace

int ovsettings_load_ovl_file(OvSettingsData* record, const char* path) {
  if (!path) return 0;
  return resultOf([record, path] {
    const std::string file(path);  // the load may free a path that is the record's own string
    std::optional<std::string> content = orvane::readFile(file);
    if (!content || content->empty()) return false;
    const orvane::WipeAtEnd wipeContent(*content);
    if (!load(*record, *content)) return false;
    // `url` needs no look here: no load succeeds that leaves it set.
    if (record->delete_file) unlink(file.c_str());
    return true;
  });
}

int ovsettings_load_ovl_buffer(OvSettingsData* record, const void* bytes, size_t size) {
  if (!bytes && size > 0) return 0;
  return resultOf([=] { return load(*record, {static_cast<const char*>(bytes), size}); });
}

int ovsettings_load_ovl_url(OvSettingsData* record, const char* url) {
  if (!url) return 0;
  return resultOf([record, url] {
    const Download download(url);
    return download.isComplete() && load(*record, download.document());
  });
}

int ovsettings_save_ovl_file(const OvSettingsData* record, const char* path) {
  if (!path) return 0;
  return resultOf([record, path] {
    std::string text;
    const orvane::WipeAtEnd wipeText(text);
    if (!orvane::writeLaunchDocument(*record, text)) return false;
    const std::string container = orvane::encipheredContainer(text);
    return orvane::replaceFile(path, container.data(), container.size());
  });
}
