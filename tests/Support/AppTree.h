#pragma once

#include <memory>
#include <string>
#include <utility>

#include "Model/AppFolderItem.h"

/// @file
/// Trees of applications, written as they read.

template <class Item>
std::shared_ptr<Item> named(std::shared_ptr<Item> item, const std::string& displayName) {
  item->setDisplayName(displayName);
  return item;
}

inline std::shared_ptr<AppItem> app(const std::string& displayName) {
  return named(std::make_shared<AppItem>(), displayName);
}

inline std::shared_ptr<AppFolderItem> folder(const std::string& displayName, AppFolderItem::Items items = {}) {
  auto result = named(AppFolderItem::appFolder(), displayName);
  result->addItems(std::move(items));
  return result;
}
