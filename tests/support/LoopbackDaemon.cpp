#include "tests/support/LoopbackDaemon.h"

#include <pthread.h>
#include <sys/socket.h>

#include <algorithm>
#include <csignal>
#include <optional>
#include <utility>

namespace seedmote::support {
namespace {

constexpr int kBacklog = 128;
constexpr std::size_t kFillerPiece = 64 << 10;
constexpr auto kPatience = std::chrono::seconds(20);

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

bool sendFiller(std::uint64_t left, ByteStream& stream) {
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

}  // namespace

LoopbackDaemon::LoopbackDaemon(const Options& options)
    : tls_(options.tls ? std::make_unique<TlsServer>(options.demandClientCertificate) : nullptr) {
  listenAgain();
  port_ = portOf(listener_);
}

LoopbackDaemon::~LoopbackDaemon() {
  stopListening();
  {
    const std::lock_guard lock(mutex_);
    stopping_ = true;
  }
  dropConnections();
  for (Connection& connection : connections_) {
    connection.thread.join();
  }
}

void LoopbackDaemon::stopListening() {
  listener_.shutDown();  // wakes accept()
  if (acceptor_.joinable()) {
    acceptor_.join();
  }
  listener_.reset();
}

void LoopbackDaemon::listenAgain() {
  listener_ = listenOnLoopback(port_, kBacklog);
  acceptor_ = std::thread([this] { acceptAll(); });
}

void LoopbackDaemon::dropConnections() {
  const std::lock_guard lock(mutex_);
  for (const Connection& connection : connections_) {
    connection.socket.shutDown();
  }
  ++drops_;
  changed_.notify_all();
}

void LoopbackDaemon::enqueue(Reply reply) {
  const std::lock_guard lock(mutex_);
  queue_.push_back(std::move(reply));
}

void LoopbackDaemon::setHandler(Handler handler) {
  const std::lock_guard lock(mutex_);
  handler_ = std::move(handler);
}

void LoopbackDaemon::setReply(Reply reply) {
  setHandler([reply = std::move(reply)](const RecordedRequest&) { return reply; });
}

void LoopbackDaemon::setGreeting(Reply greeting) {
  const std::lock_guard lock(mutex_);
  greeting_ = std::move(greeting);
}

std::optional<Reply> LoopbackDaemon::greeting() const {
  const std::lock_guard lock(mutex_);
  return greeting_;
}

std::vector<RecordedRequest> LoopbackDaemon::requests() const {
  const std::lock_guard lock(mutex_);
  return requests_;
}

bool LoopbackDaemon::waitForRequests(std::size_t count) const {
  std::unique_lock lock(mutex_);
  return changed_.wait_for(lock, kPatience, [&] { return requests_.size() >= count; });
}

void LoopbackDaemon::forgetRequests() {
  const std::lock_guard lock(mutex_);
  requests_.clear();
}

int LoopbackDaemon::connections() const {
  const std::lock_guard lock(mutex_);
  return accepted_;
}

void LoopbackDaemon::acceptAll() {
  blockBrokenPipeSignal();
  while (true) {
    FileDescriptor accepted(accept4(listener_.get(), nullptr, nullptr, SOCK_CLOEXEC));
    if (accepted.get() < 0) {
      return;
    }
    const std::lock_guard lock(mutex_);
    Connection& connection = connections_.emplace_back();
    ++accepted_;
    connection.socket = std::move(accepted);
    connection.thread = std::thread([this, &connection] { serve(connection); });
  }
}

void LoopbackDaemon::serve(Connection& connection) {
  const std::unique_ptr<ByteStream> stream =
      tls_ ? tls_->streamOn(connection.socket) : std::make_unique<ByteStream>(connection.socket);
  const std::optional<Reply> first = greeting();
  if (first ? perform(*first, connection, *stream) : stream->open()) {
    serveRequests(connection, *stream);
  } else if (!first) {
    leavePolitely(connection.socket);
  }
  const std::lock_guard lock(mutex_);
  connection.socket.reset();
}

void LoopbackDaemon::serveRequests(Connection& connection, ByteStream& stream) {
  std::string unread;
  std::vector<char> buffer(64 << 10);
  while (true) {
    if (const std::optional<RecordedRequest> request = takeRequest(unread)) {
      if (!perform(replyTo(*request), connection, stream)) {
        return;
      }
      continue;
    }
    if (!unread.empty() && (unread[0] < 'A' || unread[0] > 'Z')) {  // a TLS hello, say
      perform(badRequest(), connection, stream);
      return;
    }
    const long size = stream.read(buffer.data(), buffer.size());
    if (size <= 0) {
      return;
    }
    unread.append(buffer.data(), static_cast<std::size_t>(size));
  }
}

Reply LoopbackDaemon::replyTo(const RecordedRequest& request) {
  std::unique_lock lock(mutex_);
  requests_.push_back(request);
  changed_.notify_all();
  if (!queue_.empty()) {
    Reply reply = std::move(queue_.front());
    queue_.pop_front();
    return reply;
  }
  const Handler present = handler_;
  lock.unlock();
  Reply reply = present ? present(request) : model_.reply(request);
  if (request.header("Connection") == "close") {
    reply = replies::closing(std::move(reply));
  }
  return reply;
}

// False when the connection ends here.
bool LoopbackDaemon::perform(const Reply& reply, Connection& connection, ByteStream& stream) {
  if (reply.end == Reply::End::hang) {
    pause(std::chrono::hours(1));
    return false;
  }
  if (reply.end == Reply::End::reset) {
    resetOnClose(connection.socket);
    return false;
  }
  const bool sent = send(reply, stream) && sendFiller(reply.filler, stream);
  if (sent && reply.end == Reply::End::keepOpen) {
    return true;
  }
  stream.finish();
  return false;
}

bool LoopbackDaemon::send(const Reply& reply, ByteStream& stream) {
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

// Cut short, and false, when the connections are dropped or the daemon goes.
bool LoopbackDaemon::pause(std::chrono::milliseconds time) {
  std::unique_lock lock(mutex_);
  const int drops = drops_;
  return !changed_.wait_for(lock, time, [&] { return stopping_ || drops_ != drops; });
}

}  // namespace seedmote::support
