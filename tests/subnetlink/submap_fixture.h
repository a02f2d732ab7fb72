// The subnet-link buffer on the scripted platform; each test has a fresh one.
#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

#include "platform_test.h"
#include "submapbufmgr.h"

namespace emf::test {

class SubmapTest : public emf::doubles::PlatformTest {
 protected:
  ~SubmapTest() override { SubmapBufMgr::Destroy(); }

  static SubmapBufMgr& buffer() { return *SubmapBufMgr::Instance(); }
  static std::string link(unsigned long device) {
    std::string text = "left over";
    buffer().GetSubmapName(text, device);
    return text;
  }
  // The link that the buffer holds for a subnet; empty when it holds none.
  static std::string subnetLink(const std::string& key) {
    return buffer().getParentLinkSubnetName(key, std::vector<Json::Value>());
  }
};

}  // namespace emf::test
