// A printf text: on the stack while it is short, on the heap when it is not.
//
// Thread-safety: thread-compatible. A format that cannot be carried out is shown as it stands.
#pragma once

#include <cstdarg>
#include <string>
#include <string_view>

namespace orma {

class FormattedText {
 public:
  FormattedText(const char* format, std::va_list arguments) __attribute__((format(printf, 2, 0)));
  FormattedText(const FormattedText&) = delete;
  FormattedText& operator=(const FormattedText&) = delete;

  std::string_view view() const { return view_; }

 private:
  char stack_[1024];
  std::string heap_;
  std::string_view view_;
};

// The text, or what printf shows for a null one.
inline const char* orNull(const char* text) { return text == nullptr ? "(null)" : text; }

}  // namespace orma
