#pragma once

#include <stdbool.h>
#include <stddef.h>

/// @file
/// The launch record: a flat description of one session to be started (where it goes, who logs in, what the screen
/// looks like, what is redirected), and its way into a launch file and out of one. For C11 and C++; in C++ the class
/// OvSettings is handier.
///
/// A record has no lock: it belongs to one thread at a time. Several records may be used on several threads. No
/// function but ovsettings_free takes null for a record, and none lets a C++ exception out.

#ifdef __cplusplus
extern "C" {
#endif

typedef struct OvSettingsData OvSettingsData;

/// A launch document may name another one to be read in its place. So many such steps a load takes before it fails.
enum { OVSETTINGS_MAXIMUM_HOPS = 8 };

/// A new record with the defaults of OvSettingsFields.def, or null if memory is short. Free it with ovsettings_free.
OvSettingsData* ovsettings_new(void);

/// Sets every field to its default and does not free what the record held: meant for new memory. On a record in use it
/// loses the strings.
void ovsettings_init(OvSettingsData* record);

/// Frees the record with its strings, which are wiped first. Null is let pass.
void ovsettings_free(OvSettingsData* record);

/// @name Accessors, two for each row of OvSettingsFields.def
/// A string is zero-terminated UTF-8, or null when unset. ovsettings_get_<stem> gives the record's own pointer: it is
/// not freed by the caller and not kept across a set or a load. ovsettings_set_<stem> stores a copy and wipes and frees
/// the old value; null unsets the field, and so does a lack of memory. The argument may be the record's own string.
/// @{
#define OVSETTINGS_STRING(stem, Name, defaultValue)                \
  const char* ovsettings_get_##stem(const OvSettingsData* record); \
  void ovsettings_set_##stem(OvSettingsData* record, const char* value);
#define OVSETTINGS_BOOL(stem, Name, defaultValue)           \
  bool ovsettings_get_##stem(const OvSettingsData* record); \
  void ovsettings_set_##stem(OvSettingsData* record, bool value);
#define OVSETTINGS_INT(stem, Name, defaultValue)           \
  int ovsettings_get_##stem(const OvSettingsData* record); \
  void ovsettings_set_##stem(OvSettingsData* record, int value);
#include "Files/OvSettingsFields.def"
/// @}

/// @name Launch files
/// All return 1 on success and 0 on failure; the log has a line for a failed fetch alone. A load replaces the whole
/// record and blocks on the network if the document names a URL to read instead: up to OVSETTINGS_MAXIMUM_HOPS
/// documents are fetched, and the record is then that of the last one. It fails if a fetch does or if that last one
/// still names a URL, and leaves the record as the last document that was read filled it. Anything at all reads as a
/// document: lines that mean nothing are ignored. docs/launch-file.md tells the format.
/// @{

/// Loads the file at `path`, enciphered or plain. If the load succeeds and `delete_file` is then set, the file is
/// removed. Fails, with the record untouched, if it isn't a regular file, can't be read or is empty.
int ovsettings_load_ovl_file(OvSettingsData* record, const char* path);

/// Loads `size` bytes, enciphered or plain. The buffer is neither changed nor kept; it may be null if `size` is 0.
/// Fails, with a record of defaults, if memory is short.
int ovsettings_load_ovl_buffer(OvSettingsData* record, const void* bytes, size_t size);

/// Loads what an http or https URL gives. Fails, with the record untouched, if the first fetch does. This first fetch
/// is none of the OVSETTINGS_MAXIMUM_HOPS.
int ovsettings_load_ovl_url(OvSettingsData* record, const char* url);

/// Writes the record to `path` as an enciphered file of mode 0600, replacing it as a whole.
///
/// Fails if the file can't be written, and if a value is too long to be read back: `password` above 254 bytes and
/// `program_full_path` above 1,022 (counted with `%`, LF and CR escaped, which makes them 2, 3 and 3 bytes), or any
/// other string that makes its line longer than 4,095 bytes. After a failure the file is as it was.
int ovsettings_save_ovl_file(const OvSettingsData* record, const char* path);
/// @}

#ifdef __cplusplus
}
#endif
