#pragma once

#include <string>
#include <vector>

namespace orvane {

/// What a session may use of this machine or of the network, as the summaries of connections name it.
enum class Feature : int {
  kNone = 0,  ///< stands in the place of an empty list
  kClipboardRedirection = 1,
  kDriveRedirection = 2,
  kPrintersRedirection = 3,
  kUniversalPrintersRedirection = 4,
  kAudioRedirection = 5,
  kMicrophoneRedirection = 6,
  kSerialPortsRedirection = 7,
  kGraphicsAcceleration = 8,
  kFlashAcceleration = 9,
  kWanAcceleration = 10,
  kAutoreconnect = 11
};

/// The list itself, or kNone alone for an empty one.
std::vector<Feature> orNone(std::vector<Feature> features);

/// The names below each other, in the user's language.
std::string featureNames(const std::vector<Feature>& features);

}  // namespace orvane
