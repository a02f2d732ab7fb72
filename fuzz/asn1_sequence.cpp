// A sequence from any bytes, in the tagging that the first byte tells. What decodes encodes to
// bytes that decode to the same; what does not decode fails by a CSM_Exception.
#include <cstdint>
#include <cstdlib>
#include <memory>

#include "codec.h"
#include "sample.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size == 0) return 0;
  const auto tagging = (data[0] & 1) == 0 ? AsnTagging::Implicit : AsnTagging::Explicit;
  const Bytes bytes(data + 1, data + size);
  Sample sample;
  const Decoded first = decode(sample, bytes, tagging);
  if (first.code != 0) return 0;
  if (first.count + first.left != bytes.size()) std::abort();

  const Bytes again = encoded(sample, tagging);
  Sample copy;
  copy.Assign(sample);
  if (encoded(copy, tagging) != again) std::abort();
  const Decoded second = decode(copy, again, tagging);
  if (second.code != 0 || second.left != 0) std::abort();
  if (encoded(copy, tagging) != again || printed(copy) != printed(sample)) std::abort();
  return 0;
}
