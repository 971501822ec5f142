#include "tests/support/TlsServer.h"

#include <openssl/ssl.h>

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

void check(bool good, const char* what) {
  if (!good) {
    throw std::runtime_error(what);
  }
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

TlsServer::TlsServer(bool demandClientCertificate) : context_(std::make_unique<Context>()) {
  const std::unique_ptr<EVP_PKEY, Release<EVP_PKEY_free>> key(EVP_EC_gen("P-256"));
  const std::unique_ptr<X509, Release<X509_free>> own(X509_new());
  SSL_CTX* const ssl = context_->ssl.get();
  check(key && own && ssl, "TLS");
  X509_gmtime_adj(X509_getm_notBefore(own.get()), -7200);
  X509_gmtime_adj(X509_getm_notAfter(own.get()), -3600);
  X509_set_pubkey(own.get(), key.get());
  X509_NAME* const name = X509_get_subject_name(own.get());
  const auto* text = reinterpret_cast<const unsigned char*>("somebody.invalid");
  X509_NAME_add_entry_by_txt(name, "CN", MBSTRING_ASC, text, -1, -1, 0);
  X509_set_issuer_name(own.get(), name);
  check(X509_sign(own.get(), key.get(), EVP_sha256()) > 0, "X509_sign");
  check(SSL_CTX_use_certificate(ssl, own.get()) == 1, "SSL_CTX_use_certificate");
  check(SSL_CTX_use_PrivateKey(ssl, key.get()) == 1, "SSL_CTX_use_PrivateKey");
  if (demandClientCertificate) {
    SSL_CTX_set_verify(ssl, SSL_VERIFY_PEER | SSL_VERIFY_FAIL_IF_NO_PEER_CERT, nullptr);
  }
}

TlsServer::~TlsServer() = default;

std::unique_ptr<ByteStream> TlsServer::streamOn(FileDescriptor& socket) const {
  return std::make_unique<Stream>(socket, context_->ssl.get());
}

}  // namespace seedmote::support
