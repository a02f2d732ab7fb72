#include "generate_tree.h"

#include <algorithm>
#include <cmath>
#include <iterator>

#include "inventory_schema.h"

namespace ormasim {
namespace {

constexpr std::uint64_t kElementsForACity = 24;
constexpr std::uint64_t kSitesOfADistrict = 20;

enum Level { kRegion = 2, kCountry, kCity, kDistrict, kSite };

}  // namespace

SubnetTree::SubnetTree(InventoryWriter& writer, Random& random, std::uint64_t elements)
    : writer_(writer), random_(random) {
  for (const City& city : kCities) cities_.push_back(&city);
  const std::uint64_t wanted = elements / kElementsForACity + 1;
  // The table is ordered so that its head already mixes scripts; the seed shuffles what is used.
  cities_.resize(std::min<std::size_t>(std::max<std::uint64_t>(wanted, 3), cities_.size()));
  for (std::size_t i = cities_.size() - 1; i > 0; --i) {
    std::swap(cities_[i], cities_[random_.below(static_cast<std::uint32_t>(i + 1))]);
  }
  writer_.add(physicalRoot());
}

Site SubnetTree::openSite() {
  const City& city = *cities_[sitesOpened_ % cities_.size()];
  const std::uint64_t number = sitesOpened_ / cities_.size();
  ++sitesOpened_;

  const Words& words = kWords[static_cast<int>(city.script)];
  const auto x = std::lround((city.longitude + 180) * 10);
  const auto y = std::lround((90 - city.latitude) * 10);
  const std::string district = words.district + std::to_string(number / kSitesOfADistrict + 1);
  const std::string site = words.site + std::to_string(number + 1);

  std::string path = city.region;
  Place above = place(path, city.region, kRootObjectId, kRegion, x, y);
  path = path + "/" + city.country;
  above = place(path, city.country, above.subnetId, kCountry, x, y);
  path = path + "/" + city.name;
  above = place(path, city.name, above.subnetId, kCity, x, y);
  // One draw a statement: the order of operands and arguments is the compiler's own.
  const std::string districtPath = path + "/" + district;
  const auto districtX = x + random_.around(30);
  const auto districtY = y + random_.around(30);
  above =
      place(districtPath, city.name + district, above.subnetId, kDistrict, districtX, districtY);
  const auto siteX = above.posX + random_.around(20);
  const auto siteY = above.posY + random_.around(20);
  const Place& last =
      place(districtPath + "/" + site, city.name + site, above.subnetId, kSite, siteX, siteY);
  return {last.subnetId, &city, city.name + site, last.posX, last.posY};
}

const SubnetTree::Place& SubnetTree::place(const std::string& key, const std::string& label,
                                           const std::string& parentId, int level,
                                           std::int64_t posX, std::int64_t posY) {
  const auto [entry, isNew] = places_.try_emplace(key);
  Place& place = entry->second;
  if (!isNew) return place;
  SubnetRow row = numberedSubnet(static_cast<std::int64_t>(places_.size()) - 1);
  row.parentId = parentId;
  row.label = label;
  row.typeId = level == kSite ? 201 : 200;
  row.topoClassId = level;
  row.exInfo = "Level " + std::to_string(level) + " ProcID " + std::to_string(1 + level) + " auto";
  row.posX = posX;
  row.posY = posY;
  writer_.add(row);
  place = {row.objId, posX, posY};
  return place;
}

}  // namespace ormasim
