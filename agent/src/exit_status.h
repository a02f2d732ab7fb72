// What ormaagent tells its caller by its exit status.
#pragma once

namespace ormaagent {

constexpr int kExitSucceeded = 0;
// The operation reported failure, or its answer could not be written.
constexpr int kExitFailed = 1;
// The command line, the configuration or a service that the command needs is at fault.
constexpr int kExitUsage = 2;
// An exception left the operation.
constexpr int kExitException = 3;
// The command's time was over.
constexpr int kExitDeadline = 4;

}  // namespace ormaagent
