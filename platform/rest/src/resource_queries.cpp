// Queries of the resource service that take one exchange each.
#include <json/writer.h>

#include <algorithm>
#include <string>
#include <utility>

#include "http_client.h"
#include "json_text.h"
#include "orma/rest/nbi_http_proxy.h"
#include "orma/rest/rest_client.h"

namespace NS_UTIL {
namespace {

using orma::rest::Failure;
using orma::rest::HttpClient;
using orma::rest::JsonOutcome;
using orma::rest::JsonReader;

constexpr char kLocationMaintenancePath[] = "/rest/resource/v2/location-maintenance";

Nimbola::RestReq postTo(const std::string& path) {
  Nimbola::RestReq request = MakeRestReq();
  request.url = path;
  request.method = Nimbola::kMethodBody;
  return request;
}

bool isPlain(char c) { return static_cast<unsigned char>(c) >= 0x20 && c != '"' && c != '\\'; }

// The text as JSON, as the client writes it.
void appendQuoted(std::string& out, const std::string& text) {
  if (std::all_of(text.begin(), text.end(), isPlain)) {
    out.append(1, '"').append(text).append(1, '"');
    return;
  }
  Json::StreamWriterBuilder builder;
  builder["emitUTF8"] = true;
  out += orma::rest::wholeText(builder, text);
}

// The document of a property read. Tens of thousands of names are written in less time than a value
// of them is built.
std::string namesDocument(const std::vector<std::string>& fdns) {
  std::string document = R"({"nativeIds":[)";
  for (const std::string& fdn : fdns) {
    if (&fdn != &fdns.front()) document += ',';
    appendQuoted(document, fdn);
  }
  return document += "]}";
}

// One exchange that posts JSON text.
bool postJson(const std::string& path, std::string text, Json::Value& answer) {
  const Nimbola::RestReq request = postTo(path);
  const auto client = HttpClient::current();
  Failure failure;
  Json::Value parsed;
  auto connection = client->fetch(request, failure, std::move(text));
  const bool good = connection && client->read(std::move(connection), request, parsed, failure);
  if (!good) client->traceFailure(request, failure);
  answer.swap(parsed);
  return good;
}

bool readProperties(const char* path, const std::vector<std::string>& fdns, Json::Value& answer) {
  return postJson(path, namesDocument(fdns), answer);
}

// True when the text is JSON; otherwise the query of that path is traced as a failed one.
bool isDocument(const std::string& path, std::string text) {
  const auto client = HttpClient::current();
  Json::Value document;
  Failure failure;
  if (JsonReader(client->settings().maxNesting).read(text, document, failure.reason) !=
      JsonOutcome::Refused) {
    return true;
  }
  failure.reason = "the query is no JSON: " + failure.reason;
  failure.check = "what made the query, nothing was sent";
  client->traceFailure(postTo(path), failure);
  return false;
}

// The exchange of a query whose document comes as text, which is posted as it stands.
bool postText(const std::string& path, const std::string& body, Json::Value& answer) {
  if (isDocument(path, body)) return postJson(path, body, answer);
  answer = Json::Value();
  return false;
}

}  // namespace

bool NBIHTTPProxy::GetPortResourcePropertyByFDNs(Json::Value& answer,
                                                 const std::vector<std::string>& fdns) {
  return readProperties("/rest/resource/v2/port-properties", fdns, answer);
}

bool NBIHTTPProxy::GetSlotResourcePropertyByFDNs(Json::Value& answer,
                                                 const std::vector<std::string>& fdns) {
  return readProperties("/rest/resource/v2/slot-properties", fdns, answer);
}

bool NBIHTTPProxy::GetCardResourcePropertyByFDNs(Json::Value& answer,
                                                 const std::vector<std::string>& fdns) {
  return readProperties("/rest/resource/v2/card-properties", fdns, answer);
}

bool NBIHTTPProxy::GetFrameResourcePropertyByFDNs(Json::Value& answer,
                                                  const std::vector<std::string>& fdns) {
  return readProperties("/rest/resource/v2/frame-properties", fdns, answer);
}

bool NBIHTTPProxy::GetNEResourcePropertyByFDNs(Json::Value& answer,
                                               const std::vector<std::string>& fdns) {
  return readProperties("/rest/resource/v2/ne-properties", fdns, answer);
}

bool NBIHTTPProxy::GetAcessResource(Json::Value& answer, const std::string& path,
                                    const std::string& body) {
  return postText(path, body, answer);
}

bool NBIHTTPProxy::QueryLocalInfoAndMaintenInfo(Json::Value& answer, const std::string& body) {
  return postText(kLocationMaintenancePath, body, answer);
}

}  // namespace NS_UTIL
