// An installation directory with resource files, and the table that reads them.
#pragma once

#include <string>

#include "corbaemfinterface.h"
#include "platform_test.h"
#include "temp_directory.h"

namespace emf::test {

class ErrorTableTest : public emf::doubles::PlatformTest {
 protected:
  ErrorTableTest() {
    std::filesystem::create_directories(installation_.path() / "agent");
    std::filesystem::create_directories(installation_.path() / "etc/nbires/en_US");
    emf::doubles::platform().config.environment(environment());
  }
  ~ErrorTableTest() override { CAEmfMcdbErrorCodeMgr::Destroy(); }

  // The base directory; the resource files lie beside it.
  std::string environment() const { return (installation_.path() / "agent").string(); }
  // The path under which the table reads a file of that name.
  std::string pathOf(const std::string& name, const std::string& language = "en_US") const {
    return environment() + "/../etc/nbires/" + language + "/" + name;
  }
  std::filesystem::path write(const std::string& name, const std::string& content,
                              const std::string& language = "en_US") const {
    return installation_.write("etc/nbires/" + language + "/" + name, content);
  }

  CAEmfMcdbErrorCodeMgr& table() const { return *CAEmfMcdbErrorCodeMgr::Instance(); }
  std::string textOf(unsigned long code) const {
    std::string text = "left over";
    table().GetErrorInfo(text, code);
    return text;
  }

  emf::doubles::TempDirectory installation_;
};

// The line that reports a file that cannot be opened.
MATCHER_P(ReportsUnopened, path, "") {
  return arg.log == "ii_orma_corbaagent_bundle/ii_ormacorba_emf/debug" && arg.call == "LogText" &&
         arg.file == "corbaemfinterface" && arg.function == "unknown" && arg.line > 0 &&
         arg.level == 1 && arg.text == std::string("Open file failed :") + path;
}

}  // namespace emf::test
