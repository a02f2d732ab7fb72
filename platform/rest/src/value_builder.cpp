#include "value_builder.h"

#include <array>
#include <cstdint>
#include <string_view>
#include <utility>

#include "member_names.h"

namespace orma::rest {
namespace {

namespace dom = simdjson::dom;

// The member names of the last object in a list. The next object mostly has the same ones in the
// same order; then it starts as a copy of an object that has them all, which takes half the
// allocations and none of the searches that adding member by member takes.
class ObjectShape {
 public:
  static constexpr std::size_t kMaxMembers = 32;
  using Slots = std::array<Json::Value*, kMaxMembers>;

  bool matches(dom::object object) const {
    std::size_t index = 0;
    for (const dom::key_value_pair member : object) {
      if (index == count_ || member.key != names_[index]) return false;
      ++index;
    }
    return index == count_ && count_ > 0;
  }

  void learn(dom::object object) {
    sample_ = Json::Value();
    count_ = 0;
    for (const dom::key_value_pair member : object) {
      if (count_ == kMaxMembers) {
        count_ = 0;  // matches nothing
        return;
      }
      names_[count_++] = member.key;
    }
  }

  // An object with every member null.
  const Json::Value& sample() {
    if (sample_.isNull()) makeSample();
    return sample_;
  }

  // The places of the members of a copy of sample(), in the order of the document.
  Slots slotsOf(Json::Value& copy) const {
    Slots sorted{};
    Slots slots{};
    std::size_t index = 0;
    for (Json::Value& member : copy) sorted[index++] = &member;
    for (index = 0; index < count_; ++index) slots[index] = sorted[places_[index]];
    return slots;
  }

 private:
  // Copies of the sample share a lasting name, and have a copy of any other.
  void addMember(std::string_view name) {
    if (const char* const lasting = lastingName(name)) {
      sample_[Json::StaticString(lasting)] = Json::Value();
    } else {
      sample_.demand(name.data(), name.data() + name.size());
    }
  }

  void makeSample() {
    sample_ = Json::Value(Json::objectValue);
    for (std::size_t i = 0; i < count_; ++i) addMember(names_[i]);
    std::size_t place = 0;
    for (auto member = sample_.begin(); member != sample_.end(); ++member, ++place) {
      const std::string name = member.name();
      for (std::size_t i = 0; i < count_; ++i) {
        if (names_[i] == name) places_[i] = place;
      }
    }
  }

  std::size_t count_ = 0;
  std::array<std::string_view, kMaxMembers> names_;  // in the order of the document
  std::array<std::size_t, kMaxMembers> places_{};    // of each name in the order of jsoncpp
  Json::Value sample_;
};

class Builder {
 public:
  explicit Builder(std::size_t maxNesting) : levelsLeft_(maxNesting) {}

  bool build(dom::element element, Json::Value& out) {
    switch (element.type()) {
      case dom::element_type::ARRAY:
        return buildArray(dom::array(element), out);
      case dom::element_type::OBJECT:
        return buildObject(dom::object(element), out);
      case dom::element_type::STRING:
        put(text(std::string_view(element)), out);
        break;
      case dom::element_type::INT64:
        put(Json::Value(Json::Int64(std::int64_t(element))), out);
        break;
      case dom::element_type::UINT64:
        put(Json::Value(Json::UInt64(std::uint64_t(element))), out);
        break;
      case dom::element_type::DOUBLE:
        put(Json::Value(double(element)), out);
        break;
      case dom::element_type::BOOL:
        put(Json::Value(bool(element)), out);
        break;
      case dom::element_type::NULL_VALUE:
        put(Json::Value(), out);
        break;
    }
    return true;
  }

 private:
  static Json::Value text(std::string_view view) {
    return Json::Value(view.data(), view.data() + view.size());
  }
  static void put(Json::Value&& value, Json::Value& out) { out.swapPayload(value); }

  bool buildArray(dom::array array, Json::Value& out) {
    if (levelsLeft_ == 0) return false;
    --levelsLeft_;
    put(Json::Value(Json::arrayValue), out);
    ObjectShape shape;
    for (const dom::element element : array) {
      if (!buildElement(element, shape, out)) return false;
    }
    ++levelsLeft_;
    return true;
  }

  bool buildElement(dom::element element, ObjectShape& shape, Json::Value& list) {
    if (!element.is_object()) return build(element, list.append(Json::Value()));
    const dom::object object(element);
    if (shape.matches(object)) return fillCopy(object, shape, list.append(shape.sample()));
    shape.learn(object);
    return buildObject(object, list.append(Json::Value()));
  }

  bool fillCopy(dom::object object, const ObjectShape& shape, Json::Value& copy) {
    if (levelsLeft_ == 0) return false;
    --levelsLeft_;
    const ObjectShape::Slots slots = shape.slotsOf(copy);
    std::size_t index = 0;
    for (const dom::key_value_pair member : object) {
      if (!build(member.value, *slots[index++])) return false;
    }
    ++levelsLeft_;
    return true;
  }

  bool buildObject(dom::object object, Json::Value& out) {
    if (levelsLeft_ == 0) return false;
    --levelsLeft_;
    put(Json::Value(Json::objectValue), out);
    for (const dom::key_value_pair member : object) {
      // Of members with one name the last stays.
      Json::Value& slot = *out.demand(member.key.data(), member.key.data() + member.key.size());
      if (!build(member.value, slot)) return false;
    }
    ++levelsLeft_;
    return true;
  }

  std::size_t levelsLeft_;
};

}  // namespace

bool buildValue(dom::element root, std::size_t maxNesting, Json::Value& out) {
  return Builder(maxNesting).build(root, out);
}

}  // namespace orma::rest
