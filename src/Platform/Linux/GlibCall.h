#pragma once

#include <chrono>
#include <memory>
#include <optional>
#include <stdexcept>
#include <stop_token>
#include <string>

#include <gio/gio.h>

namespace orvane {

/// A reference to a GObject, which is let go at the end.
struct Unreference {
  void operator()(gpointer object) const { g_object_unref(object); }
};
template <typename Object>
using Reference = std::unique_ptr<Object, Unreference>;

/// Why a GlibCall came to nothing, for the log.
struct GlibFailure : std::runtime_error {
  using std::runtime_error::runtime_error;
};

/// Runs asynchronous operations of GLib one after another on a thread that has no main loop, within a time that they
/// share, until somebody else stops them.
///
/// All callbacks run on the thread that made the object, inside run(), and so do cancellations. All operations must
/// obey their cancellable.
class GlibCall {
 public:
  /// @param stop  ends the call from another thread.
  GlibCall(std::stop_token stop, std::chrono::milliseconds bound);
  ~GlibCall();
  GlibCall(const GlibCall&) = delete;
  GlibCall& operator=(const GlibCall&) = delete;

  /// To be given to each operation.
  GCancellable* cancellable() const { return cancellable_.get(); }

  /// From now on the call may take this long.
  void setBound(std::chrono::milliseconds bound);

  /// Runs an operation to its end.
  /// @param start   starts it: called with the GAsyncReadyCallback and the data to be given to the operation.
  /// @param finish  called with the GAsyncResult and a GError** in the operation's context; gives its result.
  /// @throws GlibFailure when it fails, when the time is over or the call is stopped.
  template <typename Start, typename Finish>
  auto run(Start start, Finish finish) {
    start(&GlibCall::end, this);
    const Reference<GAsyncResult> ended = await();
    GError* error = nullptr;
    auto result = finish(ended.get(), &error);
    if (error != nullptr) fail(error);
    return result;
  }

 private:
  struct ContextEnd {
    void operator()(GMainContext* context) const;
  };
  struct SourceEnd {
    void operator()(GSource* source) const;
  };
  // What the stop token's callback calls, on the thread that stops.
  struct Stop {
    void operator()() const;
    GlibCall* call;
  };
  using Source = std::unique_ptr<GSource, SourceEnd>;

  static void end(GObject* object, GAsyncResult* result, gpointer call);
  Source attach(GSource* source, GSourceFunc function);
  void cancel(const char* why);
  Reference<GAsyncResult> await();
  [[noreturn]] void fail(GError* error) const;

  const std::unique_ptr<GMainContext, ContextEnd> context_;
  const Reference<GCancellable> cancellable_;
  Source timer_;
  Reference<GAsyncResult> ended_{};
  std::string whyCancelled_;
  std::optional<std::stop_callback<Stop>> stop_;
};

}  // namespace orvane
