#pragma once

#include <utility>

#include "Files/ovsettings.h"

/// A launch record and its owner: ovsettings.h as a class. Movable, not copyable; a moved-from object may only be
/// destroyed or assigned to. One thread at a time for each object.
class OvSettings {
 public:
  /// A record with the defaults of OvSettingsFields.def.
  /// @throws std::bad_alloc if memory is short.
  OvSettings();

  /// Takes ownership of `record`, which comes from ovsettings_new.
  explicit OvSettings(void* record) : data_(static_cast<OvSettingsData*>(record)) {}

  ~OvSettings() { ovsettings_free(data_); }
  OvSettings(OvSettings&& other) noexcept : data_(std::exchange(other.data_, nullptr)) {}
  OvSettings& operator=(OvSettings&& other) noexcept {
    std::swap(data_, other.data_);
    return *this;
  }

  /// @name get<Name> and set<Name> for each row of OvSettingsFields.def
  /// They do what ovsettings_get_<stem> and ovsettings_set_<stem> do: a string from getX is the object's own, null when
  /// unset, and good until the next setX or load; setX copies its argument.
  /// @{
#define OVSETTINGS_STRING(stem, Name, defaultValue)                      \
  const char* get##Name() const { return ovsettings_get_##stem(data_); } \
  void set##Name(const char* value) { ovsettings_set_##stem(data_, value); }
#define OVSETTINGS_BOOL(stem, Name, defaultValue)                 \
  bool get##Name() const { return ovsettings_get_##stem(data_); } \
  void set##Name(bool value) { ovsettings_set_##stem(data_, value); }
#define OVSETTINGS_INT(stem, Name, defaultValue)                 \
  int get##Name() const { return ovsettings_get_##stem(data_); } \
  void set##Name(int value) { ovsettings_set_##stem(data_, value); }
#include "Files/OvSettingsFields.def"
  /// @}

  /// @name Launch files, as the functions of these names in ovsettings.h: 1 on success, 0 on failure
  /// @{
  int loadOvlFile(const char* path) { return ovsettings_load_ovl_file(data_, path); }
  int loadOvlBuffer(const void* bytes, size_t size) { return ovsettings_load_ovl_buffer(data_, bytes, size); }
  int loadOvlURL(const char* url) { return ovsettings_load_ovl_url(data_, url); }
  int saveOvlFile(const char* path) const { return ovsettings_save_ovl_file(data_, path); }
  /// @}

 private:
  OvSettingsData* data_;
};
