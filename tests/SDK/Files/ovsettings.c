#include "Files/ovsettings.h"

#include <string.h>

// The flat layer as a C program meets it: 1 if a saved record comes back as it was.
int saveAndLoadInC(const char* path) {
  OvSettingsData* record = ovsettings_new();
  if (!record) return 0;
  ovsettings_set_username(record, "ann");
  ovsettings_set_full_screen(record, true);
  ovsettings_set_desktop_width(record, 1280);
  int result = ovsettings_save_ovl_file(record, path);
  ovsettings_set_username(record, NULL);
  result = result && ovsettings_load_ovl_file(record, path) && strcmp(ovsettings_get_username(record), "ann") == 0 &&
           ovsettings_get_full_screen(record) && ovsettings_get_desktop_width(record) == 1280;
  ovsettings_free(record);
  return result;
}
