// The failure of an encoding or decoding. It is always thrown by pointer, new, and who catches it
// deletes it.
//
// Thread-safety: immutable.
//
//   } catch (CSM_Exception* thrown) {
//     const std::unique_ptr<CSM_Exception> failure(thrown);
//     report(failure->code(), failure->message());
//   }
#pragma once

#include <exception>
#include <memory>
#include <string>
#include <vector>

#include "orma/bundle/export.h"

// Bytes that belong to a failure.
struct CSM_Buffer {
  std::vector<unsigned char> bytes;
};

// The codes of the failures that this library finds. List templates have their own besides.
enum AsnErrorCode : long {
  kAsnEndOfInput = -101,  // the bytes, or those of the value around it, end inside a value
  kAsnWrongTag = -102,    // another tag than the field's, or a field out of its order
  kAsnBadTag = -103,      // a tag of more than four bytes, or one that is written too long
  kAsnBadLength = -104,   // a length beyond 2^63 - 1, or of a form that the type does not have
  kAsnBadInteger = -105,  // an integer without bytes, of more than eight or out of range
  kAsnTooDeep = -106,     // more than 64 levels of nesting
  kAsnBadEndOfContents = -107,  // an end-of-contents mark that is broken, or where none is due
  kAsnIncomplete = -108         // encoding: a required field is null
};

class ORMA_API CSM_Exception : public std::exception {
 public:
  // The texts are copied; the buffer, which may be null, is taken over.
  CSM_Exception(long code, long line, const char* text, const char* file, const char* message,
                CSM_Buffer* buffer);
  ~CSM_Exception() override;

  long code() const { return code_; }
  long line() const { return line_; }
  const std::string& text() const { return text_; }
  const std::string& file() const { return file_; }
  const std::string& message() const { return message_; }
  const CSM_Buffer* buffer() const { return buffer_.get(); }
  // The message.
  const char* what() const noexcept override;

 private:
  // First, so that it is freed even if a text cannot be copied.
  std::shared_ptr<const CSM_Buffer> buffer_;
  long code_;
  long line_;
  std::string text_;
  std::string file_;
  std::string message_;
};
