// What the generated network is made of.
#pragma once

#include <cstdint>

namespace ormasim {

enum class Script { Latin, Chinese };

struct City {
  const char* name;
  const char* country;
  const char* region;
  Script script;
  double longitude;
  double latitude;
};

constexpr City kCities[] = {
    {"Zürich", "Schweiz", "Europe", Script::Latin, 8.54, 47.38},
    {"北京", "中国", "亚洲", Script::Chinese, 116.40, 39.90},
    {"São Paulo", "Brasil", "América", Script::Latin, -46.63, -23.55},
    {"London", "United Kingdom", "Europe", Script::Latin, -0.13, 51.51},
    {"上海", "中国", "亚洲", Script::Chinese, 121.47, 31.23},
    {"München", "Deutschland", "Europe", Script::Latin, 11.58, 48.14},
    {"Málaga", "España", "Europe", Script::Latin, -4.42, 36.72},
    {"Nairobi", "Kenya", "Africa", Script::Latin, 36.82, -1.29},
    {"Genève", "Schweiz", "Europe", Script::Latin, 6.14, 46.20},
    {"广州", "中国", "亚洲", Script::Chinese, 113.26, 23.13},
    {"Bogotá", "Colombia", "América", Script::Latin, -74.07, 4.71},
    {"Köln", "Deutschland", "Europe", Script::Latin, 6.96, 50.94},
    {"Besançon", "France", "Europe", Script::Latin, 6.02, 47.24},
    {"Singapore", "Singapore", "亚洲", Script::Latin, 103.82, 1.35},
    {"Logroño", "España", "Europe", Script::Latin, -2.45, 42.47},
    {"成都", "中国", "亚洲", Script::Chinese, 104.07, 30.57},
    {"Göteborg", "Sverige", "Europe", Script::Latin, 11.97, 57.71},
    {"Querétaro", "México", "América", Script::Latin, -100.39, 20.59},
    {"Orléans", "France", "Europe", Script::Latin, 1.90, 47.90},
    {"Abidjan", "Côte d'Ivoire", "Africa", Script::Latin, -4.03, 5.36},
    {"西安", "中国", "亚洲", Script::Chinese, 108.94, 34.34},
    {"Malmö", "Sverige", "Europe", Script::Latin, 13.00, 55.60},
    {"Córdoba", "Argentina", "América", Script::Latin, -64.18, -31.42},
    {"Edinburgh", "United Kingdom", "Europe", Script::Latin, -3.19, 55.95},
    {"武汉", "中国", "亚洲", Script::Chinese, 114.30, 30.59},
    {"Brasília", "Brasil", "América", Script::Latin, -47.88, -15.79},
    {"Lagos", "Nigeria", "Africa", Script::Latin, 3.39, 6.52},
    {"Bangkok", "Thailand", "亚洲", Script::Latin, 100.50, 13.76},
};

struct Role {
  const char* code;
  const char* chinese;
  std::int64_t mainType;
  std::int64_t subType;
  const char* nodeType;
  const char* versionPrefix;
  const char* iconFile;
};

// The first two are what a site's head is taken from.
constexpr Role kRoles[] = {
    {"CR", "核心路由器", 2, 1, "CoreRouter", "R9.", "/images/topo/core_router.png"},
    {"AGG", "汇聚路由器", 2, 5, "AggregationRouter", "R8.", "/images/topo/agg_router.png"},
    {"ACC", "接入交换机", 3, 9, "AccessSwitch", "S5.", "/images/topo/access_switch.png"},
    {"OLT", "光线路终端", 4, 1, "LineTerminal", "T3.", "/images/topo/olt.png"},
    {"MW", "微波站", 5, 3, "MicrowaveRadio", "M2.", "/images/topo/microwave.png"},
    {"BTS", "基站", 6, 2, "BaseStation", "B7.", "/images/topo/base_station.png"},
};

// The words of labels in one script.
struct Words {
  const char* district;
  const char* site;
  const char* rack;
  const char* frame;
};

constexpr Words kWords[] = {{" District ", " Site ", "Rack ", "Frame "},
                            {"第分区", "站点", "机柜", "机框"}};

constexpr const char* kRemarks[] = {"Wartung: prüfen bis März", "备用电源", "mantenimiento 2 años",
                                    "leased site", "à démonter"};

// First and second state of a port, with the share of ports that have them, in percent.
struct PortState {
  std::uint32_t share;
  std::int64_t first;
  std::int64_t second;
};

constexpr PortState kPortStates[] = {{85, 1, 1}, {8, 1, 0}, {5, 0, 0}, {2, 0, 1}};

}  // namespace ormasim
