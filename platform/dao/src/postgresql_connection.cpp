#include <soci/postgresql/soci-postgresql.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <charconv>
#include <optional>
#include <system_error>

#include "connection.h"
#include "orma/bundle/secret.h"
#include "socket_deadline.h"

namespace dao {
namespace {

// libpq's connection options: what the configuration says, and what it leaves open.
class ConnectOptions {
 public:
  explicit ConnectOptions(const ConnectionSettings& settings)
      : passwordFile_(settings.passwordFile),
        options_(PQconninfoParse(settings.target.c_str(), nullptr)) {
    // libpq's own message would quote the text, and with it perhaps a password.
    if (options_ == nullptr) {
      throw std::runtime_error("the connection string is not one that libpq can read");
    }
  }
  ~ConnectOptions() { PQconninfoFree(options_); }
  ConnectOptions(const ConnectOptions&) = delete;
  ConnectOptions& operator=(const ConnectOptions&) = delete;

  // As an address, each value percent-encoded: SOCI takes connection strings apart at blanks.
  std::string address() const {
    std::string result = "postgresql://";
    char separator = '?';
    for (const PQconninfoOption* option = options_; option->keyword != nullptr; ++option) {
      const char* value = option->val != nullptr ? option->val : defaultOf(option->keyword);
      if (value == nullptr) continue;
      result += separator + std::string(option->keyword) + '=' + percentEncoded(value);
      separator = '&';
    }
    return result;
  }

 private:
  const char* defaultOf(std::string_view keyword) const {
    if (keyword == "passfile" && !passwordFile_.empty()) return passwordFile_.c_str();
    if (keyword == "connect_timeout") return "10";
    if (keyword == "client_encoding") return "UTF8";
    if (keyword == "application_name") return "orma_dao";
    // A server whose host is gone is found out within a minute.
    if (keyword == "keepalives_idle") return "30";
    if (keyword == "keepalives_interval") return "10";
    if (keyword == "keepalives_count") return "3";
    if (keyword == "tcp_user_timeout") return "60000";
    return nullptr;
  }

  static std::string percentEncoded(std::string_view text) {
    constexpr char kDigits[] = "0123456789ABCDEF";
    std::string result;
    for (const char byte : text) {
      const auto code = static_cast<unsigned char>(byte);
      result += {'%', kDigits[code >> 4], kDigits[code & 0xF]};
    }
    return result;
  }

  const std::string passwordFile_;
  PQconninfoOption* options_;
};

// Throws std::runtime_error for a password file that libpq would pass over, for which it has a word
// on standard error at most.
const ConnectionSettings& withUsablePasswordFile(const ConnectionSettings& settings) {
  const std::string& file = settings.passwordFile;
  if (file.empty()) return settings;
  const std::string fault = orma::secretFileFault(file, orma::SecretReaders::kOwner);
  if (!fault.empty()) throw std::runtime_error("the password file " + file + " " + fault);
  if (::access(file.c_str(), R_OK) == 0) return settings;
  throw std::runtime_error("the password file " + file +
                           " cannot be read: " + std::generic_category().message(errno));
}

// SQLSTATE of statements that cannot run as they were prepared: a table has other columns now, or
// the server has dropped the statement.
constexpr std::string_view kPlanOutdated = "0A000";
constexpr std::string_view kNoSuchStatement = "26000";

enum class Form { Integer, Real, Boolean, Bytes };

struct TypeForm {
  Oid type;  // the numbers of the server's catalogue, which never change
  Form form;
};

// Every other type is its text.
constexpr std::array<TypeForm, 8> kTypeForms = {{
    {16, Form::Boolean},
    {17, Form::Bytes},
    {20, Form::Integer},  // int8
    {21, Form::Integer},  // int2
    {23, Form::Integer},  // int4
    {26, Form::Integer},  // oid
    {700, Form::Real},    // float4
    {701, Form::Real},    // float8
}};

template <typename Number>
refl::CValue numberValue(std::string_view text) {
  Number number{};
  const auto [stop, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  if (error != std::errc() || stop != text.data() + text.size()) {
    return refl::CValue(std::string(text));
  }
  return refl::CValue(number);
}

refl::CValue bytesValue(const char* text) {
  std::size_t length = 0;
  const std::unique_ptr<unsigned char, void (*)(void*)> bytes(
      PQunescapeBytea(reinterpret_cast<const unsigned char*>(text), &length), PQfreemem);
  if (!bytes) throw std::bad_alloc();
  return refl::CValue(refl::Bytes(bytes.get(), bytes.get() + length));
}

class PostgresqlRowReader : public RowReader {
 public:
  explicit PostgresqlRowReader(const soci::postgresql_statement_backend& statement)
      : statement_(statement) {}

  std::vector<std::string> columnNames() const override {
    std::vector<std::string> names;
    const PGresult* result = statement_.result_;
    names.reserve(static_cast<std::size_t>(PQnfields(result)));
    for (int i = 0; i < PQnfields(result); ++i) names.emplace_back(PQfname(result, i));
    return names;
  }

  refl::CValue value(std::size_t index) const override {
    const PGresult* result = statement_.result_;
    const int row = statement_.currentRow_;
    const int column = static_cast<int>(index);
    if (PQgetisnull(result, row, column) != 0) return {};
    const char* text = PQgetvalue(result, row, column);
    const Oid type = PQftype(result, column);
    const auto known = std::find_if(kTypeForms.begin(), kTypeForms.end(),
                                    [type](const TypeForm& entry) { return entry.type == type; });
    if (known == kTypeForms.end()) return refl::CValue(std::string(text));
    switch (known->form) {
      case Form::Integer:
        return numberValue<std::int64_t>(text);
      case Form::Real:
        return numberValue<double>(text);
      case Form::Boolean:
        return refl::CValue(std::int64_t{text[0] == 't'});
      case Form::Bytes:
        return bytesValue(text);
    }
    return {};
  }

 private:
  const soci::postgresql_statement_backend& statement_;
};

class PostgresqlConnection : public Connection {
 public:
  explicit PostgresqlConnection(const ConnectionSettings& settings)
      : Connection(settings, soci::postgresql,
                   ConnectOptions(withUsablePasswordFile(settings)).address()) {
    const DatabaseWait wait(*this);
    // To this server 0 means to wait for ever.
    const auto lockWait = std::max<std::chrono::milliseconds::rep>(1, settings.lockWait.count());
    session() << "SET lock_timeout = " << lockWait;
    session() << "SET default_transaction_read_only = on";
    session() << "SET statement_timeout = " << settings.statementLimit.count();
  }

  // The server forgets them with the connection: no need to tell it about each.
  ~PostgresqlConnection() override {
    for (Prepared& kept : prepared()) backendOf(*kept.statement).statementName_.clear();
  }

  bool isStale() const override { return false; }

  // Asks the server.
  bool isLost() override {
    const DatabaseWait wait(*this);
    return !session().is_connected();
  }

  void beginWait(std::chrono::steady_clock::time_point end) override {
    const auto* backend = static_cast<soci::postgresql_session_backend*>(session().get_backend());
    const auto left =
        std::chrono::ceil<std::chrono::milliseconds>(end - std::chrono::steady_clock::now());
    deadline_.emplace(PQsocket(backend->conn_), left + kGrace);
  }
  void endWait() noexcept override { deadline_.reset(); }

  bool isOutdated(const std::exception& failure) const override {
    const auto* ofServer = dynamic_cast<const soci::postgresql_soci_error*>(&failure);
    if (ofServer == nullptr) return false;
    const std::string state = ofServer->sqlstate();
    return state == kPlanOutdated || state == kNoSuchStatement;
  }

  // SOCI's blobs are the server's large objects, which are not what a column of bytes holds.
  std::unique_ptr<soci::blob> makeBlob(const refl::Bytes&) override { return nullptr; }

  std::unique_ptr<RowReader> makeRowReader(
      soci::details::statement_backend& statement) const override {
    return std::make_unique<PostgresqlRowReader>(backendOf(statement));
  }

 private:
  // The server itself ends a statement in time, unless it is out of order.
  static constexpr std::chrono::milliseconds kGrace{1000};

  static soci::postgresql_statement_backend& backendOf(
      soci::details::statement_backend& statement) {
    return static_cast<soci::postgresql_statement_backend&>(statement);
  }

  void makeIdle(soci::details::statement_backend& statement) const override {
    auto& backend = backendOf(statement);
    backend.result_.reset();
    backend.useByPosBuffers_.clear();
    backend.hasUseElements_ = false;
  }

  std::optional<SocketDeadline> deadline_;  // while a wait lasts
};

}  // namespace

std::shared_ptr<Connection> openPostgresql(const ConnectionSettings& settings) {
  return std::make_shared<PostgresqlConnection>(settings);
}

}  // namespace dao
