#include <iomanip>
#include <ostream>

#include "field_access.h"
#include "field_codec.h"

namespace {

constexpr unsigned int kDeepestIndented = 40;

void startLine(std::ostream& out, unsigned int level) {
  out << '\n';
  if (level <= kDeepestIndented) out << std::setw(static_cast<int>(2 * level)) << "";
}

void printValue(const FieldPlan& field, const void* value, std::ostream& out, unsigned int level) {
  const bool isOneLine = field.type == FieldType::Integer || field.type == FieldType::OctetString;
  out << field.name << (isOneLine ? ": " : ":");
  static_cast<const AsnType*>(value)->Print(out, level + 1, !isOneLine);
}

}  // namespace

void printFields(const SequencePlan& plan, const AsnSequence* object, std::ostream& out,
                 unsigned int level, bool newLine) {
  for (const FieldPlan& field : plan.fields) {
    const void* value = valueOf(field, object);
    if (value == nullptr) continue;
    if (newLine) startLine(out, level);
    newLine = true;
    printValue(field, value, out, level);
  }
}
