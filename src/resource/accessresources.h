// Labels of access network resources.
//
// Thread-safety: thread-safe on distinct results. QueryAccessResource blocks in a REST exchange.
#pragma once

#include <json/value.h>

#include <map>
#include <string>

#include "emfresrecords.h"

// Records by their FDN.
using AccessResources = std::map<std::string, ResourceEightLoc>;

// The label of a place in the agent's language, UTF-8: of a card ("CP") by frame and slot, of every
// other kind by the port as well. Empty in a language other than "zh_CN" and "en_US".
std::string BuildLocationLabel(const std::string& kind, const std::string& frame,
                               const std::string& slot, const std::string& port);

// The label of a card or port from its FDN alone, in the northbound character set. Empty for a port
// without a value.
std::string BuildAccessLabel(const std::string& fdn);

// Labels the cards and ports of `byFdn`, and adds an expression for each frame and each daughter
// card to the "simple" array of its filter; a filter without any stays as it is.
void FillAccessQuery(AccessResources& byFdn, Json::Value& frameFilter, Json::Value& cardFilter);

// Posts the query and stores the label of each resource that the answer tells of, also of those
// that `byFdn` did not hold. An answer counts even if the query failed (traced).
void QueryAccessResource(const std::string& path, const std::string& body, AccessResources& byFdn);
