// A field's value in an object: where it is, and whether it is there.
//
// Thread-safety: thread-compatible. Failure: std::bad_alloc from present.
//
//   if (const void* value = valueOf(field, object)) { ... }
#pragma once

#include <cstring>

#include "sequence_plan.h"

inline const void* placeOf(const FieldPlan& field, const AsnSequence* object) {
  return reinterpret_cast<const char*>(object) + field.position;
}
inline void* placeOf(const FieldPlan& field, AsnSequence* object) {
  return reinterpret_cast<char*>(object) + field.position;
}

// Pointers are read and written as bytes: their declared types are the sequence's own.
inline void* pointerAt(const void* place) {
  void* pointer = nullptr;
  std::memcpy(&pointer, place, sizeof pointer);
  return pointer;
}

// The field's value, or null when it is held by a null pointer.
inline const void* valueOf(const FieldPlan& field, const AsnSequence* object) {
  const void* place = placeOf(field, object);
  return field.holding == Holding::Value ? place : pointerAt(place);
}

// The field's value, a new one if there was none.
inline void* present(const FieldPlan& field, AsnSequence* object) {
  void* place = placeOf(field, object);
  if (field.holding == Holding::Value) return place;
  void* value = pointerAt(place);
  if (value == nullptr) {
    value = field.creator();
    std::memcpy(place, &value, sizeof value);
  }
  return value;
}

// Ends with the field's pointer null.
inline void makeAbsent(const FieldPlan& field, AsnSequence* object) {
  void* place = placeOf(field, object);
  void* value = pointerAt(place);
  if (value == nullptr) return;
  void* const none = nullptr;
  std::memcpy(place, &none, sizeof none);
  field.destroyer(value);
}
