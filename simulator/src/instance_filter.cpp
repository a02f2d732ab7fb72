#include "instance_filter.h"

#include <algorithm>
#include <map>
#include <utility>

#include "request_document.h"
#include "services.h"

namespace ormasim {
namespace {

// SQLite binds up to 32,766 values, and takes expressions of up to 1000 terms in one another.
constexpr std::size_t kMostValues = 20'000;
constexpr std::size_t kMostTerms = 500;

// Reads one condition, from the outermost object inwards.
class FilterReader {
 public:
  FilterReader(const std::vector<InstanceMember>& members, CaseFlag caseFlag)
      : members_(members), caseFlag_(caseFlag) {}

  InstanceFilter read(const Json::Value& condition) {
    requireMembers(condition, "\"condition\"", {"filter"});
    const Json::Value& filter = condition["filter"];
    if (filter.isObject() && filter.isMember("complex")) {
      requireMembers(filter, "\"filter\"", {"logOp", "complex"});
      filter_.sql = " AND (" + complexTerms(filter) + ")";
    } else {
      requireMembers(filter, "\"filter\"", {"logOp", "simple"});
      filter_.sql = " AND (" + simpleTerms(filter["simple"], word(filter["logOp"])) + ")";
    }
    return std::move(filter_);
  }

 private:
  // Values that one attribute is compared with, in one way.
  using Values = std::vector<std::variant<std::string, std::int64_t>>;
  struct Comparison {
    const InstanceMember* member;
    bool negated;
    bool caseSensitive;
    Values anyOf;
  };

  static const char* word(const Json::Value& logOp) {
    if (logOp == "and") return " AND ";
    if (logOp == "or") return " OR ";
    throw BadRequest("\"logOp\" must be \"and\" or \"or\"");
  }

  std::string complexTerms(const Json::Value& filter) {
    const char* const outer = word(filter["logOp"]);
    requireArray(filter["complex"], "complex");
    std::string terms;
    for (const Json::Value& group : filter["complex"]) {
      requireKnownMembers(group, "an element of \"complex\"", {"logOp", "simple"});
      // With one expression there is nothing to combine.
      const bool several = group["simple"].size() > 1 || group.isMember("logOp");
      const std::string inner =
          simpleTerms(group["simple"], several ? word(group["logOp"]) : " AND ");
      terms += (terms.empty() ? "(" : std::string(outer) + "(") + inner + ")";
    }
    return terms;
  }

  std::string simpleTerms(const Json::Value& expressions, const std::string& logOp) {
    requireArray(expressions, "simple");
    std::vector<Comparison> comparisons;
    std::map<std::pair<const InstanceMember*, bool>, std::size_t> mergeable;
    for (const Json::Value& expression : expressions) {
      Comparison comparison = comparisonOf(expression);
      // A thousand names of which any will do are one term, not a thousand.
      const bool merges = logOp == " OR " && !comparison.negated;
      if (merges) {
        const auto [place, isNew] = mergeable.try_emplace(
            {comparison.member, comparison.caseSensitive}, comparisons.size());
        if (!isNew) {
          Values& all = comparisons[place->second].anyOf;
          all.insert(all.end(), comparison.anyOf.begin(), comparison.anyOf.end());
          continue;
        }
      }
      comparisons.push_back(std::move(comparison));
    }
    return joined(comparisons, logOp);
  }

  std::string joined(const std::vector<Comparison>& comparisons, const std::string& logOp) {
    terms_ += comparisons.size();
    if (terms_ > kMostTerms) {
      throw BadRequest("\"filter\" has more than " + std::to_string(kMostTerms) + " terms");
    }
    std::string text;
    for (const Comparison& comparison : comparisons) {
      text += (text.empty() ? "" : logOp) + std::string(comparison.member->column);
      if (!comparison.caseSensitive) text += " COLLATE NOCASE";
      text += comparison.negated ? " NOT IN (" : " IN (";
      for (std::size_t i = 0; i < comparison.anyOf.size(); ++i) text += i == 0 ? "?" : ",?";
      text += ')';
      filter_.values.insert(filter_.values.end(), comparison.anyOf.begin(), comparison.anyOf.end());
    }
    if (filter_.values.size() > kMostValues) {
      throw BadRequest("\"filter\" has more than " + std::to_string(kMostValues) + " values");
    }
    return text;
  }

  Comparison comparisonOf(const Json::Value& expression) const {
    requireMembers(expression, "an expression", {"name", "operator", "value", "caseSensitive"});
    Comparison comparison{&memberNamed(members_, expression["name"], "name"), false, false, {}};
    const Json::Value& value = expression["value"];
    const Json::Value& op = expression["operator"];
    if (op == "equal" || op == "notEqual") {
      comparison.negated = op == "notEqual";
      comparison.anyOf.push_back(valueOf(value, *comparison.member));
    } else if (op == "in") {
      requireArray(value, "value");
      for (const Json::Value& one : value) {
        comparison.anyOf.push_back(valueOf(one, *comparison.member));
      }
    } else {
      throw BadRequest("\"operator\" must be \"equal\", \"notEqual\" or \"in\"");
    }
    comparison.caseSensitive = caseSensitiveOf(expression["caseSensitive"], caseFlag_);
    return comparison;
  }

  static std::variant<std::string, std::int64_t> valueOf(const Json::Value& value,
                                                         const InstanceMember& member) {
    if (member.number) {
      if (!value.isInt64()) {
        throw BadRequest("\"value\" of " + std::string(member.name) + " must be a whole number");
      }
      return value.asInt64();
    }
    if (!value.isString()) throw BadRequest("\"value\" must be a text");
    return value.asString();
  }

  static void requireArray(const Json::Value& array, const char* name) {
    if (array.isArray() && !array.empty()) return;
    throw BadRequest("\"" + std::string(name) + "\" must be an array that is not empty");
  }

  const std::vector<InstanceMember>& members_;
  const CaseFlag caseFlag_;
  InstanceFilter filter_;
  std::size_t terms_ = 0;
};

}  // namespace

InstanceFilter instanceFilterOf(const Json::Value& condition,
                                const std::vector<InstanceMember>& members, CaseFlag caseFlag) {
  return FilterReader(members, caseFlag).read(condition);
}

const InstanceMember& memberNamed(const std::vector<InstanceMember>& members,
                                  const Json::Value& name, const char* what) {
  const auto member =
      std::find_if(members.begin(), members.end(),
                   [&name](const InstanceMember& known) { return name == known.name; });
  if (member != members.end()) return *member;
  std::string names;
  for (const InstanceMember& known : members)
    names += (names.empty() ? "" : ", ") + std::string(known.name);
  throw BadRequest("\"" + std::string(what) + "\" is none of " + names);
}

}  // namespace ormasim
