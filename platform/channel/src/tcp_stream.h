// A TCP connection by ACE, every wait on which has a deadline.
//
// Thread-safety: thread-compatible. Failure: error codes (channel_error.h). A peer that is gone
// raises no SIGPIPE.
#pragma once

#include <ace/INET_Addr.h>
#include <ace/SOCK_Stream.h>

#include <cstdint>
#include <memory>
#include <string>

#include "byte_stream.h"

namespace orma::channel {

class TcpStream : public ByteStream {
 public:
  // Tries the addresses of the host one after the other; null with the error code of the last.
  static std::unique_ptr<TcpStream> connect(const std::string& host, std::uint16_t port,
                                            const Deadline& deadline, unsigned long& error);
  ~TcpStream() override;
  TcpStream(const TcpStream&) = delete;
  TcpStream& operator=(const TcpStream&) = delete;

  unsigned long send(const unsigned char* bytes, std::size_t size,
                     const Deadline& deadline) override;
  unsigned long receive(unsigned char* bytes, std::size_t size, std::size_t& received,
                        const Deadline& deadline) override;

 private:
  TcpStream() = default;
  unsigned long open(const ACE_INET_Addr& address, const Deadline& deadline);
  unsigned long prepare();

  ACE_SOCK_Stream stream_;
};

}  // namespace orma::channel
