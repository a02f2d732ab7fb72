#include "subnet_network.h"

#include "platform.h"
#include "submapbufmgr.h"
#include "topology_objects.h"

namespace emf::torture {
namespace {

constexpr char kRegion[] = "a region whose name takes memory";

void answer(const Nimbola::RestReq& request, const std::string& city, Json::Value& page) {
  const Json::Value& classes = request.params["conditions"][0]["simple"]["value"];
  if (classes.size() != 1) {
    page = test::nodePage({test::node("NE=12", "1", "2"), test::node("NE=13,FR=1", "1", "2"),
                           test::node("NE=14", "0", "2"), test::node("NE=15", "1", "9")});
  } else if (request.params.isMember("marker")) {
    page = test::nodePage({test::subnet("3", "below no one", "8")});
  } else {
    page = test::nodePage({test::subnet("2", city, "1"), test::subnet("1", kRegion, "1")}, "m2");
  }
}

}  // namespace

void network(const char* city) {
  doubles::platform().rest.answersBy([city](const Nimbola::RestReq& request, Json::Value& page) {
    answer(request, city, page);
    return true;
  });
}

std::string linkWith(const char* city) { return std::string(kRegion) + "/" + city; }

std::string linkOfDevice() {
  std::string link = "left over";
  SubmapBufMgr::Instance()->GetSubmapName(link, kDevice);
  return link;
}

}  // namespace emf::torture
