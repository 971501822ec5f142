#include "tests/support/LoopbackDaemon.h"

#include <pthread.h>
#include <sys/socket.h>

#include <algorithm>
#include <atomic>
#include <condition_variable>
#include <csignal>
#include <deque>
#include <list>
#include <map>
#include <mutex>
#include <optional>
#include <thread>
#include <utility>

#include "tests/support/ByteStream.h"
#include "tests/support/TlsServer.h"

namespace seedmote::support {
namespace {

constexpr int kBacklog = 128;
constexpr std::size_t kFillerPiece = 64 << 10;

struct Connection {
  int number = 0;
  FileDescriptor socket;
  std::atomic<bool> ended{false};
  std::thread thread;
};

// The TLS library writes without MSG_NOSIGNAL.
void blockBrokenPipeSignal() {
  sigset_t set;
  sigemptyset(&set);
  sigaddset(&set, SIGPIPE);
  pthread_sigmask(SIG_BLOCK, &set, nullptr);
}

void resetOnClose(const FileDescriptor& socket) {
  const linger atOnce{1, 0};
  setsockopt(socket.get(), SOL_SOCKET, SO_LINGER, &atOnce, sizeof atOnce);
}

// A socket that is closed with bytes unread resets the connection, and the peer never sees the TLS alert.
void leavePolitely(FileDescriptor& socket) {
  shutdown(socket.get(), SHUT_WR);
  char unread[1024];
  while (recv(socket.get(), unread, sizeof unread, 0) > 0) {
  }
}

Reply badRequest() {
  return replies::closing(replies::html(400, "<HTML><BODY><H1>Bad Request</H1></BODY></HTML>\n"));
}

}  // namespace

class LoopbackDaemon::Impl {
 public:
  explicit Impl(const Options& options) : tls_(options.tls ? std::make_unique<TlsServer>() : nullptr) {
    if (options.tls && options.demandClientCertificate) {
      tls_->demandClientCertificate();
    }
    listener_ = listenOnLoopback(options.port, kBacklog);
    port_ = portOf(listener_);
    acceptor_ = std::thread([this] { acceptAll(); });
  }

  ~Impl() {
    stopListening();
    {
      const std::lock_guard lock(mutex_);
      stopping_ = true;
      changed_.notify_all();
    }
    dropConnections();
    for (Connection& connection : connections_) {
      connection.thread.join();
    }
  }

  void stopListening() {
    listener_.shutDown();  // wakes accept()
    if (acceptor_.joinable()) {
      acceptor_.join();
    }
    listener_.reset();
  }

  void listenAgain() {
    listener_ = listenOnLoopback(port_, kBacklog);
    acceptor_ = std::thread([this] { acceptAll(); });
  }

  void dropConnections() {
    const std::lock_guard lock(mutex_);
    for (const Connection& connection : connections_) {
      if (!connection.ended) {
        connection.socket.shutDown();
      }
    }
    ++drops_;
    changed_.notify_all();
  }

  void release() {
    const std::lock_guard lock(mutex_);
    ++releases_;
    changed_.notify_all();
  }

  // Changes or reads the state under the lock.
  template <class Work>
  auto locked(Work&& work) const {
    const std::lock_guard lock(mutex_);
    return work();
  }

  bool waitForRequests(std::size_t count, std::chrono::milliseconds patience) const {
    std::unique_lock lock(mutex_);
    return changed_.wait_for(lock, patience, [&] { return requests.size() >= count; });
  }

  int port() const { return port_; }
  bool isTls() const { return tls_ != nullptr; }

  DaemonModel model;
  // Under the lock.
  std::vector<RecordedRequest> requests;
  std::deque<Reply> queue;
  Handler handler;
  int accepted = 0;

 private:
  void acceptAll() {
    blockBrokenPipeSignal();
    while (true) {
      const int descriptor = accept4(listener_.get(), nullptr, nullptr, SOCK_CLOEXEC);
      if (descriptor < 0) {
        return;
      }
      const std::lock_guard lock(mutex_);
      reap();
      Connection& connection = connections_.emplace_back();
      connection.number = ++accepted;
      connection.socket = FileDescriptor(descriptor);
      connection.thread = std::thread([this, &connection] { serve(connection); });
    }
  }

  void reap() {
    connections_.remove_if([](Connection& connection) {
      if (connection.ended) {
        connection.thread.join();
      }
      return connection.ended.load();
    });
  }

  void serve(Connection& connection) {
    const std::unique_ptr<ByteStream> stream =
        tls_ ? tls_->streamOn(connection.socket) : std::make_unique<ByteStream>(connection.socket);
    if (stream->open()) {
      serveRequests(connection, *stream);
    } else {
      leavePolitely(connection.socket);
    }
    const std::lock_guard lock(mutex_);
    connection.socket.reset();
    connection.ended = true;
  }

  void serveRequests(Connection& connection, ByteStream& stream) {
    std::string unread;
    std::vector<char> buffer(64 << 10);
    while (true) {
      bool broken = false;
      std::optional<RecordedRequest> request = takeRequest(unread, broken);
      if (request || broken) {
        const Reply reply = broken ? badRequest() : replyTo(*request, connection.number);
        if (!perform(reply, connection, stream)) {
          return;
        }
        continue;
      }
      const long size = stream.read(buffer.data(), buffer.size());
      if (size <= 0) {
        return;
      }
      unread.append(buffer.data(), static_cast<std::size_t>(size));
    }
  }

  Reply replyTo(RecordedRequest& request, int connection) {
    request.connection = connection;
    std::unique_lock lock(mutex_);
    requests.push_back(request);
    heldFrom_[connection] = releases_;  // a release() after the record counts for this request
    changed_.notify_all();
    if (!queue.empty()) {
      Reply reply = std::move(queue.front());
      queue.pop_front();
      return reply;
    }
    const Handler present = handler;
    lock.unlock();
    Reply reply = present ? present(request) : model.reply(request);
    if (request.header("Connection") == "close") {
      reply = replies::closing(std::move(reply));
    }
    return reply;
  }

  // False when the connection ends here.
  bool perform(const Reply& reply, Connection& connection, ByteStream& stream) {
    if (reply.held && !waitForRelease(connection.number)) {
      return false;
    }
    if (reply.end == Reply::End::reset && reply.bytes.empty()) {
      resetOnClose(connection.socket);
      return false;
    }
    const bool sent = send(reply, stream) && sendFiller(reply.filler, stream);
    if (sent && reply.end == Reply::End::keepOpen) {
      return true;
    }
    if (reply.end == Reply::End::reset) {
      resetOnClose(connection.socket);
    } else {
      stream.finish();
    }
    return false;
  }

  bool send(const Reply& reply, ByteStream& stream) {
    const std::size_t piece = reply.pieceSize == 0 ? reply.bytes.size() : reply.pieceSize;
    for (std::size_t at = 0; at < reply.bytes.size(); at += piece) {
      if (at > 0 && !pause(reply.pause)) {
        return false;
      }
      if (!stream.write(std::string_view(reply.bytes).substr(at, piece))) {
        return false;
      }
    }
    return true;
  }

  static bool sendFiller(std::uint64_t left, ByteStream& stream) {
    const std::string filler(std::min<std::uint64_t>(left, kFillerPiece), 'x');
    while (left > 0) {
      const std::size_t size = static_cast<std::size_t>(std::min<std::uint64_t>(left, filler.size()));
      if (!stream.write(std::string_view(filler).substr(0, size))) {
        return false;
      }
      left -= size;
    }
    return true;
  }

  // These two are cut short when the connections are dropped or the daemon goes; then they return false.
  bool waitForRelease(int connection) {
    std::unique_lock lock(mutex_);
    const int from = heldFrom_[connection];
    const int drops = drops_;
    changed_.wait(lock, [&] { return stopping_ || drops_ != drops || releases_ != from; });
    return !stopping_ && drops_ == drops;
  }

  bool pause(std::chrono::milliseconds time) {
    std::unique_lock lock(mutex_);
    const int drops = drops_;
    return !changed_.wait_for(lock, time, [&] { return stopping_ || drops_ != drops; });
  }

  mutable std::mutex mutex_;
  mutable std::condition_variable changed_;
  const std::unique_ptr<TlsServer> tls_;
  FileDescriptor listener_;
  int port_ = 0;
  std::thread acceptor_;
  std::list<Connection> connections_;
  std::map<int, int> heldFrom_;
  int releases_ = 0;
  int drops_ = 0;
  bool stopping_ = false;
};

LoopbackDaemon::LoopbackDaemon(const Options& options) : impl_(std::make_unique<Impl>(options)) {}
LoopbackDaemon::~LoopbackDaemon() = default;

int LoopbackDaemon::port() const {
  return impl_->port();
}

std::string LoopbackDaemon::address() const {
  return "127.0.0.1:" + std::to_string(port());
}

std::string LoopbackDaemon::url(const std::string& path) const {
  return (impl_->isTls() ? "https://" : "http://") + address() + path;
}

void LoopbackDaemon::enqueue(Reply reply) {
  impl_->locked([&] { impl_->queue.push_back(std::move(reply)); });
}

void LoopbackDaemon::setHandler(Handler handler) {
  impl_->locked([&] { impl_->handler = std::move(handler); });
}

void LoopbackDaemon::setReply(Reply reply) {
  setHandler([reply = std::move(reply)](const RecordedRequest&) { return reply; });
}

DaemonModel& LoopbackDaemon::model() {
  return impl_->model;
}
std::string LoopbackDaemon::sessionId() const {
  return impl_->model.sessionId();
}
void LoopbackDaemon::changeSessionId() {
  impl_->model.changeSessionId();
}

std::vector<RecordedRequest> LoopbackDaemon::requests() const {
  return impl_->locked([&] { return impl_->requests; });
}

bool LoopbackDaemon::waitForRequests(std::size_t count, std::chrono::milliseconds patience) const {
  return impl_->waitForRequests(count, patience);
}

void LoopbackDaemon::forgetRequests() {
  impl_->locked([&] { impl_->requests.clear(); });
}

int LoopbackDaemon::connections() const {
  return impl_->locked([&] { return impl_->accepted; });
}

void LoopbackDaemon::release() {
  impl_->release();
}
void LoopbackDaemon::stopListening() {
  impl_->stopListening();
}
void LoopbackDaemon::listenAgain() {
  impl_->listenAgain();
}
void LoopbackDaemon::dropConnections() {
  impl_->dropConnections();
}

void LoopbackDaemon::restart() {
  impl_->model.changeSessionId();
  impl_->dropConnections();
}

}  // namespace seedmote::support
