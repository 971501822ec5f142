#pragma once

#include <chrono>
#include <condition_variable>
#include <cstddef>
#include <deque>
#include <functional>
#include <list>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <thread>
#include <vector>

#include "tests/support/ByteStream.h"
#include "tests/support/DaemonModel.h"
#include "tests/support/HttpMessages.h"
#include "tests/support/Replies.h"
#include "tests/support/TlsServer.h"

namespace seedmote::support {

// A server on 127.0.0.1 that records every request. It answers as the real daemon does until it is told
// otherwise: first what was enqueued, then the handler, then the model. All operations are thread-safe.
// Its destructor ends every connection, whatever they are at.
class LoopbackDaemon final {
 public:
  using Handler = std::function<Reply(const RecordedRequest&)>;

  struct Options {
    bool tls = false;
    bool demandClientCertificate = false;  // with tls
  };

  LoopbackDaemon() : LoopbackDaemon(Options{}) {}
  explicit LoopbackDaemon(const Options& options);
  ~LoopbackDaemon();
  LoopbackDaemon(const LoopbackDaemon&) = delete;
  LoopbackDaemon& operator=(const LoopbackDaemon&) = delete;

  int port() const { return port_; }
  std::string address() const { return "127.0.0.1:" + std::to_string(port_); }
  std::string url(const std::string& path = "/transmission/rpc") const {
    return (tls_ ? "https://" : "http://") + address() + path;
  }

  void enqueue(Reply reply);         // for one request; several are used in order
  void setHandler(Handler handler);  // runs on the connection's thread; an empty one brings the model back
  void setReply(Reply reply);        // the same to every request
  void setGreeting(Reply greeting);  // to every new connection, before anything is read of it

  DaemonModel& model() { return model_; }
  std::string sessionId() const { return model_.sessionId(); }
  void changeSessionId() { model_.changeSessionId(); }

  std::vector<RecordedRequest> requests() const;
  // False when fewer than `count` came within a time that is enough for any machine.
  bool waitForRequests(std::size_t count) const;
  void forgetRequests();
  int connections() const;  // accepted so far

  // Connections are refused from now on; those that are open stay. The port is kept for listenAgain().
  void stopListening();
  void listenAgain();
  // Closes what is open, as a daemon does that ends. What is under way gets no answer.
  void dropConnections();

 private:
  struct Connection {
    FileDescriptor socket;
    std::thread thread;
  };

  void acceptAll();
  void serve(Connection& connection);
  void serveRequests(Connection& connection, ByteStream& stream);
  Reply replyTo(const RecordedRequest& request);
  bool perform(const Reply& reply, Connection& connection, ByteStream& stream);
  bool send(const Reply& reply, ByteStream& stream);
  bool pause(std::chrono::milliseconds time);
  std::optional<Reply> greeting() const;

  const std::unique_ptr<TlsServer> tls_;
  int port_ = 0;
  DaemonModel model_;
  FileDescriptor listener_;
  std::thread acceptor_;

  mutable std::mutex mutex_;
  mutable std::condition_variable changed_;
  std::vector<RecordedRequest> requests_;
  std::deque<Reply> queue_;
  Handler handler_;
  std::optional<Reply> greeting_;
  int accepted_ = 0;
  std::list<Connection> connections_;
  int drops_ = 0;
  bool stopping_ = false;
};

}  // namespace seedmote::support
