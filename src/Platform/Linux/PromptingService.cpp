#include "Platform/Linux/PromptingService.h"

namespace {

constexpr char kPromptInterface[] = "org.freedesktop.Secret.Prompt";

// A question to the user, from its prompt to the answer. It ends with the service too, and when the call is cancelled.
//
// The library's own takes the prompt back by "Dismiss" then, on which the most common service aborts and locks every
// program out. This one just stops listening; the answer, when it comes, still serves the next call.
class Question {
 public:
  // Asks. The task gets the answer, which is of the type, or an error if there is none or the user declines.
  static void ask(GTask* task, SecretPrompt* prompt, const GVariantType* type) {
    new Question(task, G_DBUS_PROXY(prompt), type);
  }

 private:
  Question(GTask* task, GDBusProxy* prompt, const GVariantType* type)
      : task_(task),
        type_(g_variant_type_copy(type), &g_variant_type_free),
        bus_(static_cast<GDBusConnection*>(g_object_ref(g_dbus_proxy_get_connection(prompt)))) {
    g_task_set_task_data(task_, this, [](gpointer question) { delete static_cast<Question*>(question); });
    const char* const path = g_dbus_proxy_get_object_path(prompt);
    const char* const service = g_dbus_proxy_get_name(prompt);
    completion_ = g_dbus_connection_signal_subscribe(bus_.get(), service, kPromptInterface, "Completed", path, nullptr,
                                                     G_DBUS_SIGNAL_FLAGS_NONE, &Question::complete, this, nullptr);
    watch_ = g_bus_watch_name_on_connection(bus_.get(), service, G_BUS_NAME_WATCHER_FLAGS_NONE, nullptr,
                                            &Question::vanish, this, nullptr);
    cancellation_ = g_cancellable_source_new(g_task_get_cancellable(task_));
    g_source_set_callback(cancellation_, G_SOURCE_FUNC(&Question::cancel), this, nullptr);
    g_source_attach(cancellation_, g_task_get_context(task_));
    // No window of ours to stand before: the call doesn't know which.
    g_dbus_connection_call(bus_.get(), service, path, kPromptInterface, "Prompt", g_variant_new("(s)", ""), nullptr,
                           G_DBUS_CALL_FLAGS_NO_AUTO_START, -1, g_task_get_cancellable(task_), &Question::begin,
                           g_object_ref(task_));
  }

  static void begin(GObject* bus, GAsyncResult* result, gpointer data) {
    const orvane::Reference<GTask> task(static_cast<GTask*>(data));
    auto* const question = static_cast<Question*>(g_task_get_task_data(task.get()));
    GError* error = nullptr;
    GVariant* const answer = g_dbus_connection_call_finish(reinterpret_cast<GDBusConnection*>(bus), result, &error);
    if (answer != nullptr) {
      g_variant_unref(answer);
    } else if (question->isOver_) {
      g_error_free(error);
    } else {
      question->end([&](GTask* ended) { g_task_return_error(ended, error); });
    }
  }

  static void complete(GDBusConnection*, const char*, const char*, const char*, const char*, GVariant* arguments,
                       gpointer question) {
    gboolean isDismissed = FALSE;
    GVariant* answer = nullptr;
    if (g_variant_is_of_type(arguments, G_VARIANT_TYPE("(bv)"))) {
      g_variant_get(arguments, "(bv)", &isDismissed, &answer);
    }
    auto* const asked = static_cast<Question*>(question);
    const bool isAnswer = answer != nullptr && !isDismissed && g_variant_is_of_type(answer, asked->type_.get());
    asked->end([&](GTask* task) {
      if (isAnswer) {
        g_task_return_pointer(task, g_variant_ref(answer),
                              [](gpointer unused) { g_variant_unref(static_cast<GVariant*>(unused)); });
      } else {
        g_task_return_new_error(task, G_IO_ERROR, G_IO_ERROR_FAILED, "the user was asked in vain");
      }
    });
    g_clear_pointer(&answer, g_variant_unref);
  }

  static void vanish(GDBusConnection*, const char*, gpointer question) {
    static_cast<Question*>(question)->end([](GTask* task) {
      g_task_return_new_error(task, G_DBUS_ERROR, G_DBUS_ERROR_NO_REPLY,
                              "the service went away while the user was asked");
    });
  }

  static gboolean cancel(GCancellable*, gpointer question) {
    static_cast<Question*>(question)->end([](GTask* task) { g_task_return_error_if_cancelled(task); });
    return G_SOURCE_REMOVE;
  }

  // Lets the task go, and the question with it unless its beginning is still awaited.
  template <typename Return>
  void end(Return returnTo) {
    isOver_ = true;
    g_dbus_connection_signal_unsubscribe(bus_.get(), completion_);
    g_bus_unwatch_name(watch_);
    g_source_destroy(cancellation_);
    g_source_unref(cancellation_);
    const orvane::Reference<GTask> task(task_);
    returnTo(task.get());
  }

  GTask* const task_;
  const std::unique_ptr<GVariantType, decltype(&g_variant_type_free)> type_;
  const orvane::Reference<GDBusConnection> bus_;
  guint completion_ = 0;
  guint watch_ = 0;
  GSource* cancellation_ = nullptr;
  bool isOver_ = false;
};

// The library's connection with questions of this kind.
struct OrvanePromptingService {
  ::SecretService parent;
  orvane::GlibCall* call;
  orvane::SecretService::Bounds bounds;
};
struct OrvanePromptingServiceClass {
  ::SecretServiceClass parent;
};

G_DEFINE_TYPE(OrvanePromptingService, orvane_prompting_service, SECRET_TYPE_SERVICE)

void startPrompt(::SecretService* self, SecretPrompt* prompt, const GVariantType* type, GCancellable* cancellable,
                 GAsyncReadyCallback callback, gpointer data) {
  const auto* const connection = reinterpret_cast<OrvanePromptingService*>(self);
  connection->call->setBound(connection->bounds.prompt);
  Question::ask(g_task_new(self, cancellable, callback, data), prompt, type);
}

GVariant* finishPrompt(::SecretService* self, GAsyncResult* result, GError** error) {
  const auto* const connection = reinterpret_cast<OrvanePromptingService*>(self);
  connection->call->setBound(connection->bounds.service);
  return static_cast<GVariant*>(g_task_propagate_pointer(reinterpret_cast<GTask*>(result), error));
}

void orvane_prompting_service_class_init(OrvanePromptingServiceClass* type) {
  type->parent.prompt_async = startPrompt;
  type->parent.prompt_finish = finishPrompt;
}

void orvane_prompting_service_init(OrvanePromptingService*) {}

}  // namespace

namespace orvane {

void SessionBus::connect(GlibCall& call) {
  const std::lock_guard lock(mutex_);
  // A lost connection is the process's as long as somebody holds it.
  if (connection_ && g_dbus_connection_is_closed(connection_.get())) connection_.reset();
  if (connection_) return;
  connection_.reset(
      call.run([&](auto callback, auto data) { g_bus_get(G_BUS_TYPE_SESSION, call.cancellable(), callback, data); },
               g_bus_get_finish));
  // Else a bus that goes away would end the process.
  g_dbus_connection_set_exit_on_close(connection_.get(), FALSE);
}

Reference<::SecretService> connectToSecretService(SessionBus& bus, GlibCall& call,
                                                  const SecretService::Bounds& bounds) {
  bus.connect(call);
  Reference<::SecretService> connection(call.run(
      [&](auto callback, auto data) {
        secret_service_open(orvane_prompting_service_get_type(), nullptr, SECRET_SERVICE_OPEN_SESSION,
                            call.cancellable(), callback, data);
      },
      secret_service_open_finish));
  auto* const prompting = reinterpret_cast<OrvanePromptingService*>(connection.get());
  prompting->call = &call;
  prompting->bounds = bounds;
  return connection;
}

}  // namespace orvane
