#include "OrvaneCommon/OvError.h"

OvError OvU_MakeNSError(int code, const std::string& description) { return {code, description}; }

void OvU_ConfigureError(OvError* error, int code, const std::string& description) {
  if (error != nullptr) *error = OvU_MakeNSError(code, description);
}
