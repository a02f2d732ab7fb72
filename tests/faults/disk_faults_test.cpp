// What the plug-in reads from disk itself: the list of device types at each call, the error texts
// when the service starts. Files that are missing, pipes, cut, damaged, in the wrong order, too
// large, gone and back.
#include <gmock/gmock.h>
#include <sys/stat.h>

#include <filesystem>

#include "corbaemfinterface.h"
#include "emfresinterface.h"
#include "fault_world.h"
#include "ormaemfsvc.h"

namespace emf::faults {
namespace {

using testing::HasSubstr;

using Types = std::map<int, std::string>;

constexpr char kTypesFile[] = "etc/oss_cfg/nbi/corba/conf/ii_orma_corbaagent_bundle/devicetype.cfg";

void makePipe(const std::string& path) { ASSERT_EQ(::mkfifo(path.c_str(), 0600), 0); }

class FaultMatrixDeviceTypes : public FaultWorld {
 protected:
  FaultMatrixDeviceTypes() {
    Json::Value root;
    root["installation"]["root"] = directory().path().string();
    configure(root);
    restore();
    before_ = Holdings::now();
    EXPECT_EQ(types(), whole());
  }
  ~FaultMatrixDeviceTypes() override {
    restore();
    EXPECT_EQ(types(), whole());
    EXPECT_EQ(Holdings::now(), before_);
  }

  void restore() const { write("# types\n\nOTHER=5\nACCESS=90,91,92\n"); }
  void write(const std::string& content) const {
    std::filesystem::remove_all(path());
    directory().write(kTypesFile, content);
  }
  std::string path() const { return file(kTypesFile); }

  static Types earlier() { return {{3, "earlier"}}; }
  static Types whole() { return {{90, "ACCESS"}, {91, "ACCESS"}, {92, "ACCESS"}}; }
  static Types types() {
    Types types = earlier();
    timeOf([&] { EXPECT_EQ(EMFResMgrI::getAccessNETypeList(types), 0); });
    return types;
  }
  Types typesOf(const std::string& content) const {
    write(content);
    return types();
  }

 private:
  Holdings before_;
};

TEST_F(FaultMatrixDeviceTypes, Refused) {
  std::filesystem::remove(path());
  EXPECT_EQ(types(), earlier());
  std::filesystem::create_directory(path());
  EXPECT_EQ(types(), earlier());
  std::filesystem::remove(path());
  std::filesystem::create_symlink("nothing", path());
  EXPECT_EQ(types(), earlier());
  configure(Json::objectValue);
  EXPECT_EQ(types(), earlier());
  Json::Value root;
  root["installation"]["root"] = directory().path().string();
  configure(root);
}

// A pipe into which nobody writes.
TEST_F(FaultMatrixDeviceTypes, Stalled) {
  std::filesystem::remove(path());
  makePipe(path());
  EXPECT_EQ(types(), earlier());
}

// Behind each byte: what there is counts, and never more.
TEST_F(FaultMatrixDeviceTypes, Cut) {
  const std::string content = "# types\nACCESS=90,91,92\n";
  const std::size_t value = content.find('=') + 1;
  for (std::size_t size = 0; size < content.size(); ++size) {
    SCOPED_TRACE(size);
    const Types found = typesOf(content.substr(0, size));
    for (const auto& [type, word] : found) {
      const int nine = 9 + 268389720;  // of the platform's own types
      EXPECT_TRUE(whole().count(type) == 1 || type == nine) << type;
      EXPECT_EQ(word, "ACCESS");
    }
    EXPECT_EQ(found.size(),
              size <= value ? 0 : std::min<std::size_t>(3, 1 + (size - value - 1) / 3));
  }
}

TEST_F(FaultMatrixDeviceTypes, Garbage) {
  for (const std::string& content : {std::string(4096, '\0'), std::string(4096, '\xff'),
                                     std::string("\x7f"
                                                 "ELF\x02\x01"),
                                     std::string("{\"ACCESS\": [90]}"), std::string("access=90\n"),
                                     std::string(" ACCESS=90\n")}) {
    EXPECT_EQ(typesOf(content), Types()) << content;
  }
}

TEST_F(FaultMatrixDeviceTypes, WrongTypeOfTheList) {
  EXPECT_EQ(typesOf("ACCESS\n"), Types());
  EXPECT_EQ(typesOf("ACCESS=\n"), Types());
  EXPECT_EQ(typesOf("ACCESS=text\n"), Types());
  EXPECT_EQ(typesOf(std::string("ACCESS=9\0,91\n", 13)).count(90), 0u);
}

TEST_F(FaultMatrixDeviceTypes, WrongOrder) {
  EXPECT_EQ(typesOf("ACCESS=92,91,90\nOTHER=5\n"), whole());
  EXPECT_EQ(typesOf("ACCESS=90\nACCESS=91\n"), (Types{{90, "ACCESS"}}));
}

TEST_F(FaultMatrixDeviceTypes, TooLarge) {
  logged();
  EXPECT_EQ(typesOf(std::string(1 << 20, 'x') + "\nACCESS=90,91,92\n"), whole());
  EXPECT_THAT(logged(), HasSubstr("line 1 of devicetype.cfg is longer than 510 bytes"));
  EXPECT_EQ(typesOf("ACCESS=" + std::string(1 << 20, '9') + "\n"), Types());
  EXPECT_EQ(typesOf("ACCESS=99999999999999999999\n").count(99), 0u);
}

TEST_F(FaultMatrixDeviceTypes, GoneAndBack) {
  for (int round = 0; round < 3; ++round) {
    EXPECT_EQ(types(), whole());
    std::filesystem::remove(path());
    EXPECT_EQ(types(), earlier());
    restore();
  }
}

// --- Error texts

class FaultMatrixErrorTexts : public FaultWorld {
 protected:
  FaultMatrixErrorTexts() {
    Json::Value root;
    root["installation"]["environment"] = file("agent");
    configure(root);
    std::filesystem::create_directories(file("agent"));
    directory().write("etc/nbires/en_US/one.res", "16=first\n17=second\n");
  }
  ~FaultMatrixErrorTexts() override { CAEmfMcdbErrorCodeMgr::Destroy(); }

  std::string resource(const std::string& name) const { return file("etc/nbires/en_US/" + name); }

  // The texts of some codes once a service has started and ended; nothing stays open behind it.
  std::vector<std::string> textsOfAService(const std::vector<unsigned long>& codes) {
    CAEmfMcdbErrorCodeMgr::Destroy();
    const Holdings before = Holdings::now();
    std::vector<std::string> texts;
    timeOf([&] {
      ACE_Service_Object_Exterminator deleter = nullptr;
      ACE_Service_Object* service = _make_ii_ormaiac_emf(&deleter);
      EXPECT_EQ(service->init(0, nullptr), 0);
      for (const unsigned long code : codes) {
        std::string text;
        CAEmfMcdbErrorCodeMgr::Instance()->GetErrorInfo(text, code);
        texts.push_back(text);
      }
      EXPECT_EQ(service->fini(), 0);
      deleter(service);
    });
    EXPECT_EQ(Holdings::now(), before);
    return texts;
  }
  void expectWhole() {
    EXPECT_EQ(textsOfAService({16, 17, 18}),
              (std::vector<std::string>{"first", "second", "unknown"}));
  }
  void expectUnknown() {
    EXPECT_EQ(textsOfAService({16, 17}), (std::vector<std::string>{"unknown", "unknown"}));
  }
};

TEST_F(FaultMatrixErrorTexts, Refused) {
  std::filesystem::create_symlink("nothing", resource("two.res"));
  logged();
  expectWhole();
  EXPECT_THAT(logged(),
              HasSubstr("Open file failed :" + file("agent") + "/../etc/nbires/en_US/two.res"));
  std::filesystem::remove_all(file("etc"));
  expectUnknown();
}

// A pipe into which nobody writes is no resource file.
TEST_F(FaultMatrixErrorTexts, Stalled) {
  makePipe(resource("pipe.res"));
  logged();
  expectWhole();
  EXPECT_THAT(logged(),
              HasSubstr("Open file failed :" + file("agent") + "/../etc/nbires/en_US/pipe.res"));
}

TEST_F(FaultMatrixErrorTexts, Cut) {
  const std::string content = "16=first\n17=second\n";
  for (std::size_t size = 0; size < content.size(); ++size) {
    directory().write("etc/nbires/en_US/one.res", content.substr(0, size));
    const auto texts = textsOfAService({16});
    const std::string text = size > 3 ? content.substr(3, std::min<std::size_t>(5, size - 3)) : "";
    EXPECT_THAT(texts[0], testing::AnyOf(text, size <= 3 ? "unknown" : text)) << size;
  }
}

TEST_F(FaultMatrixErrorTexts, Garbage) {
  directory().write("etc/nbires/en_US/two.res", std::string(100000, '\0'));
  directory().write("etc/nbires/en_US/three.res", std::string(100000, '\xff'));
  std::filesystem::create_directory(resource("directory"));
  expectWhole();
}

TEST_F(FaultMatrixErrorTexts, WrongTypeOfACode) {
  directory().write("etc/nbires/en_US/two.res", "text=zero\n99999999999999999999999=most\n18\n");
  EXPECT_EQ(textsOfAService({0, 16, 17, 18}),
            (std::vector<std::string>{"zero", "first", "second", "unknown"}));
}

TEST_F(FaultMatrixErrorTexts, TooLarge) {
  directory().write("etc/nbires/en_US/two.res", "18=" + std::string(1 << 20, 'x') +
                                                    "\n19=behind\n" + std::string(1 << 20, '2') +
                                                    "=code\n20=last\n");
  const auto texts = textsOfAService({16, 18, 19, 20});
  EXPECT_EQ(texts[0], "first");
  EXPECT_EQ(texts[1], std::string(2047, 'x'));
  EXPECT_EQ(texts[2], "behind");
  EXPECT_EQ(texts[3], "last");
}

TEST_F(FaultMatrixErrorTexts, GoneAndBack) {
  for (int round = 0; round < 3; ++round) {
    expectWhole();
    std::filesystem::rename(file("etc"), file("away"));
    expectUnknown();
    std::filesystem::rename(file("away"), file("etc"));
  }
  expectWhole();
}

// --- The access product's library

class FaultMatrixAccessLibrary : public FaultWorld {};

// What the loader finds first is no library: the instance stays as it was.
TEST_F(FaultMatrixAccessLibrary, Refused) {
  int placeholder = 0;
  auto* const untouched = reinterpret_cast<PRDU_ORMA::PrduResInfoConvert*>(&placeholder);
  PRDU_ORMA::PrduResInfoConvert* instance = untouched;
  EXPECT_EQ(EMFResMgrI::initAccessFdnConvertDll(instance), 1);
  const Holdings before = Holdings::now();
  EXPECT_EQ(EMFResMgrI::initAccessFdnConvertDll(instance), 1);
  EXPECT_EQ(instance, untouched);
  EXPECT_EQ(Holdings::now(), before);
}

}  // namespace
}  // namespace emf::faults
