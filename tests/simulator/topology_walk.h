// Walks through the topology services, page by page, as the platform's clients do.
#pragma once

#include <json/value.h>

#include <string>
#include <vector>

namespace ormasim::testing {

// All pages of a walk; a page that is missing fails the test.
struct WalkedPages {
  std::vector<Json::Value> objects;
  std::size_t pages = 0;
};

// GET with "isTruncated" paging; no conditions when the text is empty.
WalkedPages walkTsNodes(int port, const std::string& conditions, int limit);
// POST with "hasNext" paging.
WalkedPages walkSubnetView(int port, const std::string& filter, int limit);

// {"name": …, "operator": …, "value": …, "caseSensitive": …}, each value as JSON.
std::string expression(const std::string& name, const std::string& word, const std::string& value,
                       const std::string& caseSensitive);
// The conditions of a node query, all of which must hold.
std::string conditions(const std::vector<std::string>& expressions);
// The filter of a view query.
std::string viewFilter(const std::string& expression);
// The body of a view query; without a marker when it is empty.
std::string viewBody(const std::string& filter, const std::string& limit,
                     const std::string& marker = "");

}  // namespace ormasim::testing
