#pragma once

#include <cstdint>

/// @file
/// The one log of the process: a text file, one line for each call, on disk when the call returns.
///
/// Levels in use: 2 errors and failed operations, 4 flow, 5 protocol tracing, 6 the product banner. Tracing shows whole
/// requests and responses, session cookies and enciphered passwords included.
///
/// A line is the local time as "%Y-%m-%d %H:%M:%S: ", the process and thread identifiers as "%lu:%lu: ", the message
/// and a line feed. By convention a message starts with the name of the function and ": ".
///
/// All functions may be called on any thread; lines of one process never interleave. Nothing here ever fails towards
/// the caller: where memory is short, or the file can't be opened or written, the line is lost without a word.

/// Writes one line if a log file is set and `level` is at most the log level; else costs two comparisons.
///
/// The file is opened (created 0600) and closed for every line, so that it may be removed or truncated from outside at
/// any time. `format` is that of printf; the length of a message has no limit. errno stays as the caller has it.
void OvWriteLog(int level, const char* format, ...) noexcept __attribute__((format(printf, 2, 3)));

/// Sets the highest level written. At the start it is 2; 0 writes nothing of what the program logs.
void OvSetLogLevel(int32_t level) noexcept;

/// Sets the log file's path; null or an empty text turn logging off. The path must fit into 511 bytes: a longer one
/// turns logging off, as a file of a cut name would not be the one that was meant.
void OvSetLogFile(const char* path) noexcept;

/// Sets how long every log call sleeps first, in milliseconds, whether it then writes or not. At the start it is 0.
void OvSetLogDelay(uint32_t delay) noexcept;

/// Removes the log file, if there is one at the path that is set. The path stays: the next line makes a new file.
void OvDeleteLog() noexcept;
