#include "Platform/Linux/SecretService.h"

#include <utility>
#include <vector>

#include "Platform/Linux/GlibCall.h"
#include "Platform/Linux/PromptingService.h"
#include "Support/OvWriteLog.h"

namespace orvane {

namespace {

// A locked collection shows which items it holds by their attributes, but not by the name of their schema.
const SecretSchema kSchema = {
    "Orvane.Secret",
    SECRET_SCHEMA_DONT_MATCH_NAME,
    {{"service", SECRET_SCHEMA_ATTRIBUTE_STRING}, {"account", SECRET_SCHEMA_ATTRIBUTE_STRING}, {nullptr, {}}},
    0,
    nullptr,
    nullptr,
    nullptr,
    nullptr,
    nullptr,
    nullptr,
    nullptr};

using Attributes = std::unique_ptr<GHashTable, decltype(&g_hash_table_unref)>;
using Value = std::unique_ptr<SecretValue, void (*)(gpointer)>;

Attributes attributesOf(const std::string& service, const std::string& account) {
  return {secret_attributes_build(&kSchema, "service", service.c_str(), "account", account.c_str(), nullptr),
          &g_hash_table_unref};
}

// The steps of a call, each of which throws GlibFailure.
class Conversation {
 public:
  Conversation(SessionBus& bus, std::stop_token stop, const SecretService::Bounds& bounds)
      : call_(std::move(stop), bounds.service), service_(connectToSecretService(bus, call_, bounds)) {}

  // Null if there is none.
  Reference<SecretCollection> defaultCollection() {
    return Reference<SecretCollection>(call_.run(
        [&](auto callback, auto data) {
          secret_collection_for_alias(service_.get(), SECRET_COLLECTION_DEFAULT, SECRET_COLLECTION_NONE,
                                      call_.cancellable(), callback, data);
        },
        secret_collection_for_alias_finish));
  }

  // Null if there is none.
  Reference<SecretItem> item(SecretCollection* collection, const Attributes& attributes) {
    GList* const items = call_.run(
        [&](auto callback, auto data) {
          secret_collection_search(collection, &kSchema, attributes.get(), SECRET_SEARCH_NONE, call_.cancellable(),
                                   callback, data);
        },
        [&](auto* result, auto* error) { return secret_collection_search_finish(collection, result, error); });
    SecretItem* const first = items == nullptr ? nullptr : static_cast<SecretItem*>(g_object_ref(items->data));
    g_list_free_full(items, g_object_unref);
    return Reference<SecretItem>(first);
  }

  void unlock(gpointer itemOrCollection) {
    GList objects{itemOrCollection, nullptr, nullptr};
    const int unlocked = call_.run(
        [&](auto callback, auto data) {
          secret_service_unlock(service_.get(), &objects, call_.cancellable(), callback, data);
        },
        [&](auto* result, auto* error) {
          return secret_service_unlock_finish(service_.get(), result, nullptr, error);
        });
    if (unlocked == 0) throw GlibFailure("locked, and not unlocked by the user");
  }

  std::vector<uint8_t> bytesOf(SecretItem* item) {
    call_.run([&](auto callback, auto data) { secret_item_load_secret(item, call_.cancellable(), callback, data); },
              [&](auto* result, auto* error) { return secret_item_load_secret_finish(item, result, error); });
    const Value value(secret_item_get_secret(item), secret_value_unref);
    if (!value) throw GlibFailure("locked again");
    gsize size = 0;
    const char* const bytes = secret_value_get(value.get(), &size);
    return {bytes, bytes + size};
  }

  void store(const Attributes& attributes, const std::string& label, std::span<const uint8_t> bytes) {
    const Value value(
        secret_value_new(reinterpret_cast<const char*>(bytes.data()), std::ssize(bytes), "application/octet-stream"),
        secret_value_unref);
    call_.run(
        [&](auto callback, auto data) {
          secret_service_store(service_.get(), &kSchema, attributes.get(), SECRET_COLLECTION_DEFAULT, label.c_str(),
                               value.get(), call_.cancellable(), callback, data);
        },
        [&](auto* result, auto* error) { return secret_service_store_finish(service_.get(), result, error); });
  }

 private:
  GlibCall call_;
  const Reference<::SecretService> service_;
};

}  // namespace

SecretService::SecretService(Bounds bounds) : bounds_(bounds), bus_(std::make_shared<SessionBus>()) {}

SecretStore::Item SecretService::load(const std::string& service, const std::string& account) {
  try {
    Conversation conversation(*bus_, stop_.get_token(), bounds_);
    const Reference<SecretCollection> collection = conversation.defaultCollection();
    if (!collection) return {Reading::kAbsent};
    const Reference<SecretItem> item = conversation.item(collection.get(), attributesOf(service, account));
    if (!item && !secret_collection_get_locked(collection.get())) return {Reading::kAbsent};
    if (!item) throw GlibFailure("locked");
    if (secret_item_get_locked(item.get())) conversation.unlock(item.get());
    return {Reading::kFound, conversation.bytesOf(item.get())};
  } catch (const GlibFailure& failure) {
    OvWriteLog(2, "%s::%s: %s", "SecretService", __func__, failure.what());
    return {Reading::kUnreadable};
  }
}

bool SecretService::save(const std::string& service, const std::string& account, std::span<const uint8_t> bytes) {
  try {
    Conversation conversation(*bus_, stop_.get_token(), bounds_);
    const Reference<SecretCollection> collection = conversation.defaultCollection();
    if (collection && secret_collection_get_locked(collection.get())) conversation.unlock(collection.get());
    conversation.store(attributesOf(service, account), service + ": " + account, bytes);
    return true;
  } catch (const GlibFailure& failure) {
    OvWriteLog(2, "%s::%s: %s", "SecretService", __func__, failure.what());
    return false;
  }
}

}  // namespace orvane
