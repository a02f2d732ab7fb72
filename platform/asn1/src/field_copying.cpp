#include "field_access.h"
#include "field_codec.h"
#include "orma/asn1/asn_int.h"
#include "orma/asn1/asn_list_base.h"
#include "orma/asn1/asn_octs.h"

namespace {

void copyValue(const FieldPlan& field, void* value, const void* source) {
  switch (field.type) {
    case FieldType::Integer:
      *static_cast<AsnInt*>(value) = *static_cast<const AsnInt*>(source);
      return;
    case FieldType::OctetString:
      static_cast<AsnOcts*>(value)->ReSet(*static_cast<const AsnOcts*>(source));
      return;
    case FieldType::Sequence: {
      const auto* sequence = static_cast<const AsnSequence*>(source);
      copyFields(planOf(field, *sequence), static_cast<AsnSequence*>(value), sequence);
      return;
    }
    case FieldType::List:
      static_cast<AsnListBase*>(value)->assign(*static_cast<const AsnListBase*>(source));
      return;
  }
}

}  // namespace

void copyFields(const SequencePlan& plan, AsnSequence* object, const AsnSequence* source) {
  for (const FieldPlan& field : plan.fields) {
    if (const void* value = valueOf(field, source)) {
      copyValue(field, present(field, object), value);
    } else {
      makeAbsent(field, object);
    }
  }
}
