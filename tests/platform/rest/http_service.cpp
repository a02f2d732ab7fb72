#include "http_service.h"

#include <gtest/gtest.h>

// The server's library makes tables at its first request, in a way that the thread sanitizer cannot
// see to be safe, because it cannot look into the library. What the library does itself is left
// out; the handlers here, the client and everything else stay watched.
extern "C" __attribute__((visibility("default"))) const char* __tsan_default_suppressions();
const char* __tsan_default_suppressions() { return "called_from_lib:libcpp-httplib.so\n"; }

HttpService::HttpService(Answer answer, After after)
    : scheme_("http://"), server_(std::make_unique<httplib::Server>()) {
  start(std::move(answer), after);
}

HttpService::HttpService(Answer answer, const ServiceTls& tls, After after)
    : scheme_("https://"),
      server_(std::make_unique<httplib::SSLServer>(
          tls.certificate.c_str(), tls.key.c_str(),
          tls.clientAuthority.empty() ? nullptr : tls.clientAuthority.c_str())) {
  start(std::move(answer), after);
}

HttpService::~HttpService() {
  server_->stop();
  thread_.join();
}

void HttpService::start(Answer answer, After after) {
  const auto handle = [this, answer = std::move(answer)](const httplib::Request& request,
                                                         httplib::Response& response) {
    {
      const std::lock_guard<std::mutex> lock(mutex_);
      requests_.push_back(request);
      clientPorts_.insert(request.remote_port);
    }
    answer(request, response);
  };
  // A kept connection occupies a thread of the server.
  server_->new_task_queue = [] { return new httplib::ThreadPool(32); };
  server_->set_keep_alive_max_count(after == After::Keep ? 1000000 : 1);
  server_->set_keep_alive_timeout(1);
  server_->set_tcp_nodelay(true);
  server_->Get(".*", handle);
  server_->Post(".*", handle);
  port_ = server_->bind_to_any_port("127.0.0.1");
  EXPECT_GT(port_, 0);
  thread_ = std::thread([this] { server_->listen_after_bind(); });
  // A stop before the loop runs would be lost.
  while (!server_->is_running()) std::this_thread::yield();
}

std::vector<httplib::Request> HttpService::requests() const {
  const std::lock_guard<std::mutex> lock(mutex_);
  return requests_;
}

httplib::Request HttpService::request() const {
  const auto all = requests();
  EXPECT_EQ(all.size(), 1u);
  return all.empty() ? httplib::Request() : all.front();
}

std::size_t HttpService::connections() const {
  const std::lock_guard<std::mutex> lock(mutex_);
  return clientPorts_.size();
}

HttpService::Answer always(const std::string& body, int status, const std::string& type) {
  return [=](const httplib::Request&, httplib::Response& response) {
    response.status = status;
    response.set_content(body, type);
  };
}
