#include "waiting_line.h"

#include <system_error>
#include <utility>

namespace ormaagent {

namespace {

constexpr char kClearLine[] = "\r\033[K";

}  // namespace

WaitingLine::WaitingLine(std::string title, int descriptor, std::chrono::milliseconds interval)
    : title_(std::move(title)), descriptor_(descriptor), interval_(interval) {
  if (::isatty(descriptor_) != 1) return;
  try {
    thread_ = std::thread(&WaitingLine::run, this);
  } catch (const std::system_error&) {
    // The work itself needs no line.
  }
}

WaitingLine::~WaitingLine() {
  if (!thread_.joinable()) return;
  {
    const std::lock_guard lock(mutex_);
    over_ = true;
  }
  ended_.notify_one();
  thread_.join();
  if (drawn_) put(kClearLine);
}

void WaitingLine::run() {
  std::unique_lock lock(mutex_);
  while (!ended_.wait_for(lock, interval_, [this] { return over_; })) {
    const auto elapsed = std::chrono::steady_clock::now() - start_;
    draw(std::chrono::duration_cast<std::chrono::seconds>(elapsed));
  }
}

void WaitingLine::draw(std::chrono::seconds elapsed) {
  drawn_ = true;
  put(kClearLine + title_ + ": " + std::to_string(elapsed.count()) + " s");
}

void WaitingLine::put(const std::string& text) const {
  // A terminal that takes nothing loses the line and no more.
  [[maybe_unused]] const ssize_t written = ::write(descriptor_, text.data(), text.size());
}

}  // namespace ormaagent
