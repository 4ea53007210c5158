#include "Support/TestCertificate.h"

#include <stdexcept>

#include <openssl/ssl.h>
#include <openssl/x509.h>

std::shared_ptr<SSL_CTX> makeSelfSignedTlsContext() {
  const std::unique_ptr<EVP_PKEY, decltype(&EVP_PKEY_free)> key(EVP_EC_gen("P-256"), EVP_PKEY_free);
  const std::unique_ptr<X509, decltype(&X509_free)> certificate(X509_new(), X509_free);
  std::shared_ptr<SSL_CTX> context(SSL_CTX_new(TLS_server_method()), SSL_CTX_free);
  if (!key || !certificate || !context) throw std::runtime_error("no key or certificate for the test server");

  constexpr long kOneDay = 24L * 60 * 60;
  X509_set_version(certificate.get(), X509_VERSION_3);
  ASN1_INTEGER_set(X509_get_serialNumber(certificate.get()), 1);
  X509_gmtime_adj(X509_getm_notBefore(certificate.get()), -kOneDay);
  X509_gmtime_adj(X509_getm_notAfter(certificate.get()), kOneDay);
  X509_set_pubkey(certificate.get(), key.get());
  X509_NAME* name = X509_get_subject_name(certificate.get());
  X509_NAME_add_entry_by_txt(name, "CN", MBSTRING_ASC, reinterpret_cast<const unsigned char*>("localhost"), -1, -1, 0);
  X509_set_issuer_name(certificate.get(), name);

  if (X509_sign(certificate.get(), key.get(), EVP_sha256()) == 0 ||
      SSL_CTX_use_certificate(context.get(), certificate.get()) != 1 ||
      SSL_CTX_use_PrivateKey(context.get(), key.get()) != 1) {
    throw std::runtime_error("the test server's certificate can't be signed or used");
  }
  return context;
}
