#pragma once

#include "Model/RecordFields.h"

#define ORVANE_PERFORMANCE_FIELDS(ROW)                                                                     \
  ROW(int32_t, connectionSpeed, ConnectionSpeed, 6, "connectionSpeed",                                     \
      archived()) /* 1 to 7, the broker's connection type */                                               \
  ROW(bool, doUseBitmapCaching, DoUseBitmapCaching, true, "doUseBitmapCaching", archived())                \
  ROW(bool, doShowDesktopBackground, DoShowDesktopBackground, true, "doShowDesktopBackground", archived()) \
  ROW(bool, doUseAnimation, DoUseAnimation, true, "doUseAnimation", archived())                            \
  ROW(bool, doShowWindowContent, DoShowWindowContent, true, "doShowWindowContent", archived())             \
  ROW(bool, doUseThemes, DoUseThemes, true, "doUseThemes", archived())                                     \
  ROW(bool, doUseFontSmoothing, DoUseFontSmoothing, true, "doUseFontSmoothing", archived())                \
  ROW(bool, doUseGA, DoUseGA, false, "doUseGA", archived())                                                \
  ROW(bool, doFlashMMR, DoFlashMMR, false, "doFlashMMR", archived())                                       \
  ROW(bool, doUseSurge, DoUseSurge, false, "doUseSurge", archived())                                       \
  ROW(bool, doUseDesktopComposition, DoUseDesktopComposition, true, "doUseDesktopComposition", archived())

/// What a farm's sessions may spend on looks. A value; no lock.
class OvPerformance {
  ORVANE_RECORD(Performance, ORVANE_PERFORMANCE_FIELDS)

 public:
  OvPerformance() = default;
};

#undef ORVANE_PERFORMANCE_FIELDS
