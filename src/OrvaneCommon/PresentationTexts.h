#pragma once

#include <string>
#include <vector>

/// @file
/// How values of the farm records read to the user, in the user's language. Any thread.

namespace orvane {

/// The label of a connection speed, 1 (modem) to 7 (automatic). Any other value shows as a local network.
std::string connectionSpeedLabel(int speed);

/// The name of a location's protocol: 1 is HTTPS, any other value HTTP.
std::string protocolName(int protocol);

/// The title of a size in pixels.
std::string resolutionTitle(int width, int height);
/// The title of the whole screen in the place of a size.
std::string fullscreenTitle();

/// The title of a colour depth in bits per pixel: 8, 15, 16, 24 or 32. Any other value shows as 32.
std::string colorTitle(int bitsPerPixel);

std::string yesOrNo(bool value);

/// A list as a text: joined by line feeds.
std::string onePerLine(const std::vector<std::string>& items);

}  // namespace orvane
