// Frames as the tests put them together, stated apart from the channel's own code, and the examples
// of the document.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

constexpr std::uint8_t kCommandKind = 1;
constexpr std::uint8_t kReplyKind = 2;
constexpr std::uint8_t kNextKind = 3;
constexpr std::uint8_t kEndKind = 4;
constexpr std::size_t kFrameHeaderBytes = 36;

struct Frame {
  std::uint8_t kind = kReplyKind;
  std::uint32_t number = 1;
  std::string body;
  std::uint32_t error = 0;
  std::uint32_t process = 56;
  std::uint32_t command = 2158;
  std::uint32_t id = 7;
  std::uint16_t flags = 0;
  std::uint16_t priority = 0;
  std::uint8_t version = 1;
  std::uint16_t reserved = 0;
  std::string magic = "ORMC";
};

Frame reply(std::uint32_t number, const std::string& body);
Frame end(std::uint32_t replies, std::uint32_t error = 0);

std::string bytesOf(const Frame& frame);
// The same with a length that is not the body's.
std::string bytesOf(const Frame& frame, std::uint32_t length);
// A frame taken apart; the test fails when the bytes are not exactly one.
Frame frameOf(const std::string& bytes);

// The hexadecimal examples of docs/formats/channel.md, in their order.
std::vector<std::string> documentedFrames();
