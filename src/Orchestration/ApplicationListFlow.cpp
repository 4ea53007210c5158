// The broker's list as the tree that the user sees.

#include <atomic>
#include <exception>
#include <future>
#include <system_error>
#include <thread>
#include <unordered_map>

#include "Orchestration/Connect.h"
#include "Support/OvWriteLog.h"
#include "Support/ico2png.h"

namespace {

struct Entry {
  std::shared_ptr<const OvApplication> application;
  std::shared_ptr<AppItem> item;
};

// How many icons are worth a thread: below that, starting one takes about as long as decoding them.
constexpr size_t kIconsPerThread = 64;

std::shared_ptr<AppItem> itemOf(const OvApplication& application) {
  auto item = std::make_shared<AppItem>();
  item->setName(application.getName());
  item->setDisplayName(application.getShortcut().empty() ? application.getName() : application.getShortcut());
  return item;
}

// Most of the work of a list is in its icons, and each stands alone.
void decodeIcons(const std::vector<Entry>& entries) {
  std::atomic<size_t> next = 0;
  const auto decode = [&] {
    for (size_t index = next++; index < entries.size(); index = next++) {
      auto icon = ico2png_decode_icon_string(entries[index].application->getLargeIcon());
      if (icon) entries[index].item->setIcon(std::make_shared<const IconImage>(std::move(*icon)));
    }
  };
  const size_t threads = std::min<size_t>(std::thread::hardware_concurrency(), entries.size() / kIconsPerThread);
  std::vector<std::future<void>> helpers;
  try {
    while (helpers.size() + 1 < threads) helpers.push_back(std::async(std::launch::async, decode));
  } catch (const std::system_error&) {
    OvWriteLog(2, "%s: no thread to help with the icons", __func__);  // it takes longer without
  }
  decode();
  for (std::future<void>& helper : helpers) helper.get();
}

std::shared_ptr<AppFolderItem> treeOf(std::list<std::shared_ptr<OvApplication>> applications) {
  std::vector<Entry> entries;
  entries.reserve(applications.size());
  for (const auto& application : applications) entries.push_back({application, itemOf(*application)});
  decodeIcons(entries);

  const auto root = AppFolderItem::appFolder();
  std::unordered_map<std::string, std::shared_ptr<AppFolderItem>> folders;
  for (const auto& [application, item] : entries) {
    auto& folder = folders[application->getFolderName()];
    if (!folder) {
      folder = AppFolderItem::appFolder();
      folder->setDisplayName(application->getFolderName());
      root->addItem(folder);
    }
    folder->addItem(item);
  }
  root->sortContentAlphabetically();
  return root;
}

}  // namespace

std::shared_ptr<AppFolderItem> OvBrokerClientController::getApplicationListForBrokerClient(Connect& connect) {
  try {
    return treeOf(connect.client->getApplicationList());
  } catch (const OvException& exception) {
    OvWriteLog(2, "%s: Ov exception has been caught [%s], error code [%d]", __func__, exception.what(),
               exception.getErrorCode());
    connect.error = OvU_MakeNSError(static_cast<int>(BrokerControllerError::kApplicationList), exception.what());
  } catch (const std::exception& exception) {  // memory is short, or the like
    OvWriteLog(2, "%s: %s", __func__, exception.what());
    connect.fail(BrokerControllerError::kApplicationList);
  }
  return nullptr;
}
