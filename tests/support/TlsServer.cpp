#include "tests/support/TlsServer.h"

#include <openssl/ssl.h>

#include <climits>
#include <stdexcept>

#include "tests/support/SelfSigned.h"

namespace seedmote::support {
namespace {

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

TlsServer::TlsServer() : context_(std::make_unique<Context>()) {
  const SelfSigned own;
  check(context_->ssl != nullptr, "TLS");
  check(SSL_CTX_use_certificate(context_->ssl.get(), own.certificate()) == 1, "SSL_CTX_use_certificate");
  check(SSL_CTX_use_PrivateKey(context_->ssl.get(), own.key()) == 1, "SSL_CTX_use_PrivateKey");
}

TlsServer::~TlsServer() = default;

void TlsServer::demandClientCertificate() {
  SSL_CTX_set_verify(context_->ssl.get(), SSL_VERIFY_PEER | SSL_VERIFY_FAIL_IF_NO_PEER_CERT, nullptr);
}

std::unique_ptr<ByteStream> TlsServer::streamOn(FileDescriptor& socket) const {
  return std::make_unique<Stream>(socket, context_->ssl.get());
}

}  // namespace seedmote::support
