#include "address.h"

#include <netdb.h>

#include <future>
#include <memory>
#include <system_error>
#include <thread>
#include <utility>

namespace orma::channel {
namespace {

using Addresses = std::vector<ACE_INET_Addr>;

struct FreeList {
  void operator()(addrinfo* list) const { ::freeaddrinfo(list); }
};

Addresses lookUp(const std::string& host, std::uint16_t port, int flags) {
  addrinfo hints{};
  hints.ai_socktype = SOCK_STREAM;
  hints.ai_flags = flags | AI_NUMERICSERV;
  addrinfo* list = nullptr;
  if (::getaddrinfo(host.c_str(), std::to_string(port).c_str(), &hints, &list) != 0) return {};
  const std::unique_ptr<addrinfo, FreeList> owner(list);
  Addresses addresses;
  for (const addrinfo* entry = list; entry != nullptr; entry = entry->ai_next) {
    ACE_INET_Addr address;
    address.set_addr(entry->ai_addr, static_cast<int>(entry->ai_addrlen));
    address.set_type(entry->ai_family);
    addresses.push_back(address);
  }
  return addresses;
}

Addresses lookUpWithin(const std::string& host, std::uint16_t port, const Deadline& deadline) {
  std::packaged_task<Addresses()> task([host, port] { return lookUp(host, port, AI_ADDRCONFIG); });
  std::future<Addresses> result = task.get_future();
  try {
    std::thread(std::move(task)).detach();
  } catch (const std::system_error&) {
    return {};
  }
  if (result.wait_for(deadline.left()) != std::future_status::ready) return {};
  return result.get();
}

}  // namespace

std::vector<ACE_INET_Addr> addressesOf(const std::string& host, std::uint16_t port,
                                       const Deadline& deadline) {
  Addresses numeric = lookUp(host, port, AI_NUMERICHOST);
  return numeric.empty() ? lookUpWithin(host, port, deadline) : numeric;
}

}  // namespace orma::channel
