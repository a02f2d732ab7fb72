#include "failure.h"

#include <array>

#include "orma/log/trace.h"

namespace orma::rest {
namespace {

struct CurlRow {
  CURLcode code;
  std::string_view check;
};
constexpr std::string_view kBroken =
    "the service's own log: it broke the connection off; over TLS it may ask for a client "
    "certificate (rest.tls.certFile)";
constexpr std::string_view kNotHttp = "that rest.baseUrl names an HTTP service";
constexpr std::array<CurlRow, 18> kCurlRows = {{
    {CURLE_UNSUPPORTED_PROTOCOL, kNotHttp},
    {CURLE_WEIRD_SERVER_REPLY, kNotHttp},
    {CURLE_URL_MALFORMAT, "rest.baseUrl"},
    {CURLE_COULDNT_RESOLVE_HOST, "the host name in rest.baseUrl and the name service"},
    {CURLE_COULDNT_CONNECT, "that the service runs and rest.baseUrl names its host and port"},
    {CURLE_OPERATION_TIMEDOUT,
     "the load of the service and the network; the limits are rest.connectTimeoutMs and "
     "rest.totalTimeoutMs"},
    {CURLE_FILESIZE_EXCEEDED, "rest.maxAnswerBytes"},
    {CURLE_PARTIAL_FILE, kBroken},
    {CURLE_GOT_NOTHING, kBroken},
    {CURLE_SEND_ERROR, kBroken},
    {CURLE_RECV_ERROR, kBroken},
    {CURLE_PEER_FAILED_VERIFICATION,
     "rest.tls.caFile, and that the service's certificate is for this host"},
    {CURLE_SSL_CACERT_BADFILE, "that rest.tls.caFile names a readable PEM file"},
    {CURLE_SSL_CERTPROBLEM,
     "that rest.tls.certFile and rest.tls.keyFile name a matching PEM certificate and key"},
    {CURLE_SSL_CLIENTCERT, "rest.tls.certFile: the service asks for a client certificate"},
    {CURLE_SSL_CONNECT_ERROR,
     "that the service speaks TLS at this address, and whether it asks for a client certificate "
     "(rest.tls.certFile)"},
    {CURLE_SSL_CIPHER, "the TLS settings of the service"},
    {CURLE_OUT_OF_MEMORY, "the memory of the process"},
}};

struct StatusRow {
  long from;
  long to;
  std::string_view check;
};
constexpr std::array<StatusRow, 7> kStatusRows = {{
    {300, 399, "rest.baseUrl: it should name the final address, redirects are not followed"},
    {401, 401, "the token: rest.token.file or rest.token.environment"},
    {403, 403, "the rights of the token's user"},
    {404, 404, "rest.baseUrl, and that this release of the service offers the path"},
    {429, 429, "the load of the service"},
    {503, 503, "that the service is up and not overloaded"},
    {500, 599, "the service's own log"},
}};

}  // namespace

std::string_view checkFor(CURLcode code) {
  for (const CurlRow& row : kCurlRows) {
    if (row.code == code) return row.check;
  }
  return "rest.baseUrl and the network";
}

std::string_view checkFor(long status) {
  for (const StatusRow& row : kStatusRows) {
    if (status >= row.from && status <= row.to) return row.check;
  }
  return "that rest.baseUrl names the right service in a matching release";
}

std::string printable(std::string_view text) {
  constexpr std::string_view kHex = "0123456789abcdef";
  std::string shown;
  shown.reserve(text.size());
  for (const char c : text) {
    const auto byte = static_cast<unsigned char>(c);
    if (byte >= 0x20 && byte != 0x7f) {
      shown += c;
    } else {
      shown.append({'\\', 'x', kHex[byte >> 4], kHex[byte & 15]});
    }
  }
  return shown;
}

std::string shownAddress(std::string_view baseUrl, std::string_view path) {
  std::string shown(baseUrl);
  const auto scheme = shown.find("://");
  const auto host = scheme == std::string::npos ? 0 : scheme + 3;
  const auto at = shown.rfind('@');  // also behind a "/", which a password may hold by mistake
  if (at != std::string::npos && at >= host) shown.replace(host, at - host, "***");
  shown += path.substr(0, path.find_first_of("?#"));
  return printable(shown);
}

void trace(int level, int line, const std::string& text) {
  auto& source = NS_CORBA::GetTss();
  source->file = "restclient";
  source->function = "unknown";
  source->line = line;
  NS_CORBA::TaDebugWithPara(level, "%s", text.c_str());
}

}  // namespace orma::rest
