#include "orma/rest/nbi_http_proxy.h"

namespace NS_UTIL {

bool NBIHTTPProxy::GetAllDevProperty(std::vector<Json::Value>&) { return false; }

}  // namespace NS_UTIL
