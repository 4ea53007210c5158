#pragma once

#include <memory>
#include <string>
#include <vector>

#include <openssl/types.h>

namespace orvane::demo {

/// A fresh key and a self-signed certificate for it, ready for the server side of TLS.
struct TlsIdentity {
  std::shared_ptr<SSL_CTX> context;
  std::string certificatePem;
};

/// `names` are host names (`*` as the first label is allowed) and IP addresses; the first is the subject too. The
/// certificate is good for a year. Throws std::runtime_error if there is no name, one is neither, or OpenSSL fails.
TlsIdentity makeTlsIdentity(const std::vector<std::string>& names);

}  // namespace orvane::demo
