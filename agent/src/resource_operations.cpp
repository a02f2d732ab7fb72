#include <string>
#include <vector>

#include "emfresinterface.h"
#include "error_texts.h"
#include "operations.h"

namespace ormaagent {

namespace {

struct DeviceName {
  std::uint32_t id;
  std::string fdn;
};

constexpr Column<DeviceName> kDeviceName[] = {
    {"id", [](const DeviceName& row) -> Value { return std::int64_t{row.id}; }},
    {"fdn", [](const DeviceName& row) -> Value { return row.fdn; }},
};

struct ErrorText {
  unsigned long code;
  std::string text;
};

constexpr Column<ErrorText> kErrorText[] = {
    {"code", [](const ErrorText& row) -> Value { return std::uint64_t{row.code}; }},
    {"text", [](const ErrorText& row) -> Value { return row.text; }},
};

}  // namespace

Answer resFdn(const Arguments& arguments) {
  DeviceName name{arguments.number<std::uint32_t>(0), ""};
  const std::int32_t length = EMFResMgrI::AdpDevID2FDN(name.id, name.fdn);
  return answerOf(length, kDeviceName,
                  length < 0 ? std::vector<DeviceName>{} : std::vector<DeviceName>{name});
}

// The operation has no result of its own; a code without a text has the text "unknown".
Answer errorText(const Arguments& arguments) {
  const unsigned long code = arguments.errorCode(0);
  return answerOf(0, kErrorText, std::vector<ErrorText>{{code, findErrorText(code)}});
}

}  // namespace ormaagent
