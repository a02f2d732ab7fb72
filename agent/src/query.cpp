#include "query.h"

#include <cxxabi.h>

#include <cstdio>
#include <cstdlib>
#include <memory>
#include <string>
#include <typeinfo>

#include "error_texts.h"
#include "exit_status.h"
#include "host_failure.h"
#include "message.h"
#include "orma/asn1/csm_exception.h"
#include "orma/bundle/configuration.h"
#include "plugin_library.h"
#include "processexception.h"
#include "waiting_for.h"

namespace ormaagent {

namespace {

std::string hexadecimal(std::uint32_t code) {
  char text[16];
  std::snprintf(text, sizeof text, "0x%08X", code);
  return text;
}

// Error numbers are known by their hexadecimal form, results such as -1 by their decimal one.
std::string numberText(std::int64_t result) {
  const bool small = result > -1000 && result < 1000;
  return std::to_string(result) +
         (small ? "" : " (" + hexadecimal(static_cast<std::uint32_t>(result)) + ")");
}

std::string errorTextOf(std::int64_t code) {
  try {
    return findErrorText(static_cast<unsigned long>(code));
  } catch (const ServiceMissing& missing) {
    return missing.what();
  }
}

std::string typeNameOf(const std::exception& thrown) {
  int status = 0;
  const std::unique_ptr<char, void (*)(void*)> name(
      abi::__cxa_demangle(typeid(thrown).name(), nullptr, nullptr, &status), std::free);
  return name ? name.get() : typeid(thrown).name();
}

// The command with its arguments, for messages.
std::string subjectOf(const Invocation& invocation) {
  std::string subject = invocation.command->path;
  for (std::size_t i = 0; i < invocation.arguments.count(); ++i) {
    subject += " " + invocation.arguments.text(i);
  }
  return subject;
}

void tellFailure(const Invocation& invocation, std::int64_t result) {
  const char* meaning = invocation.command->failureText;
  tell(subjectOf(invocation) + " failed: " +
       (meaning != nullptr ? meaning : "error " + numberText(result) + ": " + errorTextOf(result)));
}

std::string recordsText(std::size_t count) {
  return std::to_string(count) + (count == 1 ? " record" : " records");
}

// The table's last line, which names what the table does not show.
void tellFooter(const Answer& answer, bool success) {
  std::string text = recordsText(answer.records.size() - answer.closingRecords);
  if (answer.leftOut > 0) text += " (" + std::to_string(answer.leftOut) + " more left out)";
  text += ", result " + numberText(answer.result) + (success ? ": success" : ": failure");
  if (answer.closingRecords > 0) text += "; the list's closing record is not shown";
  tellLine(text);
}

bool isEmpty(const Answer& answer) {
  return answer.records.size() == answer.closingRecords && answer.leftOut == 0;
}

int report(const Invocation& invocation, const Answer& answer, AnswerOutput& output) {
  const Command& command = *invocation.command;
  const bool success = succeeded(command.rule, answer.result);
  const bool written = writeAnswer(answer, invocation.format, output);
  if (invocation.format == Format::kTable) tellFooter(answer, success);
  if (!success) tellFailure(invocation, answer.result);
  if (success && isEmpty(answer) && command.emptyHint != nullptr) tell(command.emptyHint);
  return success && written ? kExitSucceeded : kExitFailed;
}

int callOperation(const Invocation& invocation, AnswerOutput& output) {
  const std::string subject = subjectOf(invocation) + ": ";
  const WaitingFor waiting("the operation of \"" + std::string(invocation.command->path) + "\"");
  try {
    return report(invocation, invocation.command->operation(invocation.arguments), output);
  } catch (const ServiceMissing& missing) {
    tell(subject + missing.what());
    return kExitUsage;
  } catch (const HostFailure& failure) {
    tell(subject + failure.what());
    return failure.exitStatus();
  } catch (ProcessException& thrown) {
    const auto code = static_cast<std::uint32_t>(thrown.errCode);
    tell(subject + "the operation threw " + typeNameOf(thrown) + ", code " +
         std::to_string(thrown.errCode) + " (" + hexadecimal(code) + "): " + errorTextOf(code) +
         "; " + thrown.detail.str());
  } catch (const std::exception& thrown) {
    tell(subject + "the operation threw " + typeNameOf(thrown) + ": " + thrown.what());
  } catch (CSM_Exception* thrown) {
    const std::unique_ptr<CSM_Exception> failure(thrown);
    tell(subject + "what the fault server sent is no reply: " + failure->message() + " (code " +
         std::to_string(failure->code()) +
         "); check that faultServer.tagging is that of the server");
  } catch (...) {
    tell(subject + "the operation threw something that is no std::exception");
  }
  tell("'--log-level 3' shows what the operation did before");
  return kExitException;
}

}  // namespace

bool writeAnswer(const Answer& answer, Format format, AnswerOutput& output) {
  const auto characterSet =
      static_cast<CharacterSet>(orma::Configuration::current()->integer("text.characterSetSwitch"));
  const WaitingFor waiting("the reader of standard output");
  if (output.write(formatAnswer(answer, format, characterSet))) return true;
  tell("cannot write the answer to standard output: " + output.failure());
  return false;
}

int runQuery(const Invocation& invocation, ServiceHost& host, AnswerOutput& output) {
  if (!host.start()) return kExitUsage;
  const std::string fault = pluginFault(host);
  if (!fault.empty()) {
    tell(fault);
    return kExitUsage;
  }
  const int status = callOperation(invocation, output);
  host.stop();
  return status;
}

}  // namespace ormaagent
