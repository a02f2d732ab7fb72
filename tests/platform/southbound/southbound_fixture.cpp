#include "southbound_fixture.h"

namespace orma::southbound::test {

void SouthboundTest::SetUp() {
  InventoryTest::SetUp();
  if (IsSkipped()) return;
  addPort("1", "2, 0, 1, 0, 1", "GE-1");
  addPort("2", "3, 0, 2, -1, 5", "LAG;1,2=% ü", "65537", "1, 1");
  addPort("3", "2, 0, 1, 0, 3", "GE-3", "65538", "0, -1");
  addLink("77", "204", "1", "2");
  addLink("5", "0", "1", "3");
  addLink("6", "105", "1", "3");
  addLink("9", "7", "2", "1");
}

void SouthboundTest::addPort(const std::string& id, const std::string& place,
                             const std::string& name, const std::string& type,
                             const std::string& states) {
  database().run("INSERT INTO port VALUES (" + id + ", " + place + ", '" + name + "', " + type +
                 ", " + states + ")");
}

void SouthboundTest::addLink(const std::string& id, const std::string& kind,
                             const std::string& source, const std::string& destination) {
  database().run("INSERT INTO link VALUES (" + id + ", 'link " + id + "', " + kind + ", 6, " +
                 source + ", " + destination + ")");
}

std::vector<std::string> linkIds(const std::vector<int>& elements, const std::vector<int>& kinds) {
  std::vector<TEUniResID> ids;
  NS_DOMAIN_SOUTHAPISET::GetLinkID(elements, kinds, ids);
  std::vector<std::string> texts;
  for (const TEUniResID& id : ids) {
    EXPECT_EQ(id.neId, -1);
    EXPECT_EQ(id.extId, "__ONBI_INVALID_STRING__");
    texts.push_back(id.uniResId + " " + id.resType);
  }
  return texts;
}

std::vector<TEUniResID> resourceIds(const std::vector<std::string>& ids) {
  std::vector<TEUniResID> result(ids.size());
  for (std::size_t i = 0; i < ids.size(); ++i) result[i].uniResId = ids[i];
  return result;
}

std::vector<std::string> linkInfos(const std::vector<std::string>& ids, int mask) {
  std::vector<TELinkInfo> infos;
  NS_DOMAIN_SOUTHAPISET::GetLinkInfo(resourceIds(ids), mask, infos);
  std::vector<std::string> texts;
  for (const TELinkInfo& info : infos) {
    texts.push_back(info.linkResId + " " + info.linkName + " " +
                    std::to_string(info.linkAttribute) + " " + info.srcPortResId + " -> " +
                    info.dstPortResId);
  }
  return texts;
}

std::vector<std::string> portStates(const std::vector<std::string>& ids) {
  TEErrInfoReturn errors;
  std::vector<TEPortOAMStatus> states;
  NS_DOMAIN_SOUTHAPISET::GetPortStatus(resourceIds(ids), errors, states);
  std::vector<std::string> texts;
  for (const TEPortOAMStatus& state : states) {
    texts.push_back(state.portResId + " " + std::to_string(state.firstState) + "/" +
                    std::to_string(state.secondState));
  }
  return texts;
}

}  // namespace orma::southbound::test
