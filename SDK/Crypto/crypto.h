#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

/// @file
/// Hides passwords on the wire and in launch files, and enciphers whole launch files. The keys are the same in every
/// copy of the program: this keeps secrets from a casual look, not from an attacker.
///
/// A text is at most 255 (1,023) bytes long, its zero included in 256 (1,024): whatever doesn't fit is cut. Write no
/// longer one than 254 (1,022): a peer may take the check sum, which then stands where the zero would, for a character.
///
/// A null text or path is an empty one. All functions may be called on any thread and several at a time.

/// @name A text in a scattered block of 256 or 1,024 bytes
/// @{
/// Fills the whole `block` with random bytes and `text` between them, so that all bytes add up to 0 modulo 256.
void crypto_encode256(unsigned char* block, const char* text);
void crypto_encode1024(unsigned char* block, const char* text);
/// Zeroes `out` and gathers the text from `block` into it, up to its end or `outSize` bytes (then without a zero at the
/// end). A wrong sum leaves `out` empty.
void crypto_decode256(const unsigned char* block, char* out, size_t outSize);
void crypto_decode1024(const unsigned char* block, char* out, size_t outSize);
/// @}

/// @name A text as an enciphered block in upper-case hexadecimal, 512 or 2,048 characters
/// @{
/// Always 1. `out` stays empty if `outSize` is below 513 (2,049). Each call gives different text.
int crypto_encrypt256(const char* text, char* out, size_t outSize);
int crypto_encrypt1024(const char* text, char* out, size_t outSize);
int crypto_encrypt_password(const char* text, char* out, size_t outSize);
/// Zeroes `out` and deciphers `hex` into it. 0 if `hex` isn't exactly 256 (1,024) bytes; 1 with an empty `out` if it is
/// damaged.
int crypto_decrypt256(const char* hex, char* out, size_t outSize);
int crypto_decrypt1024(const char* hex, char* out, size_t outSize);
/// The same for 256 bytes; fewer are the older short form, RC4 alone, whose text is cut so that its zero fits into
/// `out`. 0 if there are more than 256.
int crypto_decrypt_password(const char* hex, char* out, size_t outSize);
/// @}

/// RC4 under the fixed key, in place.
void crypto_encrypt(unsigned char* buffer, size_t length);
void crypto_decrypt(unsigned char* buffer, size_t length);

/// @name The enciphered container of launch files: 19 bytes longer than its content
/// @{
/// Replace the file at `path` by its enciphered or deciphered form, as a whole. 1, or 0 if it can't be read or written
/// or (deciphering) isn't such a container; the file is then as it was.
int crypto_encrypt_file(const char* path);
int crypto_decrypt_file(const char* path);
/// Deciphers in place and moves the content to the front. The content's length, or 0 if `buffer` isn't such a container
/// or holds no content. A buffer too short for one, below 19 bytes, stays as it was; otherwise what it then holds is
/// unspecified.
size_t crypto_decrypt_buffer(unsigned char* buffer, size_t length);
/// @}

/// Upper-case hexadecimal, zero-terminated; `out` is zeroed first. `count`, or 0 if `outSize` is below 2 * count + 1.
size_t crypto_bintohex(const unsigned char* bytes, size_t count, char* out, size_t outSize);
/// The bytes of `text`, either case; an odd last digit is dropped, a character that is no digit counts as 0. Their
/// number, or 0 if that would be 0 or above `size`.
size_t crypto_hextobin(const char* text, unsigned char* out, size_t size);
int crypto_hexdigit_to_nibble(char character);

/// The sum of the bytes modulo 256.
unsigned char crypto_checksum(const unsigned char* buffer, size_t length);

const unsigned char* crypto_get_scatter_table256();
const uint16_t* crypto_get_scatter_table1024();

/// The ticket-granting response around the file at `path`: little-endian words 1, 0, 1065 and the file's size, a fixed
/// block of 1,065 bytes and the file, all as upper-case hexadecimal in a new buffer that the caller frees with free().
/// Null if the file can't be read.
char* crypto_create_tgt_response(const char* path);

/// Fills `bytes` (16) with random bytes. Always 0.
int UuidCreate_OvCommon(unsigned char* bytes);

namespace orvane {

/// The container around `content`, in memory: what crypto_encrypt_file makes of a file.
std::string encipheredContainer(std::string_view content);

}  // namespace orvane
