#pragma once

#include <cstddef>

/// @file
/// Fetches a URL to a file or into memory. All return true on success; a failed fetch is logged, where a log line is
/// named. Any thread; all block as an HttpClient does.

/// Writes the body of a 200 response to `path`, as a file of mode 0600 that takes the place of what was there in one
/// step. If fetching or writing fails, `path` is left as it was.
bool ovutils_download_url(const char* url, const char* path);

/// Gives the body of a 200 response as a new buffer of `*size` bytes, which the caller frees with free(); for an empty
/// body too it is not null. On failure null and 0.
bool ovutils_download_url_to_buffer(const char* url, void** buffer, size_t* size);

/// Writes the body of whatever the server answers to `path`, following redirects: true also for an error page. The file
/// is emptied, or created with mode 0600, before anything is fetched, and a part of a body stays in it. A body above
/// HttpClient::kMaximumBodySize is a failure. Any certificate is taken that names the host, whoever signed it. Logs
/// nothing.
///
/// `url` may be of any scheme that libcurl knows, "file" as well: check one that comes from outside.
bool ovutilsext_download_url(const char* url, const char* path);
