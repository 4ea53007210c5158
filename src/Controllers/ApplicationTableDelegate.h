#pragma once

#include <memory>

class AppItem;

/// Starts what the user chose in the table of applications.
class ApplicationTableDelegate {
 public:
  virtual ~ApplicationTableDelegate() = default;
  /// `item` is an application, no folder.
  virtual void applicationHasBeenChoosen(const std::shared_ptr<AppItem>& item) = 0;
};
