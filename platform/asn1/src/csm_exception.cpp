#include "orma/asn1/csm_exception.h"

CSM_Exception::CSM_Exception(long code, long line, const char* text, const char* file,
                             const char* message, CSM_Buffer* buffer)
    : buffer_(buffer), code_(code), line_(line), text_(text), file_(file), message_(message) {}

CSM_Exception::~CSM_Exception() = default;

const char* CSM_Exception::what() const noexcept { return message_.c_str(); }
