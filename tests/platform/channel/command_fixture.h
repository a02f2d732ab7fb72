// A command against a server that a test's script plays: how it is configured, sent and followed.
//
//   const Outcome outcome = converse([](Server& server) { server.say(end(0)); });
//   expectOutcome(outcome, {}, 0);
#pragma once

#include <gtest/gtest.h>
#include <json/value.h>
#include <json/writer.h>

#include <fstream>
#include <functional>
#include <memory>

#include "frames.h"
#include "orma/asn1/asn_octs.h"
#include "orma/bundle/configuration.h"
#include "orma/channel/asn_phy_cmd.h"
#include "orma/log/log_sink.h"
#include "scripted_peer.h"
#include "temp_directory.h"

namespace orma::channel {

constexpr int kLongMs = 60000;
constexpr int kShortMs = 80;

// An OCTET STRING of less than 128 bytes.
inline std::string octets(const std::string& text) {
  return std::string("\x04") + static_cast<char>(text.size()) + text;
}

inline std::string textOf(const AsnOcts& value) {
  return std::string(value.bytes().data(), value.bytes().size());
}

// The server's end of one command: frames out of its scripts, addressed to the command that came.
class Server {
 public:
  explicit Server(PeerConnection& connection) : connection_(connection) { command_ = readFrame(); }

  const Frame& command() const { return command_; }
  PeerConnection& connection() { return connection_; }

  Frame readFrame() {
    const std::string header = connection_.read(kFrameHeaderBytes);
    if (header.size() < kFrameHeaderBytes) return Frame();
    std::size_t length = 0;
    for (int i = 32; i < 36; ++i) length = length << 8 | static_cast<unsigned char>(header[i]);
    return frameOf(header + connection_.read(length));
  }

  // The bytes of a frame of this exchange.
  std::string own(Frame frame) const {
    frame.process = command_.process;
    frame.command = command_.command;
    frame.id = command_.id;
    return bytesOf(frame);
  }
  void say(const Frame& frame) { connection_.send(own(frame)); }

 private:
  PeerConnection& connection_;
  Frame command_;
};

inline ScriptedPeer::Script serving(std::function<void(Server&)> script) {
  return [script = std::move(script)](PeerConnection& connection) {
    Server server(connection);
    script(server);
  };
}

// What a caller sees of an exchange that it follows to its end.
struct Outcome {
  std::vector<std::string> texts;
  unsigned long error = 0;
};

class CommandTest : public testing::Test {
 protected:
  CommandTest() { configure(0); }
  ~CommandTest() override {
    Configuration::install(nullptr);
    configureLog(*Configuration::current());
  }

  void configure(int port, int connectMs = kLongMs, int receiveMs = kLongMs,
                 const std::string& host = "127.0.0.1") {
    settings_["host"] = host;
    settings_["port"] = port;
    settings_["connectTimeoutMs"] = connectMs;
    settings_["receiveTimeoutMs"] = receiveMs;
    install();
  }

  void install() {
    Json::Value root;
    root["log"]["stderr"] = false;
    root["log"]["file"] = directory_ / "trace.log";
    root["faultServer"] = settings_;
    std::vector<ConfigProblem> problems;
    const auto configuration = Configuration::parse(
        Json::writeString(Json::StreamWriterBuilder(), root), "test.json", "/", problems);
    for (const auto& problem : problems) ADD_FAILURE() << problem.where << ": " << problem.what;
    configureLog(*configuration);
    Configuration::install(configuration);
  }

  std::string traces() const {
    flushLog();
    std::ifstream log(directory_ / "trace.log");
    return std::string(std::istreambuf_iterator<char>(log), {});
  }

  static CProcID process(std::uint32_t number) {
    CProcID process;
    process.process = number;
    return process;
  }

  static std::unique_ptr<CAsnPhyCmd> makeCommand(int seconds = 300, unsigned char flow = 1) {
    const CProcID faultServer = process(56);
    return std::make_unique<CAsnPhyCmd>(2158, AsnOcts("ask"), faultServer, seconds, flow, 0);
  }

  static Outcome follow(CAsnPhyCmd& command) {
    Outcome outcome;
    AsnOcts reply;
    while (command.Receive(outcome.error, reply)) {
      outcome.texts.push_back(textOf(reply));
      command.NeedNextRsp();
    }
    return outcome;
  }

  Outcome converse(std::function<void(Server&)> script, int receiveMs = kLongMs) {
    const ScriptedPeer peer(serving(std::move(script)));
    configure(peer.port(), kLongMs, receiveMs);
    const auto command = makeCommand();
    command->Send(nullptr);
    return follow(*command);
  }

  TempDirectory directory_;
  Json::Value settings_;
};

inline void expectOutcome(const Outcome& outcome, const std::vector<std::string>& texts,
                          unsigned long error) {
  EXPECT_EQ(outcome.texts, texts);
  EXPECT_EQ(outcome.error, error);
}

}  // namespace orma::channel
