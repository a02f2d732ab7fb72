#include "member_names.h"

#include <mutex>
#include <string>
#include <unordered_set>

namespace orma::rest {
namespace {

constexpr std::size_t kMaxNames = 1024;
constexpr std::size_t kMaxNameBytes = 64;

struct NameTable {
  std::mutex mutex;
  std::unordered_set<std::string> names;  // under mutex; its nodes never move
};

}  // namespace

const char* lastingName(std::string_view name) {
  static auto* const table = new NameTable;
  if (name.size() > kMaxNameBytes || name.find('\0') != std::string_view::npos) return nullptr;
  const std::lock_guard<std::mutex> lock(table->mutex);
  const auto known = table->names.find(std::string(name));
  if (known != table->names.end()) return known->c_str();
  if (table->names.size() >= kMaxNames) return nullptr;
  return table->names.emplace(name).first->c_str();
}

}  // namespace orma::rest
