// The numbers that describe types: access, kinds, pointer flags, the codes of the basic types and
// the marks of custom types.
//
// Thread-safety: immutable.
//
//   type.flags = (type.flags & ~refl::Enum::kFlagBits) | refl::Enum::OptionalPointer;
#pragma once

namespace refl::Enum {

enum AccessSpecifierEnum : unsigned char { Public = 0, Protected = 1, Private = 2 };

// What a type record describes.
enum TypeKindEnum : unsigned char {
  NoKind = 0,
  ClassKind = 0x01,   // a described class
  CustomKind = 0x40,  // a named type that brings its own creator and destroyer
  BasicKind = 0x70    // a registered basic type
};

// How the object holds the field; the low six bits of a type record's flags.
enum HoldingFlagEnum : unsigned char {
  ByValue = 0,
  RequiredPointer = 0x12,  // never null in a complete object
  OptionalPointer = 0x19   // null when absent
};
constexpr unsigned char kFlagBits = 0x3F;

enum BasicTypeCodeEnum : unsigned char { AsnIntCode = 14, AsnOctsCode = 45 };

// Custom types whose mark this is are lists: SEQUENCE OF.
constexpr int kListMark = 41;

}  // namespace refl::Enum
