#pragma once

#include <chrono>
#include <cstddef>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "tests/support/DaemonModel.h"
#include "tests/support/HttpMessages.h"
#include "tests/support/Replies.h"

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
    int port = 0;                          // 0: one that the system chooses
  };

  LoopbackDaemon() : LoopbackDaemon(Options{}) {}
  explicit LoopbackDaemon(const Options& options);
  ~LoopbackDaemon();
  LoopbackDaemon(const LoopbackDaemon&) = delete;
  LoopbackDaemon& operator=(const LoopbackDaemon&) = delete;

  int port() const;
  std::string address() const;  // "127.0.0.1:PORT"
  std::string url(const std::string& path = "/transmission/rpc") const;

  void enqueue(Reply reply);         // for one request; several are used in order
  void setHandler(Handler handler);  // runs on the connection's thread; an empty one brings the model back
  void setReply(Reply reply);        // the same to every request

  DaemonModel& model();
  std::string sessionId() const;
  void changeSessionId();

  std::vector<RecordedRequest> requests() const;
  // False when fewer than `count` came within `patience`.
  bool waitForRequests(std::size_t count,
                       std::chrono::milliseconds patience = std::chrono::seconds(20)) const;
  void forgetRequests();
  int connections() const;  // accepted so far

  void release();  // ends every wait of a held reply so far; later ones wait again

  // Connections are refused from now on; those that are open stay. The port is kept for listenAgain().
  void stopListening();
  void listenAgain();
  // Closes what is open, as a daemon does that ends. What is under way gets no answer.
  void dropConnections();
  void restart();  // drops the connections and changes the session id

 private:
  class Impl;
  std::unique_ptr<Impl> impl_;
};

}  // namespace seedmote::support
