#include "Certificate.h"

#include <algorithm>
#include <stdexcept>

#include <arpa/inet.h>
#include <openssl/bio.h>
#include <openssl/ec.h>
#include <openssl/evp.h>
#include <openssl/pem.h>
#include <openssl/ssl.h>
#include <openssl/x509v3.h>

#include "Support/RandomBytes.h"

namespace orvane::demo {
namespace {

template <auto freeFunction>
struct Free {
  template <typename Type>
  void operator()(Type* object) const {
    freeFunction(object);
  }
};
using Certificate = std::unique_ptr<X509, Free<X509_free>>;
using Key = std::unique_ptr<EVP_PKEY, Free<EVP_PKEY_free>>;
using Extension = std::unique_ptr<X509_EXTENSION, Free<X509_EXTENSION_free>>;
using Memory = std::unique_ptr<BIO, Free<BIO_free_all>>;

void require(bool success, const char* what) {
  if (!success) throw std::runtime_error(std::string("OpenSSL can't ") + what);
}

bool isAddress(const std::string& name) {
  unsigned char bytes[sizeof(in6_addr)];
  return inet_pton(AF_INET, name.c_str(), bytes) == 1 || inet_pton(AF_INET6, name.c_str(), bytes) == 1;
}

bool isHostName(const std::string& name) {
  // The names go through OpenSSL's own small language, in which commas and colons would begin something else.
  const auto fits = [](char character) {
    return (character >= 'a' && character <= 'z') || (character >= 'A' && character <= 'Z') ||
           (character >= '0' && character <= '9') || character == '-' || character == '.' || character == '_';
  };
  const size_t start = name.starts_with("*.") ? 2 : 0;
  return name.size() > start && name.size() <= 253 &&
         std::all_of(name.begin() + static_cast<ptrdiff_t>(start), name.end(), fits);
}

std::string alternativeNames(const std::vector<std::string>& names) {
  std::string list;
  for (const std::string& name : names) {
    const bool address = isAddress(name);
    if (!address && !isHostName(name)) throw std::runtime_error("\"" + name + "\" is no host name or address");
    if (!list.empty()) list += ',';
    list += address ? "IP:" : "DNS:";
    list += name;
  }
  if (list.empty()) throw std::runtime_error("a certificate needs a name");
  return list;
}

void addExtension(X509* certificate, int identifier, const std::string& value) {
  X509V3_CTX context;
  X509V3_set_ctx_nodb(&context);
  X509V3_set_ctx(&context, certificate, certificate, nullptr, nullptr, 0);
  const Extension extension(X509V3_EXT_conf_nid(nullptr, &context, identifier, value.c_str()));
  require(extension && X509_add_ext(certificate, extension.get(), -1) == 1, "make a certificate's extension");
}

Certificate makeCertificate(EVP_PKEY* key, const std::vector<std::string>& names) {
  const std::string alternatives = alternativeNames(names);
  Certificate certificate(X509_new());
  require(certificate != nullptr, "make a certificate");

  // Browsers refuse two certificates of one issuer and serial number, so each start needs its own.
  uint64_t serial = 0;
  fillWithRandomBytes(&serial, sizeof serial);
  X509_set_version(certificate.get(), X509_VERSION_3);
  ASN1_INTEGER_set_uint64(X509_get_serialNumber(certificate.get()), serial >> 1);
  X509_gmtime_adj(X509_getm_notBefore(certificate.get()), -3600);
  X509_gmtime_adj(X509_getm_notAfter(certificate.get()), 365L * 24 * 3600);
  X509_set_pubkey(certificate.get(), key);

  X509_NAME* subject = X509_get_subject_name(certificate.get());
  const std::string commonName = names.front().substr(0, 64);
  X509_NAME_add_entry_by_txt(subject, "CN", MBSTRING_UTF8, reinterpret_cast<const unsigned char*>(commonName.data()),
                             static_cast<int>(commonName.size()), -1, 0);
  X509_set_issuer_name(certificate.get(), subject);
  addExtension(certificate.get(), NID_basic_constraints, "critical,CA:TRUE");
  addExtension(certificate.get(), NID_subject_key_identifier, "hash");
  addExtension(certificate.get(), NID_subject_alt_name, alternatives);
  require(X509_sign(certificate.get(), key, EVP_sha256()) > 0, "sign a certificate");
  return certificate;
}

std::string pemOf(X509* certificate) {
  const Memory memory(BIO_new(BIO_s_mem()));
  require(memory && PEM_write_bio_X509(memory.get(), certificate) == 1, "write a certificate");
  char* text = nullptr;
  const long length = BIO_get_mem_data(memory.get(), &text);
  return std::string(text, static_cast<size_t>(length));
}

}  // namespace

TlsIdentity makeTlsIdentity(const std::vector<std::string>& names) {
  const Key key(EVP_EC_gen("P-256"));
  require(key != nullptr, "make a key");
  const Certificate certificate = makeCertificate(key.get(), names);

  TlsIdentity identity;
  identity.context = std::shared_ptr<SSL_CTX>(SSL_CTX_new(TLS_server_method()), SSL_CTX_free);
  require(identity.context != nullptr, "make a TLS context");
  SSL_CTX* context = identity.context.get();
  SSL_CTX_set_mode(context, SSL_MODE_ENABLE_PARTIAL_WRITE | SSL_MODE_ACCEPT_MOVING_WRITE_BUFFER);
  require(SSL_CTX_set_min_proto_version(context, TLS1_2_VERSION) == 1 &&
              SSL_CTX_use_certificate(context, certificate.get()) == 1 &&
              SSL_CTX_use_PrivateKey(context, key.get()) == 1,
          "prepare a TLS context");
  identity.certificatePem = pemOf(certificate.get());
  return identity;
}

}  // namespace orvane::demo
