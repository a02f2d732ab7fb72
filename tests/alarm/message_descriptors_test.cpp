#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <thread>
#include <vector>

#include "message_table.h"
#include "message_walk.h"

namespace emf::test {
namespace {

template <typename MessageType>
struct Agreed {
  using Message = MessageType;
  const char* name;
  const std::vector<FieldRow>& fields;
};

const auto kMessages =
    std::tuple(Agreed<AsnOtherToSvrQryAlmEventReq>{"AsnOtherToSvrQryAlmEventReq", kRequest},
               Agreed<AsnSvrToOtherQryResp>{"AsnSvrToOtherQryResp", kReply},
               Agreed<AsnSvrToOtherQryRespResultStrc>{"AsnSvrToOtherQryRespResultStrc", kItem},
               Agreed<AsnDistinguishedResource>{"AsnDistinguishedResource", kResource},
               Agreed<AsnRelation>{"AsnRelation", kRelation},
               Agreed<AsnAlmQryExtendCondition>{"AsnAlmQryExtendCondition", kCondition},
               Agreed<AsnAddiInfo>{"AsnAddiInfo", kColumn},
               Agreed<AsnoFMSDateTimeStrc>{"AsnoFMSDateTimeStrc", kDateTime},
               Agreed<AsnAlmKeyStrc>{"AsnAlmKeyStrc", kAlarmKey});

template <typename Check>
void forEachMessage(Check check) {
  std::apply([&check](const auto&... message) { (check(message), ...); }, kMessages);
}

// The name of the type that a record describes.
std::string typeOf(const refl::CGnlTypeInfor& type) {
  switch (type.kind) {
    case refl::Enum::BasicKind:
      return type.basic->name();
    case refl::Enum::ClassKind:
      return type.described->name();
    case refl::Enum::CustomKind:
      return type.name;
    default:
      return "no type";
  }
}

unsigned char flagOf(Held held) {
  return held == Held::Required ? 0x12 : held == Held::Optional ? 0x19 : 0;
}

const refl::CClassInfor& descriptorOf(const AsnSequence& message) {
  refl::CRefrence reference;
  message.reflect(reference);
  EXPECT_EQ(reference.object, &message);
  return *reference.infor;
}

std::vector<refl::CAttribInfor> attributesOf(const refl::CClassInfor& infor) {
  return {infor.attributes().begin(), infor.attributes().end()};
}

TEST(MessageDescriptor, ListsTheFieldsInTheirOrder) {
  forEachMessage([](const auto& agreed) {
    const typename std::decay_t<decltype(agreed)>::Message message;
    const refl::CClassInfor& infor = descriptorOf(message);
    EXPECT_STREQ(infor.name(), agreed.name);
    EXPECT_STREQ(message.typeName(), agreed.name);
    EXPECT_EQ(infor.size(), sizeof message);
    const auto attributes = attributesOf(infor);
    ASSERT_EQ(attributes.size(), agreed.fields.size()) << agreed.name;
    for (std::size_t i = 0; i < agreed.fields.size(); ++i) {
      const refl::CAttribInfor& attribute = attributes[i];
      const FieldRow& row = agreed.fields[i];
      EXPECT_STREQ(attribute.name, row.name) << agreed.name;
      EXPECT_EQ(attribute.tag, row.tag) << agreed.name << "::" << row.name;
      EXPECT_EQ(attribute.access, refl::Enum::Public);
      EXPECT_EQ(typeOf(attribute.type), row.type) << agreed.name << "::" << row.name;
      EXPECT_EQ(attribute.type.flags, flagOf(row.held)) << agreed.name << "::" << row.name;
    }
  });
}

TEST(MessageDescriptor, FieldsLieInTheirOrder) {
  forEachMessage([](const auto& agreed) {
    const typename std::decay_t<decltype(agreed)>::Message message;
    std::size_t end = sizeof(void*);
    std::size_t index = 0;
    const auto attributes = attributesOf(descriptorOf(message));
    forEachField(message, [&](const char* name, const auto& member) {
      const auto& attribute = attributes[index++];
      EXPECT_EQ(reinterpret_cast<const char*>(&message) + attribute.position,
                reinterpret_cast<const char*>(&member))
          << name;
      EXPECT_GE(attribute.position, end) << name;
      end = attribute.position + sizeof member;
    });
    EXPECT_LE(end, sizeof message);
  });
}

TEST(MessageDescriptor, BasicTypesHaveTheirCodes) {
  for (const auto& attribute : AsnAddiInfo::descriptor().attributes()) {
    EXPECT_EQ(attribute.type.kind, 0x70);
    const bool isText = std::string(attribute.name) != "type";
    EXPECT_EQ(attribute.type.basic->typeCode(), isText ? 45 : 14);
    EXPECT_EQ(attribute.type.basic->universalTag(), isText ? 4 : 2);
  }
}

TEST(MessageDescriptor, SequencesAndListsHaveTheirKinds) {
  const auto attributes = attributesOf(AsnSvrToOtherQryRespResultStrc::descriptor());
  EXPECT_EQ(attributes[15].type.kind, 1);
  EXPECT_EQ(attributes[15].type.described, &AsnoFMSDateTimeStrc::descriptor());
  EXPECT_EQ(attributes[24].type.kind, refl::Enum::CustomKind);
  EXPECT_EQ(attributes[24].type.mark, 41);
  EXPECT_EQ(attributes[24].type.size, sizeof(AsnSvrToOtherQryRespResultStrcSeqOf));
}

TEST(MessageDescriptor, CreatorsMakeAndDestroyersDelete) {
  forEachMessage([](const auto& agreed) {
    using Message = typename std::decay_t<decltype(agreed)>::Message;
    const refl::CClassInfor& infor = Message::descriptor();
    void* made = infor.creator()();
    EXPECT_TRUE(same(*static_cast<Message*>(made), Message())) << agreed.name;
    infor.destroyer()(made);
    for (const auto& attribute : infor.attributes()) {
      if (attribute.type.kind != refl::Enum::CustomKind) continue;
      void* list = attribute.type.creator();
      EXPECT_STREQ(static_cast<AsnListBase*>(list)->typeName(), attribute.type.name);
      attribute.type.destroyer(list);
    }
  });
}

TEST(MessageDescriptor, IsFilledOnce) {
  const refl::CClassInfor& first = AsnRelation::descriptor();
  EXPECT_EQ(&AsnRelation::descriptor(), &first);
  EXPECT_EQ(first.attributes().size(), 3U);
}

TEST(FreshMessage, HasZerosEmptyTextsEmptyListsAndNoOptionalField) {
  forEachMessage([](const auto& agreed) {
    const typename std::decay_t<decltype(agreed)>::Message message;
    forEachField(message, [&agreed](const char* name, const auto& member) {
      using Member = std::decay_t<decltype(member)>;
      if constexpr (kIsOptional<Member>) {
        EXPECT_EQ(valueOf(member), nullptr) << agreed.name << "::" << name;
      } else if constexpr (std::is_same_v<Member, AsnInt>) {
        EXPECT_EQ(int{member}, 0) << agreed.name << "::" << name;
      } else if constexpr (std::is_same_v<Member, AsnOcts>) {
        EXPECT_EQ(member.bytes().size(), 0U) << agreed.name << "::" << name;
      } else if constexpr (std::is_same_v<Member, RequiredField<AsnoFMSDateTimeStrc>>) {
        EXPECT_TRUE(same(*member, AsnoFMSDateTimeStrc())) << agreed.name << "::" << name;
      } else {
        EXPECT_EQ(member.count(), 0U) << agreed.name << "::" << name;
        EXPECT_TRUE(member.empty()) << agreed.name << "::" << name;
      }
    });
  });
}

TEST(FreshMessage, OptionalFieldsAreHeldByPointer) {
  static_assert(sizeof(OptionalField<AsnOcts, 5>) == sizeof(AsnOcts*));
  static_assert(sizeof(RequiredField<AsnoFMSDateTimeStrc>) == sizeof(void*));
  static_assert(std::is_standard_layout_v<OptionalField<AsnOcts, 5>>);
  static_assert(std::is_standard_layout_v<RequiredField<AsnoFMSDateTimeStrc>>);
}

TEST(Message, CopiesAreDeepAndLeaveTheSourceAlone) {
  Randomness random(1);
  forEachMessage([&random](const auto& agreed) {
    using Message = typename std::decay_t<decltype(agreed)>::Message;
    for (int i = 0; i < 50; ++i) {
      auto source = std::make_unique<Message>();
      fill(*source, random);
      const std::string before = xml(*source);
      const std::unique_ptr<Message> clone(source->clone());
      Message assigned;
      fill(assigned, random);
      assigned.Assign(*source);
      EXPECT_EQ(xml(*source), before) << agreed.name;
      source.reset();
      EXPECT_EQ(xml(*clone), before) << agreed.name;
      EXPECT_EQ(xml(assigned), before) << agreed.name;
      assigned.Assign(assigned);
      EXPECT_EQ(xml(assigned), before) << agreed.name;
    }
  });
}

TEST(Message, PrintsNamesAndValuesOfWhatIsThere) {
  AsnDistinguishedResource resource;
  resource.resDN.ReSet("NE=12");
  resource.subtype.make() = 7;
  std::ostringstream text;
  resource.Print(text);
  EXPECT_EQ(
      text.str(), "resDN: " + [] {
        std::ostringstream value;
        AsnOcts("NE=12").Print(value);
        return value.str();
      }() + "\nsubtype: 7");
}

}  // namespace
}  // namespace emf::test
