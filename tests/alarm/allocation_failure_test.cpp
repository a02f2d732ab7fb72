// Every allocation of a piece of work fails once: the failure is told, nothing is leaked and what
// was there can be used on.
#include <gtest/gtest.h>

#include <list>
#include <new>

#include "failing_allocation.h"
#include "faultquery.h"
#include "message_walk.h"
#include "platform.h"

namespace emf::test {
namespace {

using emf::doubles::platform;

// Runs `work` with its first allocation failing, then the second and so on, until it succeeds; how
// often it failed.
template <typename Work>
long failuresOf(Work work) {
  work();  // fills what lives as long as the process
  for (long number = 1;; ++number) {
    const long before = allocationsInUse();
    bool thrown = false;
    failAllocation(number);
    try {
      work();
    } catch (const std::bad_alloc&) {
      thrown = true;
    } catch (CSM_Exception* failure) {
      ADD_FAILURE() << failure->message();
      delete failure;
    }
    const bool failed = allocationFailed();
    failAllocation(0);
    EXPECT_EQ(allocationsInUse(), before) << "at allocation " << number;
    EXPECT_EQ(thrown, failed) << "at allocation " << number;
    if (!failed) return number - 1;
  }
}

void fillReply(AsnSvrToOtherQryResp& reply) {
  Randomness random(21);
  fill(reply, random);
  for (int i = 0; i < 3; ++i) fill(reply.lstItem.add(), random);
}

TEST(AllocationFailure, DecodingAFrame) {
  AsnSvrToOtherQryResp reply;
  fillReply(reply);
  for (const AsnTagging tagging : {AsnTagging::Implicit, AsnTagging::Explicit}) {
    const std::string bytes = encoded(reply, tagging);
    EXPECT_GT(failuresOf([&] {
                AsnSvrToOtherQryResp decoded;
                decode(decoded, bytes, tagging);
              }),
              20);
  }
}

TEST(AllocationFailure, DecodingIntoAFrameThatIsKept) {
  AsnSvrToOtherQryResp reply;
  fillReply(reply);
  const std::string bytes = encoded(reply);
  AsnSvrToOtherQryResp kept;
  EXPECT_GT(failuresOf([&] {
              kept.lstItem.clear();
              try {
                decode(kept, bytes);
              } catch (...) {
                kept.lstItem.clear();  // as it was before
                throw;
              }
              kept.lstItem.clear();
            }),
            20);
  decode(kept, bytes);
  EXPECT_TRUE(same(kept, reply));
}

TEST(AllocationFailure, DecodingARequest) {
  Randomness random(22);
  AsnOtherToSvrQryAlmEventReq request;
  setPresent(request, 0x7FF);
  fill(request, random);
  const std::string bytes = encoded(request);
  EXPECT_GT(failuresOf([&] {
              AsnOtherToSvrQryAlmEventReq decoded;
              decode(decoded, bytes);
            }),
            15);
}

TEST(AllocationFailure, CopyingAndEncoding) {
  AsnSvrToOtherQryResp reply;
  fillReply(reply);
  EXPECT_GT(failuresOf([&] {
              AsnSvrToOtherQryResp copy;
              copy.Assign(reply);
            }),
            20);
  EXPECT_GT(failuresOf([&] { const std::unique_ptr<AsnSvrToOtherQryResp> clone(reply.clone()); }),
            20);
  EXPECT_GT(failuresOf([&] {
              AsnBuf buffer;
              reply.BEnc(buffer, NIClass_EncodingFormat_BER);
            }),
            0);
}

TEST(AllocationFailure, MakingMessagesAndLists) {
  EXPECT_EQ(failuresOf([] { AsnOtherToSvrQryAlmEventReq request; }), 2);
  EXPECT_EQ(failuresOf([] {
              ASNULList list;
              list.add();
            }),
            2);
}

}  // namespace
}  // namespace emf::test
