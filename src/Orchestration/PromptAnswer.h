#pragma once

#include <functional>
#include <future>
#include <memory>
#include <mutex>

namespace orvane {

/// A question to the user that a worker waits for: block() is the callback to hand out, wait() blocks until it has been
/// called, on whatever thread, and gives its argument. A second call of the callback does nothing; if all copies of it
/// go without a call, wait() gives `unanswered`.
template <class Answer>
class PromptAnswer {
 public:
  explicit PromptAnswer(Answer unanswered) : unanswered_(std::move(unanswered)) {}

  /// To be called once, before wait(); the callback must be the only thing that keeps its like.
  std::function<void(Answer)> block() {
    auto promise = std::make_shared<Promise>();
    answer_ = promise->value.get_future();
    return [promise = std::move(promise)](Answer answer) {
      std::call_once(promise->isAnswered, [&] { promise->value.set_value(std::move(answer)); });
    };
  }

  Answer wait() {
    try {
      return answer_.get();
    } catch (const std::future_error&) {  // nobody can answer any more
      return unanswered_;
    }
  }

 private:
  struct Promise {
    std::promise<Answer> value;
    std::once_flag isAnswered;
  };

  Answer unanswered_;
  std::future<Answer> answer_;
};

}  // namespace orvane
