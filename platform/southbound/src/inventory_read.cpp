#include "inventory_read.h"

#include <algorithm>
#include <stdexcept>

#include "orma/dao/session_pool.h"
#include "orma/dao/sql_session.h"
#include "orma/log/trace.h"
#include "orma/metrics/outside_services.h"
#include "processexception.h"

namespace orma::southbound {
namespace {

// The code of every failure: the inventory could not be read.
constexpr int kInventoryReadFailed = 0x411800BA;
constexpr int kErrorLevel = 0;
constexpr char kSourceName[] = "southbound";

dao::SessionPool& sessions() {
  // Never destroyed: a thread may still be reading while the process ends.
  static auto* const pool = new dao::SessionPool;
  return *pool;
}

metrics::Outcome outcomeOf(const dao::CExecStatus& status) {
  if (status.IsOk()) return metrics::Outcome::kAnswered;
  return status.GetErrCode() == dao::kExecStatementFailed ? metrics::Outcome::kRefused
                                                          : metrics::Outcome::kUnreached;
}

[[noreturn]] void fail(const char* operation, int line, const std::string& reason) {
  NS_CORBA::GetTss()->file = kSourceName;
  NS_CORBA::GetTss()->function = operation;
  NS_CORBA::GetTss()->line = line;
  NS_CORBA::TaDebugWithPara(kErrorLevel, "[NS_DOMAIN_SOUTHAPISET::%s] %s", operation,
                            reason.c_str());
  ProcessException failure;
  failure.errCode = kInventoryReadFailed;
  failure.line = line;
  failure.file << kSourceName;
  failure.function << operation;
  failure.detail << reason;
  throw failure;
}

// One key behind the others of the text, its numbers as parameters with names of their own.
void appendNamed(const std::string& key, std::size_t& parameters, std::string& text) {
  for (const char character : key) {
    if (character == '?') {
      text.append(":n").append(std::to_string(parameters++));
    } else {
      text += character;
    }
  }
}

}  // namespace

void readRows(const char* operation, const std::string& statement,
              const std::vector<refl::CValue>& parameters, const RowUse& use) {
  metrics::Exchange exchange(metrics::OutsideService::kSouthbound);
  std::string reason;
  try {
    dao::SessionPool::Lease lease(sessions());
    dao::CCursorTable rows;
    rows.Open(lease.session(), statement, parameters);
    while (rows.FetchNextRow()) use(rows);
    exchange.arrived(outcomeOf(rows.GetStatus()));
    if (rows.GetStatus().IsOk()) return;
    reason = rows.GetStatus().GetMessage();
  } catch (const std::range_error& value) {
    exchange.arrived(metrics::Outcome::kRefused);
    reason = value.what();
  }
  fail(operation, __LINE__, reason);
}

std::int32_t number(const dao::CCursorTable& row, unsigned long column) {
  return static_cast<std::int32_t>(row[column].asInteger(INT32_MIN, INT32_MAX));
}

KeyedStatement::KeyedStatement(const char* operation, const std::string& start,
                               const std::string& firstKey, const std::string& furtherKey)
    : operation_(operation),
      numbersOfKey_(static_cast<std::size_t>(std::count(firstKey.begin(), firstKey.end(), '?'))) {
  for (std::size_t text = 0; text < kKeysOfText.size(); ++text) {
    std::size_t parameters = 0;
    named_[text] = unnamed_[text] = start;
    for (std::size_t number = 0; number < kKeysOfText[text]; ++number) {
      const std::string& key = number == 0 ? firstKey : furtherKey;
      const char* const separator = number == 0 ? "" : ",";
      appendNamed(separator + key, parameters, named_[text]);
      unnamed_[text] += separator + key;
    }
    named_[text] += ')';
    unnamed_[text] += ')';
  }
}

void KeyedStatement::readRows(const std::vector<std::int64_t>& keys, const RowUse& use) const {
  const bool isSqlite = dao::CSqlSession().GetDBServerType() == dao::kDbServerSqlite;
  const Texts& texts = isSqlite ? unnamed_ : named_;
  const std::size_t mostNumbers = kKeysOfText.back() * numbersOfKey_;
  for (std::size_t start = 0; start < keys.size(); start += mostNumbers) {
    const std::size_t numbers = std::min(mostNumbers, keys.size() - start);
    std::size_t text = 0;
    while (kKeysOfText[text] * numbersOfKey_ < numbers) ++text;
    std::vector<refl::CValue> parameters;
    parameters.reserve(kKeysOfText[text] * numbersOfKey_);
    for (std::size_t i = 0; i < numbers; ++i) parameters.emplace_back(keys[start + i]);
    while (parameters.size() < kKeysOfText[text] * numbersOfKey_) {
      parameters.push_back(parameters[parameters.size() - numbersOfKey_]);
    }
    southbound::readRows(operation_, texts[text], parameters, use);
  }
}

}  // namespace orma::southbound
