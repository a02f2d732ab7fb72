// EMFResMgrI without its labels, and the name helpers.
#include "emfresinterface.h"
#include "long_name.h"
#include "operation.h"
#include "orma/access/prdu_res_info_convert.h"
#include "orma/ident/resource_ids.h"
#include "platform.h"
#include "resource_records.h"
#include "resourcenames.h"
#include "temp_directory.h"

namespace emf::torture {
namespace {

using doubles::json;
using doubles::platform;

constexpr char kElements[] = "/rest/resource/v3/instances/objects/FixedNetworkElement";
constexpr char kContents[] = "/rest/resource/v3/instances/objects";
constexpr char kTypes[] = "/rest/resource/v2/metadatas/main-resource-type";
constexpr std::int64_t kIidBit = std::int64_t{1} << 60;

// A page of objects, with what makes the reader ask for the next one.
Json::Value page(const char* list, const std::vector<std::string>& objects,
                 const std::string& next = std::string()) {
  Json::Value made;
  made[list] = Json::Value(Json::arrayValue);
  for (const std::string& object : objects) made[list].append(json(object));
  if (!next.empty()) {
    made["isTruncated"] = true;
    made["marker"] = made["queryId"] = next;
  }
  return made;
}

// --- Managed elements

void scriptElements() {
  platform().text.characterSetSwitch(1);
  platform().rest.answers(kElements, page("objList",
                                          {R"({"nativeId":"NE=2","name":")" + kLongName + R"("})",
                                           R"({"nativeId":"NE=3","name":")" + kLongName + R"("})"},
                                          "m2"));
  platform().rest.answers(
      kElements, page("objList", {R"({"nativeId":"NE=4","name":")" + kLongName + R"("})"}));
}

Resource element(std::int64_t id) { return {{id}, id + kIidBit, kConverted, {1, 0}}; }

const std::list<Resource> kElementBefore = {element(9)};
const std::list<Resource> kElementsAfter = {
    {{1}, 2, "OSS", {1, 0}}, element(9), element(2), element(3), element(4)};

// --- Contained resources

void scriptContents() {
  platform().text.characterSetSwitch(1);
  for (const char* fdn : {"NE=2,FR=1", "NE=2,FR=2", "NE=2,FR=3"}) {
    platform().rest.mainType(fdn, Nimbola::MAIN_TYPE_FRAME);
  }
  const auto object = [](const std::string& fdn) {
    return R"({"nativeId":")" + fdn + R"(","name":")" + kLongName + R"(","subTypeOf3":7})";
  };
  platform().rest.answers(kContents,
                          page("objList", {object("NE=2,FR=1"), object("NE=2,FR=2")}, "q2"));
  platform().rest.answers(kContents, page("objList", {object("NE=2"), object("NE=2,FR=3")}));
}

Resource frame(const std::string& fdn) {
  return {resid_compat::ExtractResIdsFromFDN(fdn),
          NS_UTIL::compat::ResID2IID(resid_compat::ResDN2ResID(fdn)),
          kConverted,
          {3, 7}};
}

const std::list<Resource>& framesAfter() {
  static const auto& frames = *new std::list<Resource>{element(9), frame("NE=2,FR=1"),
                                                       frame("NE=2,FR=2"), frame("NE=2,FR=3")};
  return frames;
}

const std::vector<std::int64_t> kIds = {2};
const std::map<std::string, Texts> kPagedOutages = {{"REST request", {"-1", "0", "-1", kNoMemory}}};

// --- Details

void scriptDetails() {
  platform().text.characterSetSwitch(1);
  static const auto& answer =
      *new Json::Value(json(R"({"locationInfo":[{"devMTInfo":{"country":"CN","province":")" +
                            kLongName + R"(","city":"SZ","address":")" + kLongName +
                            R"("}}],"maintenanceInfo":[{"iID":"5","name":")" + kLongName +
                            R"(","dept":"d","phoneNo":"1","email":")" + kLongName + R"("}]})"));
  platform().resources.answers(answer);
}

const LocationInfo_ kPlaceBefore = {5, "c", "a province that was there before", "t", "a"};
const LocationInfo_ kPlace = {5, "UTF-8>GBK:CN", kConverted, "UTF-8>GBK:SZ", kConverted};
const std::list<MaintenanceInfo> kKeeperBefore = {{1, "before", "", "", "", ""}};
const std::list<MaintenanceInfo> kKeepers = {
    {1, "before", "", "", "", ""}, {0, kConverted, "UTF-8>GBK:d", "UTF-8>GBK:1", kConverted, ""}};

void scriptAttributes() {
  platform().text.characterSetSwitch(1);
  _SResProperty resource;
  resource.attributes = {{1, kLongName}, {30, "hidden"}, {31, kLongName}};
  platform().database.resources({{12, resource}}, 1);
}

const std::list<ResourceAttribute> kAttributeBefore = {{0, 9, "before"}};
const std::list<ResourceAttribute> kAttributes = {
    {0, 9, "before"}, {0, 1, kConverted}, {0, 31, kConverted}};

// --- Types

void scriptTypes() {
  platform().text.characterSetSwitch(1);
  const auto type = [](int id) {
    return R"({"id":)" + std::to_string(id) + R"(,"name":")" + kLongName + R"("})";
  };
  platform().rest.answers(kTypes, page("mainResTypes", {type(1), type(3)}, "m2"));
  platform().rest.answers(kTypes, page("mainResTypes", {type(6)}));
}

const std::list<NbiResMainType> kTypeBefore = {{9, "before"}};
const std::list<NbiResMainType> kTypesAfter = {
    {9, "before"}, {1, kConverted}, {3, kConverted}, {6, kConverted}};

using AccessTypes = std::map<int, std::string>;
const AccessTypes kAccessTypesBefore = {{3, "before"}};
const AccessTypes kAccessTypesAfter = {{86, "ACCESS"}, {100, "ACCESS"}, {268389721, "ACCESS"}};

void scriptAccessTypes() {
  static const doubles::TempDirectory& root = *[] {
    static doubles::TempDirectory made;
    made.write("etc/oss_cfg/nbi/corba/conf/ii_orma_corbaagent_bundle/devicetype.cfg",
               "# a comment\nOTHER=1\n" + std::string(600, 'x') + "\nACCESS=1,86,100\n");
    return &made;
  }();
  platform().config.rootPath(root.path());
}

// --- Names

const std::map<std::string, std::string> kSegments = {
    {"CP", "a value that takes memory of its own"}, {"FR", "1"}, {"NE", "2"}};
const std::string kFdn = "NE=2,FR=1,CP=a value that takes memory of its own";
const std::string kList = "one piece that takes memory, another piece that takes memory";

PRDU_ORMA::PrduResInfoConvert* instance = nullptr;

}  // namespace

const std::vector<Operation>& resourceOperations() {
  static const std::vector<Operation> rows = {
      {"EMFResMgrI::getAllManagedElements",
       calling(scriptElements, kElementBefore,
               [](auto& out) { return EMFResMgrI::getAllManagedElements(out); }),
       {"0", textsOf(kElementsAfter), {}},
       Left::kSome,
       {{"REST request", {"1092092090", "0", "1092092090", kNoMemory}}},
       {},
       {},
       1},
      {"EMFResMgrI::getContainedResourceByMainType",
       calling(scriptContents, kElementBefore,
               [](auto& out) { return EMFResMgrI::getContainedResourceByMainType(kIds, 3, out); }),
       {"0", textsOf(framesAfter()), {}},
       Left::kStart,
       kPagedOutages,
       {},
       {},
       1},
      {"EMFResMgrI::getContainedResourceByType",
       calling(scriptContents, kElementBefore,
               [](auto& out) {
                 return EMFResMgrI::getContainedResourceByType(kIds, {3, 7}, out);
               }),
       {"0", textsOf(framesAfter()), {}},
       Left::kStart,
       kPagedOutages,
       {},
       {},
       1},
      {"EMFResMgrI::getResourceLocation",
       calling(scriptDetails, kPlaceBefore,
               [](auto& out) { return EMFResMgrI::getResourceLocation(kIidBit + 12, out); }),
       {"0", textsOf(kPlace), {}},
       Left::kWhole,
       {{"resource query", {"-1", "-1", "-1", kNoMemory}}},
       {},
       {{textOf(kPlace), textsOf(kPlaceBefore)}},
       1},
      {"EMFResMgrI::getResourceMaintenances",
       calling(scriptDetails, kKeeperBefore,
               [](auto& out) { return EMFResMgrI::getResourceMaintenances(kIidBit + 12, out); }),
       {"0", textsOf(kKeepers), {}},
       Left::kWhole,
       {{"resource query", {"-1", "-1", "-1", kNoMemory}}},
       {},
       {},
       1},
      {"EMFResMgrI::getResourceAttributes",
       calling(scriptAttributes, kAttributeBefore,
               [](auto& out) { return EMFResMgrI::getResourceAttributes(12, out); }),
       {"0", textsOf(kAttributes), {}},
       Left::kStart,
       {{"database read", {"-1", kNoMemory}}},
       {},
       {},
       1},
      {"EMFResMgrI::getResMainType",
       calling(scriptTypes, kTypeBefore, [](auto& out) { return EMFResMgrI::getResMainType(out); }),
       {"0", textsOf(kTypesAfter), {}},
       Left::kStart,
       kPagedOutages,
       {},
       {},
       1},
      {"EMFResMgrI::getAccessNETypeList",
       calling(scriptAccessTypes, kAccessTypesBefore,
               [](auto& out) { return EMFResMgrI::getAccessNETypeList(out); }),
       {"0", textsOf(kAccessTypesAfter), {}},
       Left::kWhole,
       {{"root path", {"0"}},
        {"path", {"0"}},
        {"descriptor", {"0"}},
        {"file status", {"0"}},
        {"stream", {"0"}}},
       {},
       {{textsOf(kAccessTypesAfter).front(), textsOf(kAccessTypesBefore)}},
       1},
      {"EMFResMgrI::AdpDevID2FDN",
       calling(scriptNothing, std::string("left over"),
               [](auto& out) { return EMFResMgrI::AdpDevID2FDN(0xE000001, out); }),
       {"13", {"ONE=234881025"}, {}},
       Left::kAnything,
       {{"formatting", {"-1"}}, {"formatting a list", {"-1"}}, {"mapping", {"-1"}}}},
      {"EMFResMgrI::getResType",
       calling(scriptNothing, [] { return EMFResMgrI::getResType(); }),
       {"0", {}, {}}},
      {"EMFResMgrI::initAccessFdnConvertDll",
       calling(scriptNothing, [] { return EMFResMgrI::initAccessFdnConvertDll(instance); }),
       {"0", {}, {}},
       Left::kWhole,
       {{"library", {"1"}}, {"symbol", {"1"}}},
       {"1"}},
      {"ToNorthCharset",
       calling([] { platform().text.characterSetSwitch(1); }, std::string(),
               [](auto& out) { out = ToNorthCharset(kLongName.c_str()); }),
       {"done", {kConverted}, {}},
       Left::kAnything},
      {"ParseFdnSegments",
       calling(scriptNothing, std::map<std::string, std::string>(),
               [](auto& out) { ParseFdnSegments(out, kFdn); }),
       {"done", textsOf(kSegments), {}},
       Left::kAnything},
      {"SplitFdnList",
       calling(scriptNothing, std::vector<std::string>{"before"},
               [](auto& out) { return static_cast<int>(SplitFdnList(kList, out, ',')); }),
       {"1", {"before", "one piece that takes memory", "another piece that takes memory"}, {}},
       Left::kStart,
       {},
       {},
       {},
       1},
      {"MakeNeFdn",
       calling(scriptNothing, std::string(),
               [](auto& out) { out = MakeNeFdn(1234567890123456789); }),
       {"done", {"NE=1234567890123456789"}, {}},
       Left::kAnything},
  };
  return rows;
}

}  // namespace emf::torture
