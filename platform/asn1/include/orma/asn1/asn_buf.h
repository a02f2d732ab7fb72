// The bytes that are encoded to or decoded from. It is written from the end towards the start, so
// that content comes before its length and tag, and read from the start towards the end.
//
// Thread-safety: thread-compatible. Failure: std::bad_alloc and std::length_error on writing;
// reading at the end sets a flag and gives 0.
//
//   AsnBuf buffer;
//   request.BEnc(buffer, NIClass_EncodingFormat_BER);
//   send(buffer.data(), buffer.size());
//   AsnBuf reader(received.data(), received.size(), AsnTagging::Explicit);
#pragma once

#include <cstring>
#include <memory>

#include "orma/bundle/export.h"

// How context tags stand on the wire: in place of the type's own tag, or around it. The
// configuration's word for it is `faultServer.tagging`; whoever makes a buffer reads it.
enum class AsnTagging { Implicit, Explicit };

class ORMA_API AsnBuf {
 public:
  // For writing.
  explicit AsnBuf(AsnTagging tagging = AsnTagging::Implicit) : tagging_(tagging) {}
  // For reading. The bytes are borrowed.
  AsnBuf(const void* bytes, unsigned long size, AsnTagging tagging = AsnTagging::Implicit)
      : read_(static_cast<const unsigned char*>(bytes)), end_(read_ + size), tagging_(tagging) {}
  AsnBuf(const AsnBuf&) = delete;
  AsnBuf& operator=(const AsnBuf&) = delete;
  ~AsnBuf();

  AsnTagging tagging() const { return tagging_; }

  // Writing.

  // Whether the write position has reached the start.
  bool isFull() const { return write_ == start_.get(); }
  // Moves what is written so that at least `room` more bytes fit in front of it.
  void AddBuffer(long room);
  void reserve(unsigned long room) {
    if (static_cast<unsigned long>(write_ - start_.get()) < room) {
      AddBuffer(static_cast<long>(room));
    }
  }
  void putByte(unsigned char byte) {
    if (isFull()) AddBuffer(1);
    *--write_ = byte;
  }
  void putBytes(const void* bytes, unsigned long size) {
    reserve(size);
    write_ -= size;
    if (size > 0) std::memcpy(write_, bytes, size);
  }
  // What was written, in the order of the wire.
  const unsigned char* data() const { return write_; }
  unsigned long size() const {
    return static_cast<unsigned long>(start_.get() + capacity_ - write_);
  }
  // Forgets what was written and keeps the room.
  void clear() { write_ = start_.get() + capacity_; }

  // Reading.

  bool atEnd() const { return read_ == end_; }
  unsigned long remaining() const { return static_cast<unsigned long>(end_ - read_); }
  // The next byte, which stays; 0 at the end.
  unsigned char peekByte() const { return atEnd() ? 0 : *read_; }
  // The next byte; at the end 0, and the flag is set.
  unsigned char getByte() {
    if (!atEnd()) return *read_++;
    readError_ = true;
    return 0;
  }
  const unsigned char* position() const { return read_; }
  const unsigned char* end() const { return end_; }
  // Moves on by `count` bytes, at most remaining().
  void skip(unsigned long count) { read_ += count; }
  // Goes back to a position that was read before.
  void moveTo(const unsigned char* position) { read_ = position; }
  // How many levels of nesting are open.
  int levels() const { return levels_; }
  bool readError() const { return readError_; }
  void setReadError() { readError_ = true; }

  // Ends the reading `size` bytes (at most remaining()) from here, for as long as this lives.
  class Part {
   public:
    Part(AsnBuf& buffer, unsigned long size) : buffer_(buffer), end_(buffer.end_) {
      buffer.end_ = buffer.read_ + size;
    }
    Part(const Part&) = delete;
    Part& operator=(const Part&) = delete;
    ~Part() { buffer_.end_ = end_; }

   private:
    AsnBuf& buffer_;
    const unsigned char* const end_;
  };

  // One level of nesting, for as long as this lives. Throws a CSM_Exception* beyond kMaxLevels.
  class Level {
   public:
    explicit Level(AsnBuf& buffer) : buffer_(buffer) {
      if (buffer.levels_ >= kMaxLevels) refuse();
      ++buffer.levels_;
    }
    Level(const Level&) = delete;
    Level& operator=(const Level&) = delete;
    ~Level() { --buffer_.levels_; }

   private:
    [[noreturn]] static void refuse();
    AsnBuf& buffer_;
  };
  static constexpr int kMaxLevels = 64;

 private:
  std::unique_ptr<unsigned char[]> start_;
  unsigned long capacity_ = 0;
  unsigned char* write_ = nullptr;
  const unsigned char* read_ = nullptr;
  const unsigned char* end_ = nullptr;
  int levels_ = 0;
  AsnTagging tagging_;
  bool readError_ = false;
};
