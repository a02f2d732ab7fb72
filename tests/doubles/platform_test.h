// The fixture of tests against the doubles: each test starts on an untouched platform.
#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform.h"

namespace emf::doubles {

class PlatformTest : public ::testing::Test {
 protected:
  PlatformTest() { platform().reset(); }
  ~PlatformTest() override { platform().reset(); }
};

}  // namespace emf::doubles
