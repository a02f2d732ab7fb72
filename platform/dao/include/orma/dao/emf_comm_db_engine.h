// The inventory database as the topology and resource queries read it.
//
// Thread-safety: thread-safe after Instance. Operations block in the database. They return -1 on
// failure (logged with the reason) and throw nothing but std::bad_alloc.
#pragma once

#include <cstdint>
#include <list>
#include <map>
#include <memory>
#include <string>
#include <utility>

#include "orma/bundle/export.h"

// What the key of a base node query is.
enum _ETopoQueryMode {
  TOPO_QUERY_ALL = 0,
  TOPO_QUERY_BY_NODE = 4,  // the key is a node id, the result carries its device
};

struct stDevProperty {
  std::uint32_t devId = 0;
  std::uint16_t devType = 0;
  std::int32_t subType = 0;
  std::string ipAddress;
  std::string devName;
};

struct NodeStruct {
  std::uint32_t devId = 0;
  std::string nodeId;
  std::string label;
};

// What the database tells of one resource.
struct _SResProperty {  // NOLINT(bugprone-reserved-identifier): callers know it by this name
  // Number and value of each attribute, in the order of the numbers; values are UTF-8.
  std::list<std::pair<int, std::string>> attributes;
};

namespace dao {
class InventoryReader;
}

class ORMA_API CEmfCommDBEngine {
 public:
  CEmfCommDBEngine(const CEmfCommDBEngine&) = delete;
  CEmfCommDBEngine& operator=(const CEmfCommDBEngine&) = delete;

  // The module whose engine this is.
  static std::string GetModuleName();
  // The engine, made at the first call; later module names are ignored. Never null.
  static CEmfCommDBEngine* Instance(const std::string& moduleName);
  // Releases the engine and its connections; the next Instance makes a new one. No operation may
  // be running.
  static void Destroy();

  // One record for each id that exists is appended to `out`; 0, or -1 on failure.
  int GetDevProperty(const std::list<unsigned int>& ids, std::list<stDevProperty>& out);
  // The version name; 0, or -1 when the device is unknown or the read failed.
  int GetDevVersionName(unsigned int id, std::string& out);
  // The location parts, outermost first, appended; 0, or -1 when the device is unknown or the
  // read failed.
  int GetDevLocationByDevID(unsigned int id, std::list<std::string>& out);
  // The attributes of resources, one entry for each that is found, put into `out` under its id.
  // `iids` holds compatible ids cut to 32 bits; an id that so means several resources below
  // elements finds none (logged), and an element comes before those. `attributes` holds the numbers
  // wanted, none for all. `flag` 1 asks for the attributes, 0 only for the entries. The number of
  // resources found, or -1 on failure.
  int GetResByIID(const std::list<int>& iids, const std::list<int>& attributes,
                  std::map<int, _SResProperty>& out, int flag);
  // Nodes that match are appended; their number, or -1 on failure.
  int GetBaseNode(_ETopoQueryMode mode, const std::string& key, std::list<NodeStruct>& out);

 private:
  CEmfCommDBEngine();
  ~CEmfCommDBEngine();

  // Owned by the engine alone; shared_ptr, so that another implementation of this header need not
  // know the type.
  const std::shared_ptr<dao::InventoryReader> reader_;
};
