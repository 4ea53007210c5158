#pragma once

#include <cstddef>

/// @file
/// The machine's own name and address. All functions may be called on any thread, return 0, or -1 on failure with the
/// buffers emptied; a result that doesn't fit its buffer is a failure. The look-ups block as long as the system's
/// resolver takes.

/// The machine's host name. ovutils_get_hostname is the same.
int tcpGetHostName(char* buffer, size_t size);
int ovutils_get_hostname(char* buffer, size_t size);

/// Resolves `name`: its official name goes to `canonicalBuffer` if that isn't null and `canonicalSize` isn't 0, its
/// first IPv4 address in dotted form to `addressBuffer` if that isn't null. ovutils_get_host_by_name is the same.
int tcpGetHostByName(const char* name, char* canonicalBuffer, size_t canonicalSize, char* addressBuffer,
                     size_t addressSize);
int ovutils_get_host_by_name(const char* name, char* canonicalBuffer, size_t canonicalSize, char* addressBuffer,
                             size_t addressSize);

/// The address that the machine's own host name resolves to, in dotted form. ovutils_get_ip_address is the same.
int tcpGetIPAddress(char* buffer, size_t size);
int ovutils_get_ip_address(char* buffer, size_t size);
