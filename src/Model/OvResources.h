#pragma once

#include "Model/RecordFields.h"

#define ORVANE_RESOURCES_FIELDS(ROW)                                                                               \
  ROW(int32_t, sound, Sound, 0, "sound", archived())          /* 0, 1 or 2: the broker's audio redirection mode */ \
  ROW(int32_t, keyboard, Keyboard, 0, "keyboard", archived()) /* 0, 1 or 2 */                                      \
  ROW(bool, doRedirectDiskDrives, DoRedirectDiskDrives, false, "doRedirectDiskDrives", archived())                 \
  ROW(bool, doRedirectSerialPorts, DoRedirectSerialPorts, false, "doRedirectSerialPorts", archived())              \
  ROW(bool, doRedirectParallelPorts, DoRedirectParallelPorts, false, "doRedirectParallelPorts", archived())        \
  ROW(bool, doRedirectClipboard, DoRedirectClipboard, false, "doRedirectClipboard", archived())                    \
  ROW(bool, doRedirectPrinters, DoRedirectPrinters, false, "doRedirectPrinters", archived())                       \
  ROW(bool, doRedirectSmartcards, DoRedirectSmartcards, false, "doRedirectSmartcards", archived())

/// What of this machine a farm's sessions may use. A value; no lock.
class OvResources {
  ORVANE_RECORD(Resources, ORVANE_RESOURCES_FIELDS)

 public:
  OvResources() = default;
};

#undef ORVANE_RESOURCES_FIELDS
