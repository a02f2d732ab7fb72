#include "usage/roff.h"

namespace usage {

std::string roffWords(std::string_view words) {
  std::string escaped;
  // A line that begins with one of these would be a request.
  if (!words.empty() && (words.front() == '.' || words.front() == '\'')) escaped += "\\&";
  for (const char letter : words) {
    switch (letter) {
      case '\\':
        escaped += "\\e";
        break;
      case '-':
        escaped += "\\-";
        break;
      case '\'':
        escaped += "\\(aq";
        break;
      case '`':
        escaped += "\\(ga";
        break;
      case '^':
        escaped += "\\(ha";
        break;
      case '~':
        escaped += "\\(ti";
        break;
      default:
        escaped += letter;
    }
  }
  return escaped;
}

std::string roffBold(std::string_view words) { return "\\fB" + roffWords(words) + "\\fR"; }

std::string roffItalic(std::string_view words) { return "\\fI" + roffWords(words) + "\\fR"; }

namespace {

// Each sentence on a line of its own, as roff wants it for the blanks between them.
std::string sentences(std::string_view words) {
  std::string lines;
  for (;;) {
    const auto end = words.find(". ");
    if (end == std::string_view::npos) break;
    lines += roffWords(words.substr(0, end + 1)) + "\n";
    words.remove_prefix(end + 2);
  }
  return lines + roffWords(words);
}

}  // namespace

Roff::Roff(std::string_view name, int section, std::string_view summary) {
  raw(".TH " + std::string(name) + " " + std::to_string(section) +
      " " EMF_RELEASE_DATE " \"ii_ormaiac_emf " EMF_VERSION "\"");
  this->section("NAME");
  raw(roffWords(name) + " \\- " + roffWords(summary));
}

void Roff::section(std::string_view title) {
  raw(".SH " + std::string(title));
  belowTitle_ = true;
}

void Roff::subsection(std::string_view title) {
  raw(".SS " + roffWords(title));
  belowTitle_ = true;
}

void Roff::paragraph(std::string_view words) {
  beginParagraph();
  raw(sentences(words));
}

void Roff::entry(std::string_view word, std::string_view meaning) {
  rawEntry(roffBold(word), meaning);
}

void Roff::rawEntry(std::string_view head, std::string_view meaning) {
  raw(".TP");
  raw(head);
  raw(sentences(meaning));
}

void Roff::continued(std::string_view words) {
  raw(".IP");
  raw(sentences(words));
}

void Roff::indent() { raw(".RS"); }

void Roff::outdent() { raw(".RE"); }

void Roff::code(const std::vector<std::string>& lines) {
  beginParagraph();
  raw(".nf");
  raw(".RS");
  for (const std::string& line : lines) raw(roffWords(line));
  raw(".RE");
  raw(".fi");
}

void Roff::references(const std::vector<std::string>& pages) {
  for (const std::string& page : pages) {
    const auto bracket = page.find('(');
    raw(".BR " + roffWords(page.substr(0, bracket)) + " " + page.substr(bracket) +
        (&page == &pages.back() ? "" : " ,"));
  }
}

// A title begins a paragraph by itself.
void Roff::beginParagraph() {
  if (!belowTitle_) raw(".PP");
}

void Roff::raw(std::string_view line) {
  belowTitle_ = false;
  text_ += line;
  text_ += '\n';
}

}  // namespace usage
