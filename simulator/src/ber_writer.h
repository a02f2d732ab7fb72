// BER, written from the end towards the start, so that every length is known when its header is
// written.
//
//   BerWriter out(Tagging::Implicit);
//   const std::size_t mark = out.size();
//   out.integer(2);         // the last field first
//   out.octets("core-1");
//   out.sequence(mark);     // SEQUENCE { "core-1", 2 }
//
// Thread-safety: thread-compatible.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string_view>

namespace ormasim {

enum class Tagging { Implicit, Explicit };

// A field that goes under the tag of its own type.
constexpr int kNoContext = -1;

class BerWriter {
 public:
  explicit BerWriter(Tagging tagging) : tagging_(tagging) {}

  void integer(std::int64_t value, int context = kNoContext);
  void octets(std::string_view bytes, int context = kNoContext);
  // Everything written since size() was `mark` becomes the content of a SEQUENCE.
  void sequence(std::size_t mark, int context = kNoContext);

  std::size_t size() const { return capacity_ - begin_; }
  // Valid until the next write.
  std::string_view bytes() const;
  void clear() { begin_ = capacity_; }

 private:
  void put(unsigned char byte);
  void put(const void* bytes, std::size_t size);
  void header(unsigned char tag, std::size_t mark, int context);
  void length(std::size_t length);
  void makeRoom(std::size_t size);

  const Tagging tagging_;
  std::unique_ptr<unsigned char[]> buffer_;
  std::size_t capacity_ = 0;
  std::size_t begin_ = 0;
};

}  // namespace ormasim
