#include "processexception.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <type_traits>

#include "processfailure.h"

namespace {

static_assert(std::is_base_of_v<std::exception, ProcessException>);
static_assert(std::is_base_of_v<ProcessException, InterfaceNotExistException>);
// Copying takes a source that it may change, and nothing else constructs with arguments.
static_assert(std::is_constructible_v<ProcessException, ProcessException&>);
static_assert(!std::is_constructible_v<ProcessException, const ProcessException&>);
static_assert(!std::is_constructible_v<ProcessException, int>);
static_assert(sizeof(InterfaceNotExistException) == sizeof(ProcessException));

std::string restOf(std::stringstream& stream) {
  std::string text;
  std::getline(stream, text, '\0');
  return text;
}

void fill(ProcessException& failure) {
  failure.errCode = 0x411800BA;
  failure.line = 42;
  failure.file << "emfalminterface";
  failure.function << "unknown";
  failure.reserved << "kept";
  failure.detail << "ErrCode:1,Detail:two words";
}

TEST(ProcessException, StartsWithNothingInIt) {
  ProcessException failure;
  EXPECT_EQ(failure.errCode, 0);
  EXPECT_EQ(failure.line, 0);
  for (auto* stream : {&failure.file, &failure.function, &failure.reserved, &failure.detail}) {
    EXPECT_TRUE(stream->good());
    EXPECT_EQ(stream->str(), "");
  }
}

TEST(ProcessException, StreamsCanBeWrittenAndRead) {
  ProcessException failure;
  for (auto* stream : {&failure.file, &failure.function, &failure.reserved, &failure.detail}) {
    *stream << "text " << 7;
    EXPECT_EQ(restOf(*stream), "text 7");
  }
}

TEST(ProcessException, WhatIsTheStandardLibrarysText) {
  ProcessException failure;
  EXPECT_STREQ(failure.what(), std::exception().what());
}

TEST(ProcessException, CopyTakesEveryField) {
  ProcessException source;
  fill(source);
  ProcessException copy(source);
  EXPECT_EQ(copy.errCode, 0x411800BA);
  EXPECT_EQ(copy.line, 42);
  EXPECT_EQ(copy.file.str(), "emfalminterface");
  EXPECT_EQ(copy.function.str(), "unknown");
  EXPECT_EQ(copy.reserved.str(), "kept");
  EXPECT_EQ(copy.detail.str(), "ErrCode:1,Detail:two words");
  for (auto* stream : {&copy.file, &copy.function, &copy.reserved, &copy.detail}) {
    EXPECT_TRUE(stream->good());
  }
}

TEST(ProcessException, CopyDrainsTheSource) {
  ProcessException source;
  fill(source);
  ProcessException copy(source);
  EXPECT_EQ(source.errCode, 0x411800BA);
  EXPECT_EQ(source.line, 42);
  for (auto* stream : {&source.file, &source.function, &source.reserved, &source.detail}) {
    EXPECT_TRUE(stream->good());
    EXPECT_EQ(restOf(*stream), "");
  }
}

TEST(ProcessException, SecondCopyHasNoTexts) {
  ProcessException source;
  fill(source);
  ProcessException first(source);
  ProcessException second(source);
  EXPECT_EQ(second.errCode, 0x411800BA);
  EXPECT_EQ(second.line, 42);
  for (auto* stream : {&second.file, &second.function, &second.reserved, &second.detail}) {
    EXPECT_TRUE(stream->fail());
    EXPECT_EQ(stream->str(), "");
  }
}

TEST(ProcessException, CopyOfAnEmptyTextHasItsFailBitSet) {
  ProcessException source;
  source.file << "emfalminterface";
  ProcessException copy(source);
  EXPECT_FALSE(copy.file.fail());
  EXPECT_TRUE(copy.function.fail());
  EXPECT_TRUE(copy.reserved.fail());
  EXPECT_TRUE(copy.detail.fail());
  EXPECT_TRUE(source.function.good());
}

TEST(ProcessException, PartlyReadSourceGivesWhatIsLeft) {
  ProcessException source;
  source.detail << "one two";
  std::string read;
  source.detail >> read;
  ProcessException copy(source);
  EXPECT_EQ(copy.detail.str(), " two");
}

TEST(ProcessFailure, ThrownExceptionCarriesCodeLineSourceAndDetail) {
  try {
    emf::throwProcessException(0x41180035, "emfalminterface", 77, "no answer");
    FAIL() << "nothing was thrown";
  } catch (ProcessException& failure) {
    EXPECT_EQ(failure.errCode, 0x41180035);
    EXPECT_EQ(failure.line, 77);
    EXPECT_EQ(failure.file.str(), "emfalminterface");
    EXPECT_EQ(failure.function.str(), "unknown");
    EXPECT_EQ(failure.reserved.str(), "");
    EXPECT_TRUE(failure.reserved.fail());
    EXPECT_EQ(failure.detail.str(), "ErrCode:1092091957,Detail:no answer");
  }
}

TEST(ProcessFailure, NegativeCodeIsWrittenInDecimal) {
  try {
    emf::throwProcessException(-1, "emfalminterface", 1, "%s %n");
    FAIL() << "nothing was thrown";
  } catch (ProcessException& failure) {
    EXPECT_EQ(failure.detail.str(), "ErrCode:-1,Detail:%s %n");
  }
}

TEST(InterfaceNotExistException, HasItsCodeAndNothingElse) {
  InterfaceNotExistException failure;
  EXPECT_EQ(failure.errCode, 1092091908);
  EXPECT_EQ(failure.errCode, 0x41180004);
  EXPECT_EQ(failure.line, 0);
  for (auto* stream : {&failure.file, &failure.function, &failure.reserved, &failure.detail}) {
    EXPECT_EQ(stream->str(), "");
  }
}

TEST(InterfaceNotExistException, IsCaughtAsProcessExceptionWithItsCode) {
  int caught = 0;
  try {
    InterfaceNotExistException failure;
    throw failure;
  } catch (ProcessException& failure) {
    caught = failure.errCode;
  }
  EXPECT_EQ(caught, 0x41180004);
}

TEST(InterfaceNotExistException, CodeSurvivesTheCopyOfWhatWasCaught) {
  try {
    throw InterfaceNotExistException();
  } catch (ProcessException& failure) {
    ProcessException copy(failure);
    EXPECT_EQ(copy.errCode, 0x41180004);
  }
}

}  // namespace
