#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

/// The fixed key and tables that all peers share. Defined in KeyMaterial.cpp alone, or in the file that a site names
/// with -DORVANE_KEY_MATERIAL at build time.
namespace orvane::keymaterial {

/// The RC4 key of passwords and other short texts: the bytes of the two words, each in little-endian order.
extern const std::array<uint32_t, 2> kFixedKeyWords;

/// Where each character of a text stands in its block: permutations of 0 to 255 and 0 to 1023 whose last entry is the
/// block's last position, which the check sum takes. scatter256 is also the key of a launch file's outer layer.
extern const std::array<uint8_t, 256> kScatter256;
extern const std::array<uint16_t, 1024> kScatter1024;

/// The block that stands before the file's bytes in a ticket-granting response.
extern const std::array<uint8_t, 1065> kTicketGrantingBlock;

}  // namespace orvane::keymaterial
