#include "statement.h"

#include <stdexcept>

namespace dao {
namespace {

std::string boundText(const refl::CValue& value) {
  std::string text = value.asText();
  // PostgreSQL would take the text up to the NUL alone, and find another row.
  if (text.find('\0') != std::string::npos) {
    throw std::runtime_error("a text parameter holds a NUL character");
  }
  return text;
}

// As PostgreSQL writes and reads bytes.
std::string hexadecimal(const refl::Bytes& bytes) {
  constexpr char kDigits[] = "0123456789abcdef";
  std::string text = "\\x";
  for (const unsigned char byte : bytes) text += {kDigits[byte >> 4], kDigits[byte & 0xF]};
  return text;
}

}  // namespace

using soci::details::statement_backend;

Statement::Statement(std::shared_ptr<Connection> connection, const std::string& text,
                     const std::vector<refl::CValue>& parameters)
    : connection_(std::move(connection)), text_(text) {
  if (StatementHandle kept = connection_->takePrepared(text)) {
    try {
      run(std::move(kept), parameters);
      return;
    } catch (const std::exception& failure) {
      if (!connection_->isOutdated(failure)) throw;
      parameters_.clear();
    }
  }
  run(connection_->prepare(text), parameters);
}

Statement::~Statement() {
  reader_.reset();
  parameters_.clear();
  if (!failed_) connection_->keepPrepared(std::move(text_), std::move(handle_));
}

void Statement::run(StatementHandle handle, const std::vector<refl::CValue>& parameters) {
  handle_ = std::move(handle);
  for (std::size_t i = 0; i < parameters.size(); ++i) {
    bind(parameters[i], static_cast<int>(i) + 1);
  }
  const DatabaseWait wait(*connection_);
  const auto result = wait([this] { return handle_->execute(1); });
  if (result == statement_backend::ef_success) position_ = Position::BeforeFirst;
  reader_ = connection_->makeRowReader(*handle_);
  columnNames_ = reader_->columnNames();
}

void Statement::bind(const refl::CValue& value, int position) {
  Parameter& parameter = parameters_.emplace_back();
  void* place = &parameter.text;
  auto type = soci::details::x_stdstring;
  switch (value.type()) {
    case refl::CValue::Type::Empty:
      parameter.indicator = soci::i_null;
      break;
    case refl::CValue::Type::Integer:
      parameter.integer = value.asInteger();
      place = &parameter.integer;
      type = soci::details::x_long_long;
      break;
    case refl::CValue::Type::Real:
      parameter.real = value.asReal();
      place = &parameter.real;
      type = soci::details::x_double;
      break;
    case refl::CValue::Type::Text:
      parameter.text = boundText(value);
      break;
    case refl::CValue::Type::Binary:
      parameter.blob = connection_->makeBlob(value.asBytes());
      if (parameter.blob) {
        place = parameter.blob.get();
        type = soci::details::x_blob;
      } else {
        parameter.text = hexadecimal(value.asBytes());
      }
      break;
  }
  parameter.use.reset(handle_->make_use_type_backend());
  parameter.use->bind_by_pos(position, place, type, true);
  parameter.use->pre_use(&parameter.indicator);
}

bool Statement::next() {
  switch (position_) {
    case Position::BeforeFirst:
      position_ = Position::OnRow;
      break;
    case Position::OnRow:
      fetch();
      break;
    case Position::AtEnd:
      break;
  }
  return position_ == Position::OnRow;
}

void Statement::fetch() {
  position_ = Position::AtEnd;  // also when the read fails
  failed_ = true;
  const DatabaseWait wait(*connection_);
  const auto result = wait([this] { return handle_->fetch(1); });
  if (result == statement_backend::ef_success) position_ = Position::OnRow;
  failed_ = false;
}

refl::CValue Statement::value(std::size_t column) const {
  if (position_ != Position::OnRow || column >= columnNames_.size()) return {};
  return reader_->value(column);
}

}  // namespace dao
