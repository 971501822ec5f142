#pragma once

#include <openssl/evp.h>
#include <openssl/x509.h>

#include <memory>
#include <string>

namespace seedmote::support {

template <auto Free>
struct Release {
  template <class T>
  void operator()(T* object) const {
    Free(object);
  }
};

// A key and a certificate that it signed itself, for a name that fits nobody and expired long ago: what a
// home server shows at its worst. Made on the spot.
class SelfSigned final {
 public:
  SelfSigned();  // raises std::runtime_error

  EVP_PKEY* key() const { return key_.get(); }
  X509* certificate() const { return certificate_.get(); }
  std::string pem() const;  // both, the key first

 private:
  std::unique_ptr<EVP_PKEY, Release<EVP_PKEY_free>> key_;
  std::unique_ptr<X509, Release<X509_free>> certificate_;
};

}  // namespace seedmote::support
