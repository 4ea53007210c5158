#pragma once

#include <cstddef>

/// Prints bytes to standard output for a developer's eyes: the title on a line of its own if it is neither null nor
/// empty, a line "{", one line for each 16 bytes (as "%02x ", with blanks up to the full width, two more blanks, and
/// the bytes themselves as characters), and a line "}".
///
/// The characters go out unfiltered, control characters too, so a terminal may act on them; and secrets are shown as
/// they are. Null `bytes` count as none. Dumps of several threads don't mix. Any thread.
void ovutils_dump_memory(const char* title, const void* bytes, size_t size);
