#include "frames.h"

#include <gtest/gtest.h>

#include <fstream>
#include <sstream>

namespace {

void append(std::string& bytes, std::uint32_t value, int size) {
  while (size-- > 0) bytes += static_cast<char>(value >> (8 * size) & 0xFF);
}

std::uint32_t number(const std::string& bytes, std::size_t at, std::size_t size) {
  std::uint32_t value = 0;
  for (std::size_t i = 0; i < size; ++i) {
    value = value << 8 | static_cast<unsigned char>(bytes[at + i]);
  }
  return value;
}

// The bytes of a line of hexadecimal pairs, up to a "#".
std::string bytesOfLine(const std::string& line) {
  std::istringstream pairs(line.substr(0, line.find('#')));
  std::string bytes;
  for (std::string pair; pairs >> pair;) {
    bytes += static_cast<char>(std::stoi(pair, nullptr, 16));
  }
  return bytes;
}

}  // namespace

Frame reply(std::uint32_t number, const std::string& body) {
  Frame frame;
  frame.number = number;
  frame.body = body;
  return frame;
}

Frame end(std::uint32_t replies, std::uint32_t error) {
  Frame frame;
  frame.kind = kEndKind;
  frame.number = replies;
  frame.error = error;
  return frame;
}

std::string bytesOf(const Frame& frame) {
  return bytesOf(frame, static_cast<std::uint32_t>(frame.body.size()));
}

std::string bytesOf(const Frame& frame, std::uint32_t length) {
  std::string bytes = frame.magic;
  append(bytes, frame.version, 1);
  append(bytes, frame.kind, 1);
  append(bytes, frame.flags, 2);
  append(bytes, frame.process, 4);
  append(bytes, frame.command, 4);
  append(bytes, frame.id, 4);
  append(bytes, frame.number, 4);
  append(bytes, frame.error, 4);
  append(bytes, frame.priority, 2);
  append(bytes, frame.reserved, 2);
  append(bytes, length, 4);
  return bytes + frame.body;
}

Frame frameOf(const std::string& bytes) {
  Frame frame;
  if (bytes.size() < kFrameHeaderBytes ||
      bytes.size() != kFrameHeaderBytes + number(bytes, 32, 4)) {
    ADD_FAILURE() << bytes.size() << " bytes are not one frame";
    return frame;
  }
  frame.magic = bytes.substr(0, 4);
  frame.version = static_cast<std::uint8_t>(number(bytes, 4, 1));
  frame.kind = static_cast<std::uint8_t>(number(bytes, 5, 1));
  frame.flags = static_cast<std::uint16_t>(number(bytes, 6, 2));
  frame.process = number(bytes, 8, 4);
  frame.command = number(bytes, 12, 4);
  frame.id = number(bytes, 16, 4);
  frame.number = number(bytes, 20, 4);
  frame.error = number(bytes, 24, 4);
  frame.priority = static_cast<std::uint16_t>(number(bytes, 28, 2));
  frame.reserved = static_cast<std::uint16_t>(number(bytes, 30, 2));
  frame.body = bytes.substr(kFrameHeaderBytes);
  return frame;
}

std::vector<std::string> documentedFrames() {
  std::ifstream page(CHANNEL_PAGE);
  std::vector<std::string> examples;
  bool inside = false;
  for (std::string line; std::getline(page, line);) {
    if (line == "```hex") {
      inside = true;
      examples.emplace_back();
    } else if (line == "```") {
      inside = false;
    } else if (inside) {
      examples.back() += bytesOfLine(line);
    }
  }
  return examples;
}
