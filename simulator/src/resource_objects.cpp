#include "resource_objects.h"

#include <algorithm>
#include <iterator>

#include "equipment_tables.h"
#include "json_writer.h"

namespace ormasim {
namespace {

struct Form {
  std::int64_t mainType;
  const char* idMember;
  const char* daughterFlag;  // the whole member; empty: none
  const char* typeMember;
  bool typeIsText;
};

constexpr Form kForms[] = {
    {kElementType, "nativeId", "", "detailDevType", false},
    {kFrameType, "nativeId", "", "frameType", true},
    {kSlotType, "slotNativeId", ",\"isDaughterCard\":false", "cardType", false},
    {kDaughterSlotType, "slotNativeId", ",\"isDaughterCard\":true", "daughterCardType", false},
    {kPortType, "nativeId", "", "portType", false},
    {kCardType, "nativeId", ",\"isDaughterCard\":false", "cardType", false},
    {kDaughterCardType, "nativeId", ",\"isDaughterCard\":true", "daughterCardType", false},
};

}  // namespace

void appendResource(const Statement& row, std::string& out) {
  const std::int64_t mainType = row.integer(1);
  const Form* const form =
      std::find_if(std::begin(kForms), std::end(kForms),
                   [mainType](const Form& one) { return one.mainType == mainType; });
  if (form == std::end(kForms)) return;  // a resource of somebody else's making
  out += out.back() != '[' ? ",{" : "{";
  appendMember(out, form->idMember, row.text(0));
  out += ',';
  appendMember(out, "name", row.text(3));
  out += form->daughterFlag;
  out += ',';
  if (form->typeIsText) {
    appendMember(out, form->typeMember, std::to_string(row.integer(2)));
  } else {
    appendMember(out, form->typeMember, row.integer(2));
  }
  out += '}';
}

}  // namespace ormasim
