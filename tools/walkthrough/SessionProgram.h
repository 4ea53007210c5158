#pragma once

#include <string>

namespace orvane::walkthrough {

/// Starts `program --ovl launchFile` with this process's output and waits for its end.
/// @return its exit status.
/// @throws Failure if it can't be started or is killed.
int runSessionProgram(const std::string& program, const std::string& launchFile);

}  // namespace orvane::walkthrough
