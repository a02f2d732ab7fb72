// A statement that runs on a connection.
#pragma once

#include <list>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "connection.h"
#include "orma/metrics/outside_services.h"

namespace dao {

class Statement {
 public:
  // Runs the text up to its first row. Throws what SOCI throws, and std::runtime_error for a
  // parameter that cannot be bound.
  Statement(std::shared_ptr<Connection> connection, const std::string& text,
            const std::vector<refl::CValue>& parameters);
  // Leaves the prepared statement to the connection, for the next one of the same text.
  ~Statement();
  Statement(const Statement&) = delete;
  Statement& operator=(const Statement&) = delete;

  // Moves to the next row; false at the end. Throws what SOCI throws.
  bool next();

  // What the statement is counted as; it counts when it is gone.
  void countWith(orma::metrics::Exchange exchange) { counted_.emplace(std::move(exchange)); }
  void countAsRefused() {
    if (counted_) counted_->arrived(orma::metrics::Outcome::kRefused);
  }

  const std::vector<std::string>& columnNames() const { return columnNames_; }
  // Empty where there is no such column or no current row.
  refl::CValue value(std::size_t column) const;

 private:
  // A bound value, in the place that SOCI was told to read it from.
  struct Parameter {
    ~Parameter() {
      if (use) use->clean_up();
    }
    long long integer = 0;
    double real = 0;
    std::string text;
    std::unique_ptr<soci::blob> blob;
    soci::indicator indicator = soci::i_ok;
    std::unique_ptr<soci::details::standard_use_type_backend> use;
  };

  void run(StatementHandle handle, const std::vector<refl::CValue>& parameters);
  void bind(const refl::CValue& value, int position);
  void fetch();

  enum class Position { BeforeFirst, OnRow, AtEnd };

  // In this order: each needs those before it until it is gone.
  std::shared_ptr<Connection> connection_;
  std::string text_;
  StatementHandle handle_;
  std::list<Parameter> parameters_;
  std::unique_ptr<RowReader> reader_;

  std::vector<std::string> columnNames_;
  Position position_ = Position::AtEnd;
  bool failed_ = false;
  std::optional<orma::metrics::Exchange> counted_;
};

}  // namespace dao
