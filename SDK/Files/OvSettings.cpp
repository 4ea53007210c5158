#include "Files/OvSettings.h"

#include <new>

OvSettings::OvSettings() : data_(ovsettings_new()) {
  if (!data_) throw std::bad_alloc();
}
