// An answer as a document: a table for people, JSON or CSV for programs. docs/agent.md holds the
// forms.
//
//   std::string document = formatAnswer(answer, Format::kJson, CharacterSet::kUtf8);
//
// Thread-safety: immutable. Nothing fails: every text has a form in every format.
#pragma once

#include <string>

#include "answer.h"
#include "display_text.h"

namespace ormaagent {

enum class Format { kTable, kJson, kCsv };

// `characterSet` is the set that the texts of the answer are in. Tables and CSV go out in that
// set; JSON is always UTF-8.
std::string formatAnswer(const Answer& answer, Format format, CharacterSet characterSet);

}  // namespace ormaagent
