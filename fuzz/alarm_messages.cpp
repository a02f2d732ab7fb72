// A reply frame, a request or a list from any bytes; the first byte tells which, and the tagging.
// What decodes encodes to bytes that decode to the same; what does not decode fails by a
// CSM_Exception.
#include <cstdint>
#include <cstdlib>
#include <sstream>

#include "message_walk.h"

namespace {

using emf::test::decode;
using emf::test::encoded;
using emf::test::failureOf;
using emf::test::xml;

std::string printed(const AsnType& value) {
  std::ostringstream text;
  value.Print(text, 0, true);
  return text.str();
}

void expect(bool holds) {
  if (!holds) std::abort();
}

void copy(AsnSequence& to, const AsnSequence& from) { to.Assign(from); }
void copy(AsnListBase& to, const AsnListBase& from) { to.assign(from); }

template <typename Value>
void check(const std::string& bytes, AsnTagging tagging) {
  Value value;
  if (failureOf([&] { decode(value, bytes, tagging); }) != nullptr) return;
  const std::string again = encoded(value, tagging);
  Value other;
  copy(other, value);
  expect(encoded(other, tagging) == again);
  expect(decode(other, again, tagging) == again.size());
  expect(xml(other) == xml(value) && printed(other) == printed(value));
}

using Check = void (*)(const std::string&, AsnTagging);
constexpr Check kChecks[] = {check<AsnSvrToOtherQryResp>, check<AsnOtherToSvrQryAlmEventReq>,
                             check<ASNULList>, check<AsnDistinguishedResourceSeqOf>};
constexpr std::size_t kCheckCount = sizeof kChecks / sizeof *kChecks;

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size == 0) return 0;
  const auto tagging = (data[0] & 1) == 0 ? AsnTagging::Implicit : AsnTagging::Explicit;
  const std::string bytes(reinterpret_cast<const char*>(data + 1), size - 1);
  kChecks[data[0] / 2U % kCheckCount](bytes, tagging);
  return 0;
}
