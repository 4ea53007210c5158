#pragma once

/// @file
/// Files by name. All functions may be called on any thread.

/// Copies the content of `source` to `target` as a new file of mode 0600, which takes the place of an old one in one
/// step once all of it is on disk. A link at `target` is replaced, not followed; a folder, device or pipe there is
/// refused.
///
/// Returns 1, or 0: if `failIfExists` is not 0 and there is a readable file at `target`, and if `source` or the new
/// file can't be opened, `target` is left as it was. If the copying itself fails, the file at `target` is gone: what is
/// there after a failed copy is never taken for the outcome.
int ovutils_copy_file(const char* source, const char* target, int failIfExists);

/// True if the file can be opened for reading; a folder can.
bool ovutils_file_exists(const char* path);

/// Creates an empty file of a name not in use, in the system's folder for temporary files, and stores its path into
/// `buffer`, which has room for L_tmpnam bytes (see <cstdio>).
///
/// The file (mode 0600) exists when this returns: a name alone could be taken by another user, as a file or as a link
/// to anywhere, before the caller gets to open it. The caller writes to it and removes it. Returns 1, or 0 with an
/// empty text.
int ovutils_get_temp_filename(char* buffer);
