// The program: commands, options and exit status.
#pragma once

namespace ormasim {

// 0 done, 1 failed (the reason is on standard error), 2 the command line is wrong.
int runOrmasim(int argc, char** argv);

}  // namespace ormasim
