// Listening on the loopback interface.
//
// Failure: SimError that names the port.
#pragma once

namespace ormasim {

// A socket that listens on 127.0.0.1, at a free port for 0. The caller closes it.
int listenOnLoopback(int port);
// The port at which it listens.
int portOfListener(int socket);

}  // namespace ormasim
