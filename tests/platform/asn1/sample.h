// The sequences of the tests: every type of field, held in every way, with short and long tags.
#pragma once

#include <memory>

#include "described.h"

struct Point : described::Sequence<Point> {
  static constexpr const char* kName = "Point";
  static void addAttributes(refl::CClassInfor& infor);

  AsnInt x;
  AsnInt y;
};

// SEQUENCE {
//   number INTEGER, name OCTET STRING, flag [0] INTEGER OPTIONAL, place Point,
//   target [2] Point OPTIONAL, values SEQUENCE OF INTEGER,
//   notes [1] SEQUENCE OF OCTET STRING OPTIONAL, children [3] SEQUENCE OF Sample OPTIONAL,
//   code [31] INTEGER OPTIONAL, label [200] OCTET STRING OPTIONAL, path [20000] Point OPTIONAL,
//   last INTEGER }
struct Sample : described::Sequence<Sample> {
  static constexpr const char* kName = "Sample";
  static void addAttributes(refl::CClassInfor& infor);

  Sample();
  Sample(const Sample&) = delete;
  Sample& operator=(const Sample&) = delete;
  ~Sample() override;

  AsnInt number;
  AsnOcts name;
  AsnInt* flag = nullptr;
  Point* place = nullptr;
  Point* target = nullptr;
  ElementList<AsnInt> values;
  ElementList<AsnOcts>* notes = nullptr;
  ElementList<Sample>* children = nullptr;
  AsnInt* code = nullptr;
  AsnOcts* label = nullptr;
  Point* path = nullptr;
  AsnInt last;
};
