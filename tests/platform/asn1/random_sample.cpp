#include "random_sample.h"

#include <algorithm>
#include <array>
#include <climits>
#include <sstream>

namespace {

constexpr int kLongestString = 300;

// pyasn1 writes these with one byte more than it takes, so that bytes could not be compared.
constexpr std::array<int, 4> kLeftOut = {-128, -32768, -8388608, INT_MIN};

int randomInt(std::mt19937& random) {
  const auto bits = static_cast<unsigned int>(random()) >> random() % 32;
  const int value = random() % 2 == 0 ? static_cast<int>(bits) : static_cast<int>(~bits);
  const bool isLeftOut = std::find(kLeftOut.begin(), kLeftOut.end(), value) != kLeftOut.end();
  return isLeftOut ? value + 1 : value;
}

std::string randomText(std::mt19937& random, const std::string& alphabet) {
  const auto size = random() % 4 == 0 ? random() % kLongestString : random() % 12;
  std::string text = {alphabet[random() % alphabet.size()]};
  while (text.size() < size) text += alphabet[random() % alphabet.size()];
  return text;
}

void fillRandomly(Point& point, std::mt19937& random) {
  point.x = randomInt(random);
  point.y = randomInt(random);
}

template <typename T>
T* perhaps(std::mt19937& random) {
  return random() % 2 == 0 ? nullptr : new T;
}

void write(std::ostream& out, const AsnInt& value) { out << static_cast<int>(value); }

void write(std::ostream& out, const AsnOcts& value) {
  constexpr const char* kDigits = "0123456789abcdef";
  for (unsigned long i = 0; i < value.bytes().size(); ++i) {
    const auto byte = static_cast<unsigned char>(value.bytes().data()[i]);
    out << kDigits[byte >> 4] << kDigits[byte & 0xF];
  }
}

void write(std::ostream& out, const Point& point) {
  out << "{x=" << static_cast<int>(point.x) << ",y=" << static_cast<int>(point.y) << "}";
}

void write(std::ostream& out, const Sample& sample) { out << valueText(sample); }

template <typename T>
void write(std::ostream& out, const ElementList<T>& list) {
  out << "[";
  for (std::size_t i = 0; i < list.size(); ++i) {
    if (i > 0) out << ",";
    write(out, list[i]);
  }
  out << "]";
}

template <typename T>
void writeField(std::ostream& out, const char* name, const T* value) {
  if (value == nullptr) return;
  out << "," << name << "=";
  write(out, *value);
}

}  // namespace

void fillRandomly(Sample& sample, std::mt19937& random, const std::string& alphabet, int depth) {
  sample.number = randomInt(random);
  sample.name.ReSet(randomText(random, alphabet).c_str());
  sample.flag = perhaps<AsnInt>(random);
  if (sample.flag != nullptr) *sample.flag = randomInt(random);
  fillRandomly(*sample.place, random);
  sample.target = perhaps<Point>(random);
  if (sample.target != nullptr) fillRandomly(*sample.target, random);
  for (auto count = random() % 5; count > 0; --count) sample.values.add(randomInt(random));
  sample.notes = perhaps<ElementList<AsnOcts>>(random);
  for (auto count = random() % 4; sample.notes != nullptr && count > 0; --count) {
    sample.notes->add(randomText(random, alphabet).c_str());
  }
  sample.children = depth > 0 ? perhaps<ElementList<Sample>>(random) : nullptr;
  for (auto count = random() % 3; sample.children != nullptr && count > 0; --count) {
    fillRandomly(sample.children->add(), random, alphabet, depth - 1);
  }
  sample.code = perhaps<AsnInt>(random);
  if (sample.code != nullptr) *sample.code = randomInt(random);
  sample.label = perhaps<AsnOcts>(random);
  if (sample.label != nullptr) sample.label->ReSet(randomText(random, alphabet).c_str());
  sample.path = perhaps<Point>(random);
  if (sample.path != nullptr) fillRandomly(*sample.path, random);
  sample.last = randomInt(random);
}

std::string valueText(const Sample& sample) {
  std::ostringstream out;
  out << "{number=" << static_cast<int>(sample.number);
  writeField(out, "name", &sample.name);
  writeField(out, "flag", sample.flag);
  writeField(out, "place", sample.place);
  writeField(out, "target", sample.target);
  writeField(out, "values", &sample.values);
  writeField(out, "notes", sample.notes);
  writeField(out, "children", sample.children);
  writeField(out, "code", sample.code);
  writeField(out, "label", sample.label);
  writeField(out, "path", sample.path);
  writeField(out, "last", &sample.last);
  out << "}";
  return out.str();
}
