#include "guarded_file_sink.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <stdexcept>
#include <system_error>
#include <utility>

namespace orma {

namespace {

// Nothing when the file can be appended to; its directory is made if need be. spdlog's own way of
// finding out sleeps between several tries. Opening a pipe would wait for its reader.
std::string openFault(const std::string& file) {
  std::error_code failure;
  const auto directory = std::filesystem::path(file).parent_path();
  if (!directory.empty()) std::filesystem::create_directories(directory, failure);
  if (std::filesystem::is_fifo(file, failure)) return "Is a pipe";
  const int descriptor = ::open(file.c_str(), O_WRONLY | O_APPEND | O_CREAT | O_CLOEXEC, 0644);
  if (descriptor < 0) return std::generic_category().message(errno);
  ::close(descriptor);
  return "";
}

std::unique_ptr<spdlog::sinks::rotating_file_sink_st> openRotating(const std::string& file,
                                                                   std::size_t maxFileBytes,
                                                                   std::size_t maxFiles) {
  auto sink = std::make_unique<spdlog::sinks::rotating_file_sink_st>(file, maxFileBytes, maxFiles);
  sink->set_pattern("%v");
  return sink;
}

}  // namespace

GuardedFileSink::GuardedFileSink(std::string file, std::size_t maxFileBytes, std::size_t maxFiles,
                                 LineForm form)
    : fileName_(std::move(file)), maxFileBytes_(maxFileBytes), maxFiles_(maxFiles), form_(form) {
  const std::string fault = openFault(fileName_);
  if (!fault.empty()) {
    throw std::runtime_error("cannot open the log file \"" + fileName_ + "\": " + fault);
  }
  try {
    file_ = openRotating(fileName_, maxFileBytes_, maxFiles_);
  } catch (const spdlog::spdlog_ex& failure) {
    throw std::runtime_error(failure.what());
  }
}

void GuardedFileSink::sink_it_(const spdlog::details::log_msg& message) {
  try {
    if (!file_ && !openAgain()) {
      ++lost_;
      return;
    }
    writeLine(message);
  } catch (const std::exception& failure) {
    fail(failure.what());
  }
}

void GuardedFileSink::flush_() {
  try {
    if (file_) file_->flush();
  } catch (const std::exception& failure) {
    fail(failure.what());
  }
}

std::string GuardedFileSink::reopen() {
  const std::lock_guard<std::mutex> lock(mutex_);
  std::string fault = openFault(fileName_);
  if (fault.empty()) {
    try {
      file_ = openRotating(fileName_, maxFileBytes_, maxFiles_);
    } catch (const std::exception& failure) {
      fault = failure.what();
    }
  }
  if (fault.empty()) return fault;
  return "cannot open the log file \"" + fileName_ + "\" anew: " + fault;
}

bool GuardedFileSink::openAgain() {
  if (!openFault(fileName_).empty()) return false;
  file_ = openRotating(fileName_, maxFileBytes_, maxFiles_);
  return true;
}

// Each line goes out at once: the last ones before a crash are the ones that are wanted, and a
// failure shows at the line that it hits.
void GuardedFileSink::writeLine(const spdlog::details::log_msg& message) {
  if (lost_ > 0) writeLossNote();
  file_->log(message);
  file_->flush();
}

void GuardedFileSink::writeLossNote() {
  const std::string text =
      "messages lost while this file could not be written: " + std::to_string(lost_);
  LogMessage note;
  note.level = 0;
  note.logger = "log";
  note.text = text;
  note.thread = ::gettid();
  const std::string line = form_(note);
  file_->log(spdlog::details::log_msg("", spdlog::level::err, line));
  file_->flush();
  lost_ = 0;
}

// spdlog's file is not to be used again after a failure: it may have no stream any more.
void GuardedFileSink::fail(const char* reason) {
  file_.reset();
  if (lost_++ > 0) return;
  std::fprintf(stderr,
               "cannot write the log file \"%s\": %s; its messages are dropped until it "
               "can be written again\n",
               fileName_.c_str(), reason);
}

}  // namespace orma
