#pragma once

#include <functional>
#include <string>

#include "Controllers/Surface.h"

/// The page that asks whether a new connection is to be connected when the program starts.
class ConnectOnStartConfirmationViewController : public orvane::Surface {
 public:
  using DoneBlock = std::function<void(bool isAutolaunched)>;

  /// @param onDoneBlock is called at most once, in place of any given before.
  void setupConfirmationViewWithConnectionName(const std::string& name, bool isAlreadyAutolaunched,
                                               DoneBlock onDoneBlock);
  /// Drops the callback.
  void resetContent();

  void setAutolaunched(bool isAutolaunched);
  void onDoneClick();

  const std::string& confirmationText() const { return _confirmationText; }
  bool isAutolaunched() const { return _isAutolaunched; }

 private:
  std::string _confirmationText{};
  bool _isAutolaunched = false;
  DoneBlock _onDoneBlock{};
};
