// Log objects are cached once a process: this program never has a log service.
#include "emftopointerface.h"
#include "linkportstatus.h"
#include "links.h"

namespace emf::test {
namespace {

using emf::doubles::failsOtherwise;
using emf::doubles::failsWith;
using emf::doubles::platform;
using ::testing::IsEmpty;

constexpr char kPath[] = "/rest/topology/v3/tsnodes";

class Silence : public emf::doubles::PlatformTest {
 protected:
  Silence() { platform().log.absent(); }
  ~Silence() override { EXPECT_THAT(platform().log.lines(), IsEmpty()); }
};

TEST_F(Silence, LinksFailAsEver) {
  PhysicalLink link;
  std::list<PhysicalLink> links;
  for (const auto& failure : {failsWith(7), failsOtherwise()}) {
    const std::int64_t result = failure.isProcessException ? 7 : 0x41180035;
    platform().southbound.linkInfos(failure);
    EXPECT_EQ(EMFTopoI::getPhyLink("1", link), result);
    platform().southbound.linkIds(failure);
    EXPECT_EQ(EMFTopoI::getAllPhyLinks(links), result);
    platform().southbound.links({"1"});
    EXPECT_EQ(EMFTopoI::getAllPhyLinks(links), 0);
    platform().southbound.portStates(failure);
    EXPECT_EQ(findPortstatusByportidx(portAt(1, 1, 1, 1, 1)), 0);
  }
}

TEST_F(Silence, SubMapsFailAsEver) {
  SubMap map;
  std::list<SubMap> maps;
  for (int i = 0; i < 4; ++i) platform().rest.fails(kPath);
  EXPECT_EQ(EMFTopoI::getSubMap("/", map), 0x411800D4);
  EXPECT_EQ(EMFTopoI::getAllSubMaps("/", maps), 0x411800D4);
}

TEST_F(Silence, LogServiceThatRefusesIsNoneAtAll) {
  platform().log.throwing();
  PhysicalLink link;
  platform().southbound.linkInfos(failsWith(7));
  EXPECT_EQ(EMFTopoI::getPhyLink("1", link), 7);
}

}  // namespace
}  // namespace emf::test
