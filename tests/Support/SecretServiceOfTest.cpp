#include "Support/SecretServiceOfTest.h"

#include <condition_variable>
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <mutex>
#include <stdexcept>
#include <vector>

#include <dlfcn.h>
#include <gio/gio.h>

namespace {

constexpr char kService[] = "org.freedesktop.secrets";
constexpr int kPatience = std::chrono::milliseconds(ChildProcess::kPatience).count();

void check(GError* error) {
  if (error == nullptr) return;
  const std::string text = error->message;
  g_error_free(error);
  throw std::runtime_error(text);
}

// The daemon's own library has a prompter for tests, which the daemon is told of by a variable.
template <typename Function>
Function* prompterFunction(const char* name) {
  static void* const library = dlopen("libgcr-base-3.so.1", RTLD_NOW);
  void* const function = library == nullptr ? nullptr : dlsym(library, name);
  if (function == nullptr) throw std::runtime_error(dlerror());
  return reinterpret_cast<Function*>(function);
}

}  // namespace

// The test's own end of the bus: speaks to the bus and the daemon, and swallows all calls that it gets.
class SecretServiceOfTest::Connection {
 public:
  explicit Connection(const std::string& address) {
    GError* error = nullptr;
    constexpr auto kFlags = static_cast<GDBusConnectionFlags>(G_DBUS_CONNECTION_FLAGS_AUTHENTICATION_CLIENT |
                                                              G_DBUS_CONNECTION_FLAGS_MESSAGE_BUS_CONNECTION);
    bus_ = g_dbus_connection_new_for_address_sync(address.c_str(), kFlags, nullptr, nullptr, &error);
    check(error);
    g_dbus_connection_add_filter(bus_, &Connection::swallow, this, nullptr);
  }
  ~Connection() {
    g_dbus_connection_close_sync(bus_, nullptr, nullptr);
    g_object_unref(bus_);
    // Whoever was swallowing the last call is done with it.
    const std::lock_guard lock(mutex_);
  }
  Connection(const Connection&) = delete;
  Connection& operator=(const Connection&) = delete;

  std::string name() const { return g_dbus_connection_get_unique_name(bus_); }

  void request(const char* name, const char* path, const char* interface, const char* method, GVariant* arguments) {
    GError* error = nullptr;
    GVariant* const answer = g_dbus_connection_call_sync(bus_, name, path, interface, method, arguments, nullptr,
                                                         G_DBUS_CALL_FLAGS_NONE, kPatience, nullptr, &error);
    check(error);
    g_variant_unref(answer);
  }

  void awaitService() {
    GMainContext* const context = g_main_context_new();
    g_main_context_push_thread_default(context);
    State state = State::kAwaited;
    const GBusNameAppearedCallback appeared = [](GDBusConnection*, const char*, const char*, gpointer data) {
      *static_cast<State*>(data) = State::kThere;
    };
    const guint watch = g_bus_watch_name_on_connection(bus_, kService, G_BUS_NAME_WATCHER_FLAGS_NONE, appeared, nullptr,
                                                       &state, nullptr);
    const GSourceFunc late = [](gpointer data) -> gboolean {
      *static_cast<State*>(data) = State::kLate;
      return G_SOURCE_REMOVE;
    };
    GSource* const timer = g_timeout_source_new(kPatience);
    g_source_set_callback(timer, late, &state, nullptr);
    g_source_attach(timer, context);
    while (state == State::kAwaited) g_main_context_iteration(context, TRUE);
    g_source_destroy(timer);
    g_source_unref(timer);
    g_bus_unwatch_name(watch);
    while (g_main_context_iteration(context, FALSE)) {
    }
    g_main_context_pop_thread_default(context);
    g_main_context_unref(context);
    if (state == State::kLate) throw std::runtime_error("the keyring daemon doesn't come");
  }

  int swallowedCalls() const {
    const std::lock_guard lock(mutex_);
    return swallowedCalls_;
  }
  void awaitSwallowedCall() {
    std::unique_lock lock(mutex_);
    const bool came = changed_.wait_for(lock, ChildProcess::kPatience, [this] { return swallowedCalls_ > 0; });
    if (!came) throw std::runtime_error("nobody called");
  }

 private:
  enum class State { kAwaited, kThere, kLate };

  // On a thread of the library's own.
  static GDBusMessage* swallow(GDBusConnection*, GDBusMessage* message, gboolean incoming, gpointer self) {
    if (!incoming || g_dbus_message_get_message_type(message) != G_DBUS_MESSAGE_TYPE_METHOD_CALL) return message;
    g_object_unref(message);
    auto* const connection = static_cast<Connection*>(self);
    const std::lock_guard lock(connection->mutex_);
    ++connection->swallowedCalls_;
    connection->changed_.notify_all();
    return nullptr;
  }

  GDBusConnection* bus_ = nullptr;
  mutable std::mutex mutex_;
  std::condition_variable changed_;
  int swallowedCalls_ = 0;
};

SecretServiceOfTest::SecretServiceOfTest() : connection_(std::make_unique<Connection>(bus_.address())) {
  std::filesystem::create_directory(folder_.path() / "run");
  std::filesystem::permissions(folder_.path() / "run", std::filesystem::perms::owner_all);
}

SecretServiceOfTest::~SecretServiceOfTest() {
  if (hasAnsweringPrompter_) prompterFunction<void()>("gcr_mock_prompter_stop")();
}

void SecretServiceOfTest::start(Prompter prompter, const std::string& password) {
  // The first daemon goes before the second comes.
  daemon_.reset();
  const std::string folder = folder_.path().string();
  std::vector<std::string> command{"-i",
                                   "PATH=/usr/bin:/bin",
                                   "HOME=" + folder,
                                   "XDG_DATA_HOME=" + folder,
                                   "XDG_CONFIG_HOME=" + folder,
                                   "XDG_RUNTIME_DIR=" + folder_.file("run"),
                                   "DBUS_SESSION_BUS_ADDRESS=" + bus_.address()};
  if (prompter == Prompter::kSilent) {
    command.push_back("GNOME_KEYRING_TEST_PROMPTER=" + connection_->name());
  } else if (prompter == Prompter::kAnswering) {
    const char* const name = prompterFunction<const char*()>("gcr_mock_prompter_start")();
    hasAnsweringPrompter_ = true;
    command.push_back(std::string("GNOME_KEYRING_TEST_PROMPTER=") + name);
  }
  for (const char* word : {"gnome-keyring-daemon", "--foreground", "--components=secrets"}) command.push_back(word);
  if (!password.empty()) command.push_back("--unlock");
  daemon_ = std::make_unique<ChildProcess>("/usr/bin/env", command, password);
  connection_->awaitService();
}

void SecretServiceOfTest::startSilent() {
  connection_->request("org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus", "RequestName",
                       g_variant_new("(su)", kService, 0u));
}

void SecretServiceOfTest::lock() {
  const char* const collections[] = {"/org/freedesktop/secrets/aliases/default"};
  connection_->request(kService, "/org/freedesktop/secrets", "org.freedesktop.Secret.Service", "Lock",
                       g_variant_new("(@ao)", g_variant_new_objv(collections, 1)));
}

void SecretServiceOfTest::signalDaemon(int signal) { daemon_->send(signal); }

void SecretServiceOfTest::answerNextPrompt(const std::optional<std::string>& password,
                                           std::chrono::milliseconds delay) {
  prompterFunction<void(unsigned)>("gcr_mock_prompter_set_delay_msec")(static_cast<unsigned>(delay.count()));
  if (password) {
    prompterFunction<void(const char*, const char*, ...)>("gcr_mock_prompter_expect_password_ok")(password->c_str(),
                                                                                                  nullptr);
  } else {
    prompterFunction<void()>("gcr_mock_prompter_expect_password_cancel")();
  }
}

void SecretServiceOfTest::awaitSwallowedCall() { connection_->awaitSwallowedCall(); }

int SecretServiceOfTest::swallowedCalls() const { return connection_->swallowedCalls(); }
