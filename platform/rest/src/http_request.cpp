#include "http_request.h"

#include <json/writer.h>

#include <algorithm>
#include <string_view>

#include "json_text.h"

namespace orma::rest {
namespace {

constexpr std::string_view kUnreserved =
    "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789-._~";
// What may stand in a path as it is; "%" and "?" too, since a caller may bring both.
constexpr std::string_view kPathExtra = "!$&'()*+,;=:@/%?";

bool hasControl(std::string_view text) {
  return std::any_of(text.begin(), text.end(), [](char c) {
    const auto byte = static_cast<unsigned char>(c);
    return byte < 0x20 || byte == 0x7f;
  });
}

void appendEncoded(std::string& out, std::string_view text, std::string_view alsoPlain) {
  constexpr std::string_view kHex = "0123456789ABCDEF";
  for (const char c : text) {
    if (kUnreserved.find(c) != std::string_view::npos ||
        alsoPlain.find(c) != std::string_view::npos) {
      out += c;
    } else {
      const auto byte = static_cast<unsigned char>(c);
      out.append({'%', kHex[byte >> 4], kHex[byte & 15]});
    }
  }
}

std::string compactJson(const Json::Value& value, bool ascii) {
  Json::StreamWriterBuilder builder;
  builder["indentation"] = "";
  builder["commentStyle"] = "None";
  builder["emitUTF8"] = !ascii;
  return orma::rest::wholeText(builder, value);
}

std::string parameterText(const Json::Value& value) {
  return value.isArray() || value.isObject() ? compactJson(value, false) : value.asString();
}

void appendQuery(std::string& url, const Json::Value& params) {
  char separator = url.find('?') == std::string::npos ? '?' : '&';
  for (auto member = params.begin(); member != params.end(); ++member) {
    url += separator;
    appendEncoded(url, member.name(), "");
    url += '=';
    appendEncoded(url, parameterText(*member), "");
    separator = '&';
  }
}

bool composeUrl(const Nimbola::RestReq& request, const std::string& baseUrl, std::string& url,
                Failure& failure) {
  failure.check = "the caller of this request";
  if (request.url.empty() || request.url.front() != '/') {
    failure.reason = "the path of a request must begin with \"/\"";
    return false;
  }
  if (hasControl(request.url)) {
    failure.reason = "the path holds control characters";
    return false;
  }
  url = baseUrl;
  appendEncoded(url, request.url, kPathExtra);
  if (request.method == Nimbola::kMethodBody || request.params.isNull()) return true;
  if (!request.params.isObject()) {
    failure.reason = "the query parameters are no JSON object";
    return false;
  }
  appendQuery(url, request.params);
  return true;
}

class HeaderList {
 public:
  HeaderList(std::vector<std::string>& headers, Failure& failure)
      : headers_(headers), failure_(failure) {}

  void add(const std::string& name, const std::string& value) {
    if (hasControl(value)) {
      failure_ = {"the value for the header " + name + " holds control characters",
                  "the caller of this request"};
      complete_ = false;
    }
    // libcurl drops "Name:" with nothing behind it; a semicolon asks for the empty header.
    headers_.push_back(value.empty() ? name + ";" : name + ": " + value);
  }
  bool complete() const { return complete_; }

 private:
  std::vector<std::string>& headers_;
  Failure& failure_;
  bool complete_ = true;
};

}  // namespace

bool composeRequest(const Nimbola::RestReq& request, const std::string& baseUrl,
                    std::string_view token, HttpRequest& wire, Failure& failure) {
  if (!composeUrl(request, baseUrl, wire.url, failure)) return false;
  wire.post = request.method == Nimbola::kMethodBody;
  HeaderList headers(wire.headers, failure);
  headers.add("X-Orma-Target", request.target);
  headers.add("X-Orma-Mode", std::to_string(request.mode));
  headers.add("X-Orma-Option", std::to_string(request.option));
  if (!request.extra.isNull()) headers.add("X-Orma-Extra", compactJson(request.extra, true));
  if (!token.empty()) wire.secretHeader = SecretText("X-Auth-Token: ", token);
  headers.add("Accept", "application/json");
  // Pages travel over a management network and are read at once: unpacking them costs more than
  // it saves, and a small answer cannot grow into a huge one.
  headers.add("Accept-Encoding", "identity");
  if (wire.post) {
    headers.add("Content-Type", "application/json");
    wire.headers.push_back("Expect:");  // no waiting for "100 Continue" before a large body
    wire.body = compactJson(request.body, false);
  }
  return headers.complete();
}

}  // namespace orma::rest
