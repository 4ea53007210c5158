#pragma once

/// @file
/// The measures that all surfaces share, in device-independent pixels.

namespace orvane::metrics {

constexpr int kSpacing = 8;        ///< between things that belong together
constexpr int kMargin = 16;        ///< around the content of a surface, and between groups
constexpr int kDialogMargin = 24;  ///< around the content of a dialog
constexpr int kRowHeight = 36;     ///< of a row of a list, at least
constexpr int kIcon = 20;          ///< a symbol's side
constexpr int kTileWidth = 128;    ///< of an item of the catalogue
constexpr int kTileIcon = 64;      ///< the side of its picture
constexpr int kSidePanelWidth = 440;
constexpr int kPageWidth = 400;  ///< of a page of the welcome flow, and of a dialog at least
constexpr int kSlideMilliseconds = 160;

}  // namespace orvane::metrics
