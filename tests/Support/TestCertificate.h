#pragma once

#include <memory>

struct ssl_ctx_st;

/// A server's TLS context with a fresh key and a certificate for "localhost" that nobody but itself vouches for.
/// @throws std::runtime_error if OpenSSL can't make it.
std::shared_ptr<ssl_ctx_st> makeSelfSignedTlsContext();
