#include "tests/support/TlsServer.h"

#include <openssl/evp.h>
#include <openssl/ssl.h>
#include <openssl/x509.h>

#include <climits>
#include <stdexcept>

namespace seedmote::support {
namespace {

template <auto Free>
struct Release {
  template <class T>
  void operator()(T* object) const {
    Free(object);
  }
};
using Key = std::unique_ptr<EVP_PKEY, Release<EVP_PKEY_free>>;
using Certificate = std::unique_ptr<X509, Release<X509_free>>;

void check(bool good, const char* what) {
  if (!good) {
    throw std::runtime_error(what);
  }
}

Certificate selfSigned(EVP_PKEY* key) {
  Certificate certificate(X509_new());
  check(certificate != nullptr, "X509_new");
  X509_set_version(certificate.get(), X509_VERSION_3);
  ASN1_INTEGER_set(X509_get_serialNumber(certificate.get()), 1);
  X509_gmtime_adj(X509_getm_notBefore(certificate.get()), -7200);
  X509_gmtime_adj(X509_getm_notAfter(certificate.get()), -3600);
  X509_set_pubkey(certificate.get(), key);
  X509_NAME* name = X509_get_subject_name(certificate.get());
  const auto* text = reinterpret_cast<const unsigned char*>("somebody.invalid");
  check(X509_NAME_add_entry_by_txt(name, "CN", MBSTRING_ASC, text, -1, -1, 0) == 1, "X509_NAME");
  X509_set_issuer_name(certificate.get(), name);
  check(X509_sign(certificate.get(), key, EVP_sha256()) > 0, "X509_sign");
  return certificate;
}

}  // namespace

struct TlsServer::Context {
  std::unique_ptr<SSL_CTX, Release<SSL_CTX_free>> ssl{SSL_CTX_new(TLS_server_method())};
};

class TlsServer::Stream final : public ByteStream {
 public:
  Stream(FileDescriptor& socket, SSL_CTX* context) : ByteStream(socket), ssl_(SSL_new(context)) {
    check(ssl_ && SSL_set_fd(ssl_.get(), socket.get()) == 1, "SSL_new");
  }

  bool open() override { return SSL_accept(ssl_.get()) == 1; }

  long read(char* to, std::size_t size) override {
    return SSL_read(ssl_.get(), to, static_cast<int>(std::min<std::size_t>(size, INT_MAX)));
  }

  bool write(std::string_view bytes) override {
    std::size_t sent = 0;
    while (!bytes.empty()) {
      if (SSL_write_ex(ssl_.get(), bytes.data(), bytes.size(), &sent) != 1) {
        return false;
      }
      bytes.remove_prefix(sent);
    }
    return true;
  }

  void finish() override { SSL_shutdown(ssl_.get()); }

 private:
  std::unique_ptr<SSL, Release<SSL_free>> ssl_;
};

TlsServer::TlsServer() : context_(std::make_unique<Context>()) {
  const Key key(EVP_EC_gen("P-256"));
  check(key && context_->ssl, "TLS");
  const Certificate certificate = selfSigned(key.get());
  check(SSL_CTX_use_certificate(context_->ssl.get(), certificate.get()) == 1, "SSL_CTX_use_certificate");
  check(SSL_CTX_use_PrivateKey(context_->ssl.get(), key.get()) == 1, "SSL_CTX_use_PrivateKey");
}

TlsServer::~TlsServer() = default;

void TlsServer::demandClientCertificate() {
  SSL_CTX_set_verify(context_->ssl.get(), SSL_VERIFY_PEER | SSL_VERIFY_FAIL_IF_NO_PEER_CERT, nullptr);
}

std::unique_ptr<ByteStream> TlsServer::streamOn(FileDescriptor& socket) const {
  return std::make_unique<Stream>(socket, context_->ssl.get());
}

}  // namespace seedmote::support
