#pragma once

#include <cstddef>

/// @file
/// Lists that are kept in one text, separated by commas. Blanks belong to the items, and there is no quoting.
///
/// The two functions count differently, and callers rely on it: empty items have a place in the size but none among the
/// indexes. "a,,b" has size 3, and its items 0 and 1 are "a" and "b". Any thread.

/// The number of commas plus 1, or 0 for null and an empty text.
int ovutils_stringlist_get_size(const char* list);

/// Stores the non-empty item at `index`, counted from 0, into `buffer`, cut to `bufferSize` - 1 bytes and the
/// terminator. What remains of the buffer is filled with zeros.
///
/// Returns 1, or 0 with the buffer all zeros if `list` is null or has no such item. With a null buffer or of size 0,
/// only the result tells.
int ovutils_stringlist_get_item(const char* list, int index, char* buffer, size_t bufferSize);
