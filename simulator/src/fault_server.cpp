#include "fault_server.h"

#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <exception>
#include <utility>

#include "error.h"
#include "fault_exchange.h"
#include "listener.h"

namespace ormasim {
namespace {

// Commands that are answered at once; more wait.
constexpr std::size_t kThreads = 64;
constexpr int kFullMs = 100;

}  // namespace

FaultServer::FaultServer(FaultServerSettings settings) : settings_(std::move(settings)) {
  // Opened once here, so that a bad file is told at once.
  Database(settings_.databaseFile, Database::Mode::ReadOnly).requireInventory();
}

FaultServer::~FaultServer() { stop(); }

int FaultServer::start(int port) {
  listener_ = listenOnLoopback(port);
  acceptor_ = std::thread([this] { acceptAll(); });
  return portOfListener(listener_);
}

void FaultServer::stop() {
  if (!acceptor_.joinable()) return;
  ::shutdown(listener_, SHUT_RDWR);
  connections_.shutDownAll();
  acceptor_.join();
  ::close(listener_);
}

void FaultServer::acceptAll() {
  httplib::ThreadPool pool(kThreads);
  for (;;) {
    const int socket = ::accept4(listener_, nullptr, nullptr, SOCK_CLOEXEC);
    if (socket >= 0) {
      pool.enqueue([this, socket] { serve(socket); });
    } else if (errno == EMFILE || errno == ENFILE) {
      ::poll(nullptr, 0, kFullMs);  // until a connection ends
    } else if (errno != EINTR && errno != ECONNABORTED) {
      break;
    }
  }
  pool.shutdown();
}

void FaultServer::serve(int socket) {
  Connection connection(socket, connections_);
  FaultExchange exchange(connection, settings_.frames);
  if (!exchange.readCommand()) return;
  try {
    Database database(settings_.databaseFile, Database::Mode::ReadOnly);
    database.requireInventory();
    exchange.answer(database, settings_.faults.next(kFaultServerPath));
  } catch (const SimError& failure) {
    std::fprintf(stderr, "ormasim: %s\n", failure.what());
    exchange.end(kInventoryFailed);
  }
}

}  // namespace ormasim
