#pragma once

#include <string>

/// @file
/// The application's side of the log (Support/OvWriteLog.h): where it lies, whether there is one, and the banner that
/// opens it. The file is deleted only where logging is off; it has no limit of size. Main thread, but for the path.

/// The log file of a module, "Orvane.log" for "Orvane", in the state home's folder of Orvane, which is made if missing.
std::string OvU_GetLogFilePathFor(const std::string& module);

/// Sets the log up; to be called once, before other threads start. By the user's preference everything is logged and
/// the banner opens the log, or nothing is logged and no file stays behind.
void OvU_InitLogForModule(const std::string& module);

/// Writes the banner: what runs, where, and in which language.
void OvU_LogProductInformation();

namespace orvane {

/// What the user's switch does while the program runs: off deletes the log; on logs the flow of things from now until
/// the next start, which then logs everything.
void switchLogging(bool on);

}  // namespace orvane
