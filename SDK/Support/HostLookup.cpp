#include "Support/HostLookup.h"

#include <cstring>
#include <memory>
#include <string_view>

#include <arpa/inet.h>
#include <netdb.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

namespace {

constexpr size_t kHostNameCapacity = 256;

void clear(char* buffer, size_t size) {
  if (buffer && size > 0) *buffer = '\0';
}

bool store(std::string_view text, char* buffer, size_t size) {
  if (text.size() >= size) return false;
  text.copy(buffer, text.size());
  buffer[text.size()] = '\0';
  return true;
}

}  // namespace

int tcpGetHostName(char* buffer, size_t size) {
  clear(buffer, size);
  char name[kHostNameCapacity] = {};
  if (!buffer || gethostname(name, sizeof name - 1) != 0) return -1;
  return store(name, buffer, size) ? 0 : -1;
}

int tcpGetHostByName(const char* name, char* canonicalBuffer, size_t canonicalSize, char* addressBuffer,
                     size_t addressSize) {
  clear(canonicalBuffer, canonicalSize);
  clear(addressBuffer, addressSize);
  if (!name || !*name) return -1;

  addrinfo wanted{};
  wanted.ai_family = AF_INET;
  wanted.ai_socktype = SOCK_STREAM;  // one entry for each address instead of one for each kind of socket too
  wanted.ai_flags = AI_CANONNAME;
  addrinfo* first = nullptr;
  if (getaddrinfo(name, nullptr, &wanted, &first) != 0) return -1;
  const std::unique_ptr<addrinfo, decltype(&freeaddrinfo)> owner(first, &freeaddrinfo);

  sockaddr_in address{};
  memcpy(&address, first->ai_addr, sizeof address);
  char dotted[INET_ADDRSTRLEN] = {};
  inet_ntop(AF_INET, &address.sin_addr, dotted, sizeof dotted);
  const char* const official = first->ai_canonname ? first->ai_canonname : name;
  const bool storesName = canonicalBuffer && canonicalSize > 0;
  if ((!storesName || store(official, canonicalBuffer, canonicalSize)) &&
      (!addressBuffer || store(dotted, addressBuffer, addressSize))) {
    return 0;
  }
  clear(canonicalBuffer, canonicalSize);
  clear(addressBuffer, addressSize);
  return -1;
}

int tcpGetIPAddress(char* buffer, size_t size) {
  clear(buffer, size);
  char name[kHostNameCapacity];
  if (!buffer || tcpGetHostName(name, sizeof name) != 0) return -1;
  return tcpGetHostByName(name, nullptr, 0, buffer, size);
}

int ovutils_get_hostname(char* buffer, size_t size) { return tcpGetHostName(buffer, size); }

int ovutils_get_host_by_name(const char* name, char* canonicalBuffer, size_t canonicalSize, char* addressBuffer,
                             size_t addressSize) {
  return tcpGetHostByName(name, canonicalBuffer, canonicalSize, addressBuffer, addressSize);
}

int ovutils_get_ip_address(char* buffer, size_t size) { return tcpGetIPAddress(buffer, size); }
