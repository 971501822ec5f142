#include "tests/support/SelfSigned.h"

#include <openssl/bio.h>
#include <openssl/pem.h>

#include <stdexcept>

namespace seedmote::support {
namespace {

void check(bool good, const char* what) {
  if (!good) {
    throw std::runtime_error(what);
  }
}

}  // namespace

SelfSigned::SelfSigned() : key_(EVP_EC_gen("P-256")), certificate_(X509_new()) {
  check(key_ && certificate_, "X509_new");
  X509_set_version(certificate(), X509_VERSION_3);
  ASN1_INTEGER_set(X509_get_serialNumber(certificate()), 1);
  X509_gmtime_adj(X509_getm_notBefore(certificate()), -7200);
  X509_gmtime_adj(X509_getm_notAfter(certificate()), -3600);
  X509_set_pubkey(certificate(), key());
  X509_NAME* name = X509_get_subject_name(certificate());
  const auto* text = reinterpret_cast<const unsigned char*>("somebody.invalid");
  check(X509_NAME_add_entry_by_txt(name, "CN", MBSTRING_ASC, text, -1, -1, 0) == 1, "X509_NAME");
  X509_set_issuer_name(certificate(), name);
  check(X509_sign(certificate(), key(), EVP_sha256()) > 0, "X509_sign");
}

std::string SelfSigned::pem() const {
  const std::unique_ptr<BIO, Release<BIO_free>> memory(BIO_new(BIO_s_mem()));
  check(memory && PEM_write_bio_PrivateKey(memory.get(), key(), nullptr, nullptr, 0, nullptr, nullptr) == 1 &&
            PEM_write_bio_X509(memory.get(), certificate()) == 1,
        "PEM");
  char* bytes = nullptr;
  const long size = BIO_get_mem_data(memory.get(), &bytes);
  return {bytes, static_cast<std::size_t>(size)};
}

}  // namespace seedmote::support
