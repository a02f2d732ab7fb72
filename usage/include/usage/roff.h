// Text in the macros of man(7), with every character of the words protected.
//
//   usage::Roff page("ormaagent.json", 5, "configuration of ormaagent");
//   page.section("DESCRIPTION");
//   page.paragraph("One JSON file ...");
//   page.entry("log.level", "Highest level that is written.");
//   page.text();
//
// Thread-safety: thread-compatible. Nothing fails but for memory.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace usage {

// Words as they are: no request, no escape, hyphens that can be copied.
std::string roffWords(std::string_view words);
std::string roffBold(std::string_view words);
std::string roffItalic(std::string_view words);

class Roff {
 public:
  // Begins with the head line and the section NAME.
  Roff(std::string_view name, int section, std::string_view summary);

  void section(std::string_view title);
  void subsection(std::string_view title);
  void paragraph(std::string_view words);
  // A term and, indented, what it means. The raw form takes a head that is roff already.
  void entry(std::string_view word, std::string_view meaning);
  void rawEntry(std::string_view head, std::string_view meaning);
  // A further paragraph of the entry.
  void continued(std::string_view words);
  // Between these, entries stand a step further in.
  void indent();
  void outdent();
  // Lines of code, as they are.
  void code(const std::vector<std::string>& lines);
  // "a(1), b(5)"
  void references(const std::vector<std::string>& pages);
  void raw(std::string_view line);

  const std::string& text() const { return text_; }

 private:
  void beginParagraph();

  std::string text_;
  bool belowTitle_ = false;
};

}  // namespace usage
