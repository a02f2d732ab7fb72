// The walks over a sequence's fields, which are reached by their positions in the object.
//
// Thread-safety and failure: orma/asn1/asn_sequence.h.
//
//   const unsigned long length = encodeFields(plan, &sequence, buffer);
#pragma once

#include "sequence_plan.h"

// Writes all fields and gives the number of bytes.
unsigned long encodeFields(const SequencePlan& plan, const AsnSequence* object, AsnBuf& buffer);
// Reads all fields and what stands behind them, up to `length` bytes or, if that is
// kAsnIndefiniteLength, to the end-of-contents mark, which is read too.
void decodeFields(const SequencePlan& plan, AsnSequence* object, AsnBuf& buffer,
                  unsigned long length);
void copyFields(const SequencePlan& plan, AsnSequence* object, const AsnSequence* source);
void printFields(const SequencePlan& plan, const AsnSequence* object, std::ostream& out,
                 unsigned int level, bool newLine);
