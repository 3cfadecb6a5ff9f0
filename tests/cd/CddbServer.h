#pragma once
// A title server on the loopback for the CD tests: an HTTP server on
// 127.0.0.1 in its own thread (the lookup blocks the calling one) that
// answers each request as the test says and notes what it was sent.

#include <QByteArray>
#include <QList>
#include <QTcpServer>
#include <QTcpSocket>
#include <atomic>
#include <functional>
#include <future>
#include <mutex>
#include <thread>

namespace cdtest {

// What the test's server does with one request.
struct Reply {
  enum Kind { Answer, Silent, CloseMidway } kind = Answer;
  QByteArray body;  // the CDDB text; the HTTP head is added
};

// Each connection carries one request, answered by `respond`.
class LoopbackServer {
 public:
  explicit LoopbackServer(std::function<Reply(const QByteArray&)> respond, bool refuse = false)
      : respond_(std::move(respond)), refuse_(refuse) {
    std::promise<quint16> port;
    auto ready = port.get_future();
    thread_ = std::thread([this, &port] { Run(port); });
    port_ = ready.get();
  }
  ~LoopbackServer() {
    stop_ = true;
    thread_.join();
  }
  quint16 Port() const { return port_; }
  QList<QByteArray> Requests() {
    std::lock_guard lock(mutex_);
    return requests_;
  }

 private:
  void Run(std::promise<quint16>& port) {
    QTcpServer server;
    server.listen(QHostAddress::LocalHost, 0);
    port.set_value(server.serverPort());
    QList<QTcpSocket*> held;  // silent connections stay open until the end
    while (!stop_) {
      if (!server.waitForNewConnection(50)) continue;
      QTcpSocket* socket = server.nextPendingConnection();
      if (refuse_) {  // closed at once, before the request is read
        socket->abort();
        delete socket;
        continue;
      }
      QByteArray request;
      while (!request.contains("\r\n\r\n") && socket->waitForReadyRead(2000))
        request += socket->readAll();
      {
        std::lock_guard lock(mutex_);
        requests_ << request;
      }
      const Reply reply = respond_(request);
      if (reply.kind == Reply::Silent) {
        held << socket;
        continue;
      }
      QByteArray bytes =
          "HTTP/1.0 200 OK\r\nContent-Type: text/plain; charset=UTF-8\r\n\r\n" + reply.body;
      if (reply.kind == Reply::CloseMidway) bytes.truncate(bytes.size() / 2);
      socket->write(bytes);
      socket->waitForBytesWritten(2000);
      socket->disconnectFromHost();
      if (socket->state() != QAbstractSocket::UnconnectedState) socket->waitForDisconnected(500);
      delete socket;
    }
    qDeleteAll(held);
  }

  std::function<Reply(const QByteArray&)> respond_;
  bool refuse_ = false;
  std::thread thread_;
  quint16 port_ = 0;
  std::atomic<bool> stop_{false};
  std::mutex mutex_;
  QList<QByteArray> requests_;
};

}  // namespace cdtest
