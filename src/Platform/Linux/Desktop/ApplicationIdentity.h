#pragma once

/// @file
/// By what names the desktop knows the program: its D-Bus name, desktop entry and icon, and the object it exports.

namespace orvane {

inline constexpr char kApplicationId[] = "example.orvane.Connector";
inline constexpr char kApplicationPath[] = "/example/orvane/Connector";

}  // namespace orvane
