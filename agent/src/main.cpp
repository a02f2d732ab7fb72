#include "program.h"

int main(int argc, char** argv) {
  ormaagent::AnswerOutput output = ormaagent::AnswerOutput::takeStandardOutput();
  return ormaagent::run(argc, argv, output);
}
