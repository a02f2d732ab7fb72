#include "processfailure.h"

#include "emfglobal.h"
#include "processexception.h"

namespace emf {

void throwProcessException(int code, const char* sourceName, int line, const std::string& detail) {
  ProcessException failure;
  failure.errCode = code;
  failure.line = line;
  failure.file << sourceName;
  failure.function << kUnknownFunction;
  failure.detail << "ErrCode:" << code << ",Detail:" << detail;
  throw failure;
}

}  // namespace emf
