#include "connection.h"

#include <strings.h>

#include <new>

namespace orma::rest {
namespace {

constexpr std::size_t kMaxHeaderBytes = 256 * 1024;
// Above that an answer's memory is given back; the reader's is up to fifteen times as much.
constexpr std::size_t kKeptBodyBytes = 256 * 1024;
constexpr long kReceiveBufferBytes = 128 * 1024;

struct FreeList {
  void operator()(curl_slist* list) const { curl_slist_free_all(list); }
};
using HeaderLines = std::unique_ptr<curl_slist, FreeList>;

HeaderLines headerLines(const HttpRequest& request) {
  HeaderLines lines;
  for (const std::string& header : request.headers) {
    curl_slist* const longer = curl_slist_append(lines.get(), header.c_str());
    if (longer == nullptr) throw std::bad_alloc();
    lines.release();
    lines.reset(longer);
  }
  return lines;
}

// libcurl copies texts, so setting one can only fail for lack of memory.
template <typename Value>
void setOption(CURL* handle, CURLoption option, Value value) {
  if (curl_easy_setopt(handle, option, value) == CURLE_OUT_OF_MEMORY) throw std::bad_alloc();
}

}  // namespace

Connection::Connection(const Settings& settings)
    : settings_(settings), handle_(curl_easy_init()), reader_(settings.maxNesting) {
  if (!handle_) throw std::bad_alloc();
  setUpHandle();
  setUpTls();
}

Connection::~Connection() = default;

void Connection::setUpHandle() {
  CURL* const handle = handle_.get();
  setOption(handle, CURLOPT_ERRORBUFFER, error_);
  setOption(handle, CURLOPT_WRITEFUNCTION, &Connection::takeBody);
  setOption(handle, CURLOPT_WRITEDATA, this);
  setOption(handle, CURLOPT_HEADERFUNCTION, &Connection::takeHeader);
  setOption(handle, CURLOPT_HEADERDATA, this);
  setOption(handle, CURLOPT_BUFFERSIZE, kReceiveBufferBytes);
  setOption(handle, CURLOPT_MAXCONNECTS, 1L);
  setOption(handle, CURLOPT_PROTOCOLS_STR, "http,https");
  setOption(handle, CURLOPT_FOLLOWLOCATION, 0L);
  setOption(handle, CURLOPT_HTTP_VERSION, static_cast<long>(CURL_HTTP_VERSION_1_1));
  setOption(handle, CURLOPT_PATH_AS_IS, 1L);
  setOption(handle, CURLOPT_PROXY, "");  // the environment's proxies are not for this traffic
  setOption(handle, CURLOPT_CONNECTTIMEOUT_MS, static_cast<long>(settings_.connectTimeout.count()));
  setOption(handle, CURLOPT_TIMEOUT_MS, static_cast<long>(settings_.totalTimeout.count()));
  // Signals belong to the host. A name look-up that hangs is left behind, so that the deadline
  // holds for it too; the library stays loaded for its sake (see the linker option).
  setOption(handle, CURLOPT_NOSIGNAL, 1L);
  setOption(handle, CURLOPT_QUICK_EXIT, 1L);
  setOption(handle, CURLOPT_MAXFILESIZE_LARGE, static_cast<curl_off_t>(settings_.maxAnswerBytes));
}

void Connection::setUpTls() {
  CURL* const handle = handle_.get();
  setOption(handle, CURLOPT_SSL_VERIFYPEER, settings_.tlsVerify ? 1L : 0L);
  setOption(handle, CURLOPT_SSL_VERIFYHOST, settings_.tlsVerify ? 2L : 0L);
  setOption(handle, CURLOPT_SSLVERSION, static_cast<long>(CURL_SSLVERSION_TLSv1_2));
  if (!settings_.tlsCaFile.empty()) {
    setOption(handle, CURLOPT_CAINFO, settings_.tlsCaFile.c_str());
    setOption(handle, CURLOPT_CAPATH, static_cast<const char*>(nullptr));
  }
  if (!settings_.tlsCertFile.empty()) {
    setOption(handle, CURLOPT_SSLCERT, settings_.tlsCertFile.c_str());
  }
  if (!settings_.tlsKeyFile.empty()) {
    setOption(handle, CURLOPT_SSLKEY, settings_.tlsKeyFile.c_str());
  }
}

void Connection::setUpRequest(const HttpRequest& request, curl_slist* headers) {
  CURL* const handle = handle_.get();
  setOption(handle, CURLOPT_URL, request.url.c_str());
  setOption(handle, CURLOPT_HTTPHEADER, headers);
  if (request.post) {
    setOption(handle, CURLOPT_POST, 1L);
    setOption(handle, CURLOPT_POSTFIELDSIZE_LARGE, static_cast<curl_off_t>(request.body.size()));
    setOption(handle, CURLOPT_POSTFIELDS, request.body.c_str());
  } else {
    setOption(handle, CURLOPT_HTTPGET, 1L);
  }
}

void Connection::forgetRequest() {
  setOption(handle_.get(), CURLOPT_HTTPHEADER, static_cast<curl_slist*>(nullptr));
  setOption(handle_.get(), CURLOPT_POSTFIELDS, static_cast<const char*>(nullptr));
}

bool Connection::exchange(const HttpRequest& request, Failure& failure) {
  const HeaderLines plainHeaders = headerLines(request);
  // In front of the others, and without a copy; libcurl does not change it.
  curl_slist secretHeader{const_cast<char*>(request.secretHeader.c_str()), plainHeaders.get()};
  curl_slist* const headers = request.secretHeader.empty() ? plainHeaders.get() : &secretHeader;
  body_.clear();
  headerBytes_ = 0;
  outOfMemory_ = false;
  error_[0] = '\0';
  setUpRequest(request, headers);
  exchange_.emplace(metrics::OutsideService::kRest);
  const CURLcode code = curl_easy_perform(handle_.get());
  forgetRequest();
  if (outOfMemory_) throw std::bad_alloc();
  const bool good = judge(code, failure);
  if (!good) exchange_.reset();
  return good;
}

bool Connection::judge(CURLcode code, Failure& failure) {
  if (code != CURLE_OK) {
    const bool tooLarge = code == CURLE_WRITE_ERROR || code == CURLE_FILESIZE_EXCEEDED;
    if (tooLarge) exchange_->arrived(metrics::Outcome::kRefused);
    failure = {reasonFor(code), std::string(checkFor(tooLarge ? CURLE_FILESIZE_EXCEEDED : code))};
    return false;
  }
  exchange_->arrived(metrics::Outcome::kRefused);
  long status = 0;
  curl_easy_getinfo(handle_.get(), CURLINFO_RESPONSE_CODE, &status);
  if (status < 200 || status > 299) {
    failure = {"HTTP status " + std::to_string(status), std::string(checkFor(status))};
    return false;
  }
  curl_header* encoding = nullptr;
  if (curl_easy_header(handle_.get(), "Content-Encoding", 0, CURLH_HEADER, -1, &encoding) ==
          CURLHE_OK &&
      ::strcasecmp(encoding->value, "identity") != 0) {
    failure = {"the answer is packed (" + printable(encoding->value) + "), which was not asked for",
               "the service, or a proxy before it: \"Accept-Encoding: identity\" is not kept"};
    return false;
  }
  exchange_->arrived(metrics::Outcome::kAnswered);
  return true;
}

void Connection::conclude(bool usable) {
  if (!usable && exchange_) exchange_->arrived(metrics::Outcome::kRefused);
  exchange_.reset();
}

std::string Connection::reasonFor(CURLcode code) const {
  if (headerBytes_ > kMaxHeaderBytes) {
    return "the headers of the answer exceed " + std::to_string(kMaxHeaderBytes) + " bytes";
  }
  if (code == CURLE_WRITE_ERROR || code == CURLE_FILESIZE_EXCEEDED) {
    return "the answer exceeds " + std::to_string(settings_.maxAnswerBytes) + " bytes";
  }
  return printable(error_[0] != '\0' ? error_ : curl_easy_strerror(code));
}

std::string Connection::describeAnswer() const {
  const char* type = nullptr;
  curl_easy_getinfo(handle_.get(), CURLINFO_CONTENT_TYPE, &type);
  return printable(type != nullptr ? type : "no content type") + ", " +
         std::to_string(body_.size()) + " bytes";
}

void Connection::trim() {
  if (body_.capacity() > kKeptBodyBytes) {
    body_ = std::string();
    reader_ = JsonReader(settings_.maxNesting);
  }
}

std::size_t Connection::takeBody(char* data, std::size_t, std::size_t size, void* self) noexcept {
  auto& connection = *static_cast<Connection*>(self);
  if (size > connection.settings_.maxAnswerBytes - connection.body_.size()) return 0;
  try {
    connection.body_.append(data, size);
  } catch (const std::exception&) {
    connection.outOfMemory_ = true;
    return 0;
  }
  return size;
}

std::size_t Connection::takeHeader(char*, std::size_t, std::size_t size, void* self) noexcept {
  auto& connection = *static_cast<Connection*>(self);
  connection.headerBytes_ += size;
  return connection.headerBytes_ > kMaxHeaderBytes ? 0 : size;
}

}  // namespace orma::rest
