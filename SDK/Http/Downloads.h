#pragma once

#include <cstddef>

/// @file
/// Fetches a URL to a file or into memory. All return true on success; a failed fetch is logged, where a log line is
/// named. Any thread; all block as an HttpClient does.

/// Writes the body of a 200 response to `path`. If writing fails, no file is left there; if fetching does, `path` is left
/// as it was.
bool ovutils_download_url(const char* url, const char* path);

/// Gives the body of a 200 response as a new buffer of `*size` bytes, which the caller frees with free(). On failure null
/// and 0.
bool ovutils_download_url_to_buffer(const char* url, void** buffer, size_t* size);

/// Writes the body of whatever the server answers to `path`, following redirects: true also for an error page. A part of
/// a body stays in the file. Logs nothing.
bool ovutilsext_download_url(const char* url, const char* path);
