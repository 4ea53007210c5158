#pragma once

#include <memory>
#include <optional>
#include <utility>

#include "Orchestration/BrokerControllerError.h"
#include "Orchestration/OvBrokerClientController.h"
#include "Orchestration/PromptAnswer.h"

/// What stands as a farm's preferred location after a connect that failed.
inline constexpr const char* kEmptyPrefferedLocationName = "";

/// One connect, or one refresh of the applications, on its way. Used on the farm's queue.
struct OvBrokerClientController::Connect {
  using Receiver = OvBrokerClientControllerDelegate;

  const std::shared_ptr<OvFarm> farm;
  const std::shared_ptr<OvLocation> location;  // null for a refresh
  const Delegate delegate;
  const std::shared_ptr<PendingTask> task;
  std::shared_ptr<OvBrokerClient> client{};  // the farm's when the flow began, which the farm may have parted with
  std::optional<OvError> error{};

  bool isRunning() const { return task->isRunning(); }

  /// Says why it fails. @return false
  bool fail(BrokerControllerError code) {
    error = getErrorForBrokerControllerErrorCode(code);
    return false;
  }
  bool fail(const OvException& exception) {
    error = OvU_MakeNSError(exception.getErrorCode(), exception.getErrorText());
    return false;
  }

  /// Calls `tell` with the delegate, if there still is one.
  template <class Tell>
  void tell(const Tell& tell) const {
    if (const auto receiver = delegate.lock()) tell(*receiver);
  }

  /// Calls `ask` with the delegate and a callback, and waits for that to be called.
  template <class Answer, class Ask>
  Answer ask(Answer unanswered, const Ask& ask) const {
    orvane::PromptAnswer<Answer> answer(std::move(unanswered));
    {
      // Nothing of either is held while waiting: if the delegate goes, so does the question.
      auto block = answer.block();
      tell([&](Receiver& receiver) { ask(receiver, std::move(block)); });
    }
    return answer.wait();
  }

  /// Tells the log and the delegate of `error`.
  void reportFailure(const char* function) const;
};
