#include "Platform/EndProcess.h"

#include <unistd.h>

namespace orvane {

void endProcess(int status) noexcept { _exit(status); }

}  // namespace orvane
