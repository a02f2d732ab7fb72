// The plug-in and the installed library together: the plug-in finds it by its name, and what it
// hands out lives on although the library was closed.
#include <gtest/gtest.h>

#include "emfresinterface.h"
#include "orma/access/prdu_res_info_convert.h"

namespace {

TEST(AccessConversion, InstanceIsUsableAfterThePlugInClosedTheLibrary) {
  PRDU_ORMA::PrduResInfoConvert* instance = nullptr;
  ASSERT_EQ(EMFResMgrI::initAccessFdnConvertDll(instance), 0);
  ASSERT_NE(instance, nullptr);
  EXPECT_EQ(instance->Init(), 0);
  delete instance;
}

TEST(AccessConversion, LibraryIsLoadedAgainAndAgain) {
  PRDU_ORMA::PrduResInfoConvert* first = nullptr;
  PRDU_ORMA::PrduResInfoConvert* second = nullptr;
  ASSERT_EQ(EMFResMgrI::initAccessFdnConvertDll(first), 0);
  ASSERT_EQ(EMFResMgrI::initAccessFdnConvertDll(second), 0);
  EXPECT_NE(first, second);
  EXPECT_EQ(first->Init(), 0);
  delete first;
  EXPECT_EQ(second->Init(), 0);
  delete second;
}

}  // namespace
