#include "formatted_text.h"

#include <cstdio>

namespace orma {

FormattedText::FormattedText(const char* format, std::va_list arguments) : view_(orNull(format)) {
  if (format == nullptr) return;
  std::va_list again;
  va_copy(again, arguments);
  const int length = std::vsnprintf(stack_, sizeof stack_, format, arguments);
  if (length >= 0) {
    const auto size = static_cast<std::size_t>(length);
    if (size < sizeof stack_) {
      view_ = {stack_, size};
    } else {
      heap_.resize(size + 1);
      std::vsnprintf(heap_.data(), heap_.size(), format, again);
      view_ = {heap_.data(), size};
    }
  }
  va_end(again);
}

}  // namespace orma
