// The inventory database engine: results by script, calls recorded as text.
//
//   platform().database.properties({record});
//   platform().database.fails();
//   EXPECT_THAT(platform().database.calls(), ElementsAre("GetDevProperty 12"));
//
// Thread-safety: thread-safe.
#pragma once

#include <list>
#include <map>
#include <mutex>
#include <string>
#include <vector>

#include "orma/dao/emf_comm_db_engine.h"

namespace emf::doubles {

class DatabaseDouble {
 public:
  // What each read gives: records and the result that goes with them.
  void properties(std::list<stDevProperty> records, int result = 0);
  void versionName(const std::string& version, int result = 0);
  void location(std::list<std::string> parts, int result = 0);
  void nodes(std::list<NodeStruct> records, int result);
  void resources(std::map<int, _SResProperty> records, int result);
  // Every read returns -1 and leaves what was scripted in its output all the same.
  void fails();

  // Reads with their arguments, "Instance <module>" and "Destroy", in order.
  std::vector<std::string> calls() const;
  // Whether an engine exists now.
  bool engineExists() const;
  void reset();

  void noteInstance(const std::string& module);
  void noteDestroy();
  int readProperties(const std::list<unsigned int>& ids, std::list<stDevProperty>& out);
  int readVersionName(unsigned int id, std::string& out);
  int readLocation(unsigned int id, std::list<std::string>& out);
  int readResources(const std::list<int>& iids, const std::list<int>& attributes,
                    std::map<int, _SResProperty>& out, int flag);
  int readNodes(_ETopoQueryMode mode, const std::string& key, std::list<NodeStruct>& out);

 private:
  void record(std::string call);
  bool readFails();

  mutable std::mutex mutex_;
  bool fails_ = false;
  bool exists_ = false;
  std::list<stDevProperty> properties_;
  std::string versionName_;
  std::list<std::string> location_;
  std::list<NodeStruct> nodes_;
  std::map<int, _SResProperty> resources_;
  int propertiesResult_ = 0;
  int versionNameResult_ = 0;
  int locationResult_ = 0;
  int nodesResult_ = 0;
  int resourcesResult_ = 0;
  std::vector<std::string> calls_;
};

}  // namespace emf::doubles
