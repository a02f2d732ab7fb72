// An access product's library that records what becomes of its instance. It knows the table of the
// instance by places alone, as a product that was built elsewhere does.
#include <string>

namespace {

// What happened, each word behind a blank.
std::string& events() {
  static auto& recorded = *new std::string;
  return recorded;
}

class Places {
 public:
  virtual int first() { return record("first"); }
  virtual int second() { return record("second"); }
  virtual int third() { return record("third"); }
  virtual int fourth() { return record("fourth"); }

 protected:
  ~Places() = default;  // without a place of its own

 private:
  // Not zero, which nobody looks at.
  static int record(const char* place) {
    events() += std::string(" ") + place;
    return 7;
  }
};

class Converter final : public Places {};

}  // namespace

extern "C" {

__attribute__((visibility("default"))) void* createInstanceLib() {
  static auto& converter = *new Converter;
  events() += " created";
  return &converter;
}

__attribute__((visibility("default"))) std::string* productEvents() { return &events(); }
}
