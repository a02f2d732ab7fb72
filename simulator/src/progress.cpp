#include "progress.h"

#include <unistd.h>

#include <algorithm>
#include <csignal>
#include <cstdio>

#include "error.h"

namespace ormasim {
namespace {

constexpr std::uint64_t kStepsBetweenLooks = 256;
constexpr auto kDrawInterval = std::chrono::milliseconds(100);
constexpr std::size_t kBarWidth = 40;

volatile std::sig_atomic_t g_interrupted = 0;

}  // namespace

void interruptWorkOnSignals() {
  struct sigaction action {};
  action.sa_handler = [](int) { g_interrupted = 1; };
  sigaction(SIGINT, &action, nullptr);
  sigaction(SIGTERM, &action, nullptr);
}

Progress::Progress(std::string title, std::uint64_t total)
    : title_(std::move(title)), total_(total), drawing_(::isatty(STDERR_FILENO) == 1) {}

Progress::~Progress() {
  if (drawing_) std::fputs("\r\033[K", stderr);
}

void Progress::advance() {
  if (++done_ % kStepsBetweenLooks != 0) return;
  if (g_interrupted != 0) throw SimError("interrupted; nothing was changed");
  if (drawing_ && std::chrono::steady_clock::now() >= nextDraw_) draw();
}

void Progress::draw() {
  nextDraw_ = std::chrono::steady_clock::now() + kDrawInterval;
  const std::uint64_t total = std::max<std::uint64_t>(total_, 1);
  const std::size_t filled = std::min<std::size_t>(kBarWidth, done_ * kBarWidth / total);
  const std::string bar = std::string(filled, '#') + std::string(kBarWidth - filled, '.');
  std::fprintf(stderr, "\r%s [%s] %3u %%", title_.c_str(), bar.c_str(),
               static_cast<unsigned>(std::min<std::uint64_t>(100, done_ * 100 / total)));
}

}  // namespace ormasim
