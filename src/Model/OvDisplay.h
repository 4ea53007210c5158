#pragma once

#include "Model/RecordFields.h"

#define ORVANE_DISPLAY_FIELDS(ROW)                                             \
  ROW(int32_t, color, Color, 24, "color", archived())     /* bits per pixel */ \
  ROW(int32_t, height, Height, 600, "height", archived()) /* pixels */         \
  ROW(int32_t, width, Width, 800, "width", archived())    /* pixels */         \
  ROW(int32_t, customWidth, CustomWidth, 0, "customWidth",                     \
      archived()) /* what the user typed last, 0 for nothing yet */            \
  ROW(int32_t, customHeight, CustomHeight, 0, "customHeight", archived())      \
  ROW(bool, fullscreen, Fullscreen, true, "fullscreen", archived())            \
  ROW(bool, seamless, Seamless, true, "seamless", archived())                  \
  ROW(bool, spanMonitors, SpanMonitors, true, "spanMonitors", archived())

/// How a farm's sessions are to be shown. A value; no lock. Decoding gives a custom size of 0 the size itself.
class OvDisplay {
  ORVANE_RECORD(Display, ORVANE_DISPLAY_FIELDS)

 public:
  OvDisplay() = default;
};

#undef ORVANE_DISPLAY_FIELDS
