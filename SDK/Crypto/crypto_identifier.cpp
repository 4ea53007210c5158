#include "Crypto/crypto.h"
#include "Support/RandomBytes.h"

// Needs no seeding: two identifiers of the same second differ, in two processes too.
int UuidCreate_OvCommon(unsigned char* bytes) {
  orvane::fillWithRandomBytes(bytes, 16);
  return 0;
}
