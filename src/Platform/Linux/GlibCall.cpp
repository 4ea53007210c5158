#include "Platform/Linux/GlibCall.h"

#include <utility>

namespace orvane {

void GlibCall::ContextEnd::operator()(GMainContext* context) const {
  g_main_context_pop_thread_default(context);
  g_main_context_unref(context);
}

void GlibCall::SourceEnd::operator()(GSource* source) const {
  g_source_destroy(source);
  g_source_unref(source);
}

GlibCall::GlibCall(std::stop_token stop, std::chrono::milliseconds bound)
    : context_(g_main_context_new()), cancellable_(g_cancellable_new()) {
  g_main_context_push_thread_default(context_.get());
  setBound(bound);
  stop_.emplace(std::move(stop), Stop{this});
}

GlibCall::~GlibCall() {
  stop_.reset();
  timer_.reset();
  // What the library frees of ended subscriptions it frees in their context.
  while (g_main_context_iteration(context_.get(), FALSE)) {
  }
}

void GlibCall::setBound(std::chrono::milliseconds bound) {
  timer_ = attach(g_timeout_source_new(static_cast<guint>(bound.count())), [](gpointer call) -> gboolean {
    static_cast<GlibCall*>(call)->cancel("no answer in time");
    return G_SOURCE_REMOVE;
  });
}

void GlibCall::Stop::operator()() const {
  GSource* const source = g_idle_source_new();
  g_source_set_priority(source, G_PRIORITY_HIGH);
  const GSourceFunc function = [](gpointer data) -> gboolean {
    static_cast<GlibCall*>(data)->cancel("stopped");
    return G_SOURCE_REMOVE;
  };
  g_source_set_callback(source, function, call, nullptr);
  g_source_attach(source, call->context_.get());
  g_source_unref(source);
}

GlibCall::Source GlibCall::attach(GSource* source, GSourceFunc function) {
  g_source_set_callback(source, function, this, nullptr);
  g_source_attach(source, context_.get());
  return Source(source);
}

void GlibCall::cancel(const char* why) {
  if (!whyCancelled_.empty()) return;
  whyCancelled_ = why;
  g_cancellable_cancel(cancellable_.get());
}

void GlibCall::end(GObject*, GAsyncResult* result, gpointer call) {
  static_cast<GlibCall*>(call)->ended_.reset(static_cast<GAsyncResult*>(g_object_ref(result)));
}

Reference<GAsyncResult> GlibCall::await() {
  while (!ended_) g_main_context_iteration(context_.get(), TRUE);
  return std::move(ended_);
}

void GlibCall::fail(GError* error) const {
  const std::unique_ptr<GError, decltype(&g_error_free)> owner(error, &g_error_free);
  if (!whyCancelled_.empty()) throw GlibFailure(whyCancelled_);
  g_dbus_error_strip_remote_error(error);
  throw GlibFailure(error->message);
}

}  // namespace orvane
