// POST /rest/fault/v1/alarm-definitions, alarm-reasons and redefined-alarms: the catalogue of
// alarms, page by page.
#include "json_writer.h"
#include "request_document.h"
#include "services.h"

namespace ormasim {
namespace {

constexpr std::int64_t kMaxLimit = 10'000;

enum class Form { Text, Number };

// A member of a row: the column of the same place, in that form. Identifiers are texts here.
struct Member {
  const char* key;
  Form form;
};

struct Definitions {
  static constexpr Member kMembers[] = {
      {"alarmGroupId", Form::Text}, {"alarmId", Form::Text},   {"eventType", Form::Number},
      {"severity", Form::Number},   {"alarmName", Form::Text}, {"description", Form::Text},
  };
  static constexpr char kColumns[] = "group_id, alarm_id, event_type, severity, name, description";
  static constexpr char kTable[] = "alarm_definition";
  static constexpr char kCountKey[] = "totalCount";
  static constexpr char kRowsKey[] = "definitions";
  static constexpr std::int64_t kFirstOffset = 0;
};

struct Reasons {
  static constexpr Member kMembers[] = {
      {"alarmGroupId", Form::Text}, {"alarmId", Form::Text},      {"reasonId", Form::Number},
      {"causes", Form::Text},       {"repairAction", Form::Text},
  };
  static constexpr char kColumns[] = "group_id, alarm_id, reason_id, causes, repair_action";
  static constexpr char kTable[] = "alarm_reason";
  static constexpr char kCountKey[] = "totalCount";
  // As for definitions: meant so.
  static constexpr char kRowsKey[] = "definitions";
  static constexpr std::int64_t kFirstOffset = 0;
};

// The capitals of two keys differ from the others': meant so.
struct Redefined {
  static constexpr Member kMembers[] = {
      {"alarmGroupId", Form::Text}, {"alarmId", Form::Text}, {"newSeverity", Form::Number},
      {"OldLevel", Form::Number},   {"Name", Form::Text},
  };
  static constexpr char kColumns[] = "group_id, alarm_id, new_severity, old_severity, name";
  static constexpr char kTable[] = "redefined_alarm";
  static constexpr char kCountKey[] = "count";
  static constexpr char kRowsKey[] = "rows";
  static constexpr std::int64_t kFirstOffset = 1;
};

struct Page {
  std::int64_t offset;  // from 0
  std::int64_t limit;
};

template <typename Table>
class CatalogueReader {
 public:
  explicit CatalogueReader(Database& database)
      : database_(database),
        count_(database, std::string("SELECT count(*) FROM ") + Table::kTable),
        rows_(database, std::string("SELECT ") + Table::kColumns + " FROM " + Table::kTable +
                            " WHERE seq >= ? AND seq - ? < ? ORDER BY seq") {}

  // The body of the answer, read in one transaction.
  std::string answer(const Page& page) {
    Transaction transaction(database_);
    count_.step();
    std::string body = "{";
    appendMember(body, Table::kCountKey, count_.integer(0));
    count_.reset();
    body += std::string(",\"") + Table::kRowsKey + "\":[";
    rows_.bindAll(page.offset, page.offset, page.limit);
    while (rows_.step()) appendRow(body);
    rows_.reset();
    transaction.commit();
    return body + "]}\n";
  }

 private:
  void appendRow(std::string& body) {
    char separator = '{';
    if (body.back() != '[') body += ',';
    int column = 0;
    for (const Member& member : Table::kMembers) {
      body += separator;
      separator = ',';
      if (member.form == Form::Text) {
        appendMember(body, member.key, rows_.text(column));
      } else {
        appendMember(body, member.key, rows_.integer(column));
      }
      ++column;
    }
    body += '}';
  }

  Database& database_;
  Statement count_;
  Statement rows_;
};

Page pageOf(const httplib::Request& request, std::int64_t firstOffset) {
  const Json::Value document = postedDocument(request);
  requireMembers(document, "the body", {"limit", "offset"});
  const Json::Value& offset = document["offset"];
  if (!offset.isInt64() || offset.asInt64() < firstOffset) {
    throw BadRequest("\"offset\" must be a number from " + std::to_string(firstOffset) + " on");
  }
  return {offset.asInt64() - firstOffset, limitOf(document["limit"], kMaxLimit)};
}

template <typename Table>
std::string answerCatalogue(const httplib::Request& request, Inventory& inventory) {
  const Page page = pageOf(request, Table::kFirstOffset);
  return inventory.reader<CatalogueReader<Table>>().answer(page);
}

}  // namespace

std::string answerAlarmDefinitions(const httplib::Request& request, Inventory& inventory) {
  return answerCatalogue<Definitions>(request, inventory);
}

std::string answerAlarmReasons(const httplib::Request& request, Inventory& inventory) {
  return answerCatalogue<Reasons>(request, inventory);
}

std::string answerRedefinedAlarms(const httplib::Request& request, Inventory& inventory) {
  return answerCatalogue<Redefined>(request, inventory);
}

}  // namespace ormasim
