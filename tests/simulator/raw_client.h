// A client of bare bytes: what stands on the wire, also where no HTTP client would go.
// Waits end after 30 seconds with what came until then.
#pragma once

#include <string>
#include <vector>

namespace ormasim::testing {

class RawClient {
 public:
  explicit RawClient(int port);
  ~RawClient();
  RawClient(const RawClient&) = delete;
  RawClient& operator=(const RawClient&) = delete;

  void send(const std::string& bytes);
  void get(const std::string& target) { send("GET " + target + " HTTP/1.1\r\nHost: x\r\n\r\n"); }
  // Everything up to the server's closing.
  std::string readToEnd();
  // So many bytes, or fewer when the server closes before.
  std::string read(std::size_t size);
  // One answer: its head and as many bytes as that announces.
  std::string readAnswer();
  // True when the server has closed and nothing came before that.
  bool closedSilently() { return readToEnd().empty() && ended_; }
  bool ended() const { return ended_; }
  // Whether there is something to read, or the end, by now.
  bool readable() const;
  int socket() const { return socket_; }

 private:
  bool readMore();

  int socket_;
  std::string received_;
  bool ended_ = false;
};

// The index of the first client that can be read; -1 after 30 seconds.
int firstReadable(const std::vector<RawClient*>& clients);

std::string headOf(const std::string& answer);
std::string bodyOf(const std::string& answer);

}  // namespace ormasim::testing
