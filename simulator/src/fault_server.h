// The fault server on the loopback interface: the command channel of docs/formats/channel.md, the
// alarms of the inventory behind it.
//
//   FaultServer server({"net.db", {}, {}});
//   int port = server.start(0);
//   …
//   server.stop();
//
// Thread-safety: thread-compatible. Failure: the constructor and start throw SimError.
#pragma once

#include <memory>
#include <string>
#include <thread>

#include "alarm_frames.h"
#include "connection.h"
#include "fault_script.h"

namespace ormasim {

struct FaultServerSettings {
  std::string databaseFile;
  FrameOptions frames;
  FaultScript faults;
};

class FaultServer {
 public:
  explicit FaultServer(FaultServerSettings settings);
  // Stops.
  ~FaultServer();
  FaultServer(const FaultServer&) = delete;
  FaultServer& operator=(const FaultServer&) = delete;

  // Listens on 127.0.0.1 and serves; the port, a free one for 0. Once only.
  int start(int port);
  // Ends at once, with the commands that are being answered. Harmless when not started.
  void stop();

 private:
  void acceptAll();
  void serve(int socket);

  FaultServerSettings settings_;
  ConnectionSet connections_;
  int listener_ = -1;
  std::thread acceptor_;
};

}  // namespace ormasim
