#include "sample.h"

using refl::Enum::OptionalPointer;
using refl::Enum::RequiredPointer;

void Point::addAttributes(refl::CClassInfor& infor) {
  described::addInt(infor, {"x", offsetof(Point, x)});
  described::addInt(infor, {"y", offsetof(Point, y)});
}

void Sample::addAttributes(refl::CClassInfor& infor) {
  using namespace described;
  addInt(infor, {"number", offsetof(Sample, number)});
  addOcts(infor, {"name", offsetof(Sample, name)});
  addInt(infor, {"flag", offsetof(Sample, flag), 0, OptionalPointer});
  addSequence<Point>(infor, {"place", offsetof(Sample, place), -1, RequiredPointer});
  addSequence<Point>(infor, {"target", offsetof(Sample, target), 2, OptionalPointer});
  addList<ElementList<AsnInt>>(infor, {"values", offsetof(Sample, values)});
  addList<ElementList<AsnOcts>>(infor, {"notes", offsetof(Sample, notes), 1, OptionalPointer});
  addList<ElementList<Sample>>(infor, {"children", offsetof(Sample, children), 3, OptionalPointer});
  addInt(infor, {"code", offsetof(Sample, code), 31, OptionalPointer});
  addOcts(infor, {"label", offsetof(Sample, label), 200, OptionalPointer});
  addSequence<Point>(infor, {"path", offsetof(Sample, path), 20000, OptionalPointer});
  addInt(infor, {"last", offsetof(Sample, last)});
}

Sample::Sample() : place(new Point) { Constructor(); }

Sample::~Sample() {
  Destructor();
  delete path;
  delete label;
  delete code;
  delete children;
  delete notes;
  delete target;
  delete place;
  delete flag;
}
