// Messages against pyasn1, with a schema made from the module itself: ours read by it, and what it
// writes read by us.
#include <gtest/gtest.h>

#include <cstdio>
#include <fstream>
#include <memory>
#include <sstream>
#include <tuple>
#include <utility>
#include <vector>

#include "message_walk.h"
#include "temp_directory.h"

namespace emf::test {
namespace {

struct Mode {
  AsnTagging tagging;
  const char* module;
};

class Pyasn1 : public ::testing::TestWithParam<Mode> {
 protected:
  // Adds a message to those that the peer is asked about.
  template <typename Message>
  void add(const Message& message) {
    const std::string bytes = toHex(encoded(message, GetParam().tagging));
    requests_ += std::string(message.typeName()) + ' ' + bytes + '\n';
    expected_.push_back(element(message.typeName(), xml(message)));
    readers_.push_back([](const std::string& hex, AsnTagging tagging) {
      Message read;
      decode(read, fromHex(hex), tagging);
      return xml(read);
    });
    values_.push_back(xml(message));
  }
  template <typename... Messages>
  void addRandom(Randomness& random) {
    std::tuple<Messages...> messages;
    std::apply([&](auto&... message) { ((fill(message, random), add(message)), ...); }, messages);
  }

  // The peer's answers.
  std::vector<std::string> answers() const {
    const emf::doubles::TempDirectory directory;
    const auto input = directory.write("requests", requests_);
    const std::string command = "'" EMF_PYTHON "' -B '" EMF_PEER "' '" +
                                std::string(GetParam().module) + "' < '" + input.string() + "'";
    const std::unique_ptr<std::FILE, int (*)(std::FILE*)> pipe(::popen(command.c_str(), "r"),
                                                               ::pclose);
    std::string output;
    char chunk[4096];
    while (pipe != nullptr) {
      const std::size_t size = std::fread(chunk, 1, sizeof chunk, pipe.get());
      if (size == 0) break;
      output.append(chunk, size);
    }
    std::vector<std::string> lines;
    std::istringstream stream(output);
    for (std::string line; std::getline(stream, line);) lines.push_back(line);
    return lines;
  }

  void expectAgreement() const {
    const std::vector<std::string> lines = answers();
    ASSERT_EQ(lines.size(), expected_.size());
    for (std::size_t i = 0; i < lines.size(); ++i) {
      const std::size_t blank = lines[i].find_last_of(' ');
      ASSERT_EQ(lines[i].substr(0, blank), expected_[i]);
      // Not byte for byte: some negative numbers it writes with a byte too many.
      const std::string theirs = lines[i].substr(blank + 1);
      ASSERT_EQ(readers_[i](theirs, GetParam().tagging), values_[i]);
    }
  }

 private:
  std::string requests_;
  std::vector<std::string> expected_;
  std::vector<std::string> values_;
  std::vector<std::string (*)(const std::string&, AsnTagging)> readers_;
};

TEST_P(Pyasn1, AgreesOnRandomValues) {
  Randomness random(51);
  for (int i = 0; i < 60; ++i) {
    addRandom<AsnRelation, AsnAlmQryExtendCondition, AsnAddiInfo, AsnoFMSDateTimeStrc,
              AsnAlmKeyStrc, AsnDistinguishedResource>(random);
  }
  for (int i = 0; i < 15; ++i) {
    addRandom<AsnOtherToSvrQryAlmEventReq, AsnSvrToOtherQryResp, AsnSvrToOtherQryRespResultStrc>(
        random);
  }
  expectAgreement();
}

TEST_P(Pyasn1, AgreesOnEveryCombinationOfOptionalFields) {
  for (unsigned present = 0; present < 64; ++present) {
    AsnDistinguishedResource resource;
    setPresent(resource, present);
    add(resource);
    AsnSvrToOtherQryRespResultStrc item;
    setPresent(item, present);
    add(item);
  }
  expectAgreement();
}

INSTANTIATE_TEST_SUITE_P(, Pyasn1,
                         ::testing::Values(Mode{AsnTagging::Implicit, EMF_IMPLICIT_MODULE},
                                           Mode{AsnTagging::Explicit, EMF_EXPLICIT_MODULE}),
                         [](const auto& mode) {
                           return mode.param.tagging == AsnTagging::Implicit ? "Implicit"
                                                                             : "Explicit";
                         });

}  // namespace
}  // namespace emf::test
