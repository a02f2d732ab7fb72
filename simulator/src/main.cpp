#include "command_line.h"

int main(int argc, char** argv) { return ormasim::runOrmasim(argc, argv); }
