// What asks nobody: names out of ids, error texts, types of the installation, and what is idle.
#include <map>

#include "emfmominterface.h"
#include "emfresinterface.h"
#include "error_texts.h"
#include "operation.h"
#include "orma/access/prdu_res_info_convert.h"
#include "transmitassistant.h"

namespace soak {

namespace {

Verdict adpDevId2Fdn(Context& context) {
  const Element& element = context.pick(context.network.elements);
  const std::string expected = "NE=" + std::to_string(element.id);
  std::string fdn;
  return context.check(
      [&] { return EMFResMgrI::AdpDevID2FDN(static_cast<std::uint32_t>(element.id), fdn); },
      [&] { return Rows{fdn}; },
      Expected(static_cast<std::int64_t>(expected.size()), Rows{expected}));
}

Verdict getResType(Context& context) {
  return context.check([] { return EMFResMgrI::getResType(); }, [] { return Rows{}; },
                       Expected(0, Rows{}));
}

// Those of the devicetype.cfg that comes with the simulator; 1 to 85 are shifted.
Verdict getAccessNeTypeList(Context& context) {
  std::map<int, std::string> types;
  const Rows expected = {"86|ACCESS", "262145|ACCESS", "268389721|ACCESS", "268389724|ACCESS",
                         "268389805|ACCESS"};
  return context.check([&] { return EMFResMgrI::getAccessNETypeList(types); },
                       [&] { return rowsOf(types); }, Expected(0, expected));
}

// The platform's own product, which makes a new instance for each call.
Verdict initAccessFdnConvertDll(Context& context) {
  PRDU_ORMA::PrduResInfoConvert* instance = nullptr;
  Verdict verdict =
      context.check([&] { return EMFResMgrI::initAccessFdnConvertDll(instance); },
                    [&] { return instance == nullptr ? Rows{} : Rows{"an instance"}; },
                    Expected(0, {"an instance"}));
  delete instance;
  return verdict;
}

Verdict momOperations(Context& context) {
  const auto all = [] {
    return EMFMOMgrI::setUserLabel() + EMFMOMgrI::setOwner() + EMFMOMgrI::insertRecord() +
           EMFMOMgrI::deleteRecord();
  };
  return context.check(
      all, [] { return Rows{}; }, Expected(0, Rows{}));
}

Verdict transmitAssistant(Context& context) {
  const auto same = [] {
    return TransmitAssistant::Instance() != nullptr &&
                   TransmitAssistant::Instance() == TransmitAssistant::getInstance()
               ? 0
               : 1;
  };
  return context.check(
      same, [] { return Rows{}; }, Expected(0, Rows{}));
}

Verdict getErrorInfo(Context& context) {
  Rows texts;
  const auto ask = [&] {
    texts = {ormaagent::findErrorText(0x411800CC), ormaagent::findErrorText(7)};
    return 0;
  };
  return context.check(
      ask, [&] { return texts; },
      Expected(0, Rows{"No such device, or it could not be read", "unknown"}));
}

}  // namespace

void addOtherOperations(std::vector<Operation>& all) {
  all.insert(all.end(), {{"EMFResMgrI::AdpDevID2FDN", 20, adpDevId2Fdn},
                         {"EMFResMgrI::getResType", 5, getResType},
                         {"EMFResMgrI::getAccessNETypeList", 5, getAccessNeTypeList},
                         {"EMFResMgrI::initAccessFdnConvertDll", 2, initAccessFdnConvertDll},
                         {"EMFMOMgrI", 5, momOperations},
                         {"TransmitAssistant::Instance", 5, transmitAssistant},
                         {"ErrorCodeBufIf::GetErrorInfo", 10, getErrorInfo}});
}

}  // namespace soak
