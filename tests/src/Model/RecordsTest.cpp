#include <gtest/gtest.h>

#include "Model/OvFarm.h"
#include "Model/RecordCoding.h"
#include "Platform/KeyedArchive.h"

namespace {

// Through the bytes of an archive and back.
template <class Record>
Record archivedAndRead(const Record& record) {
  orvane::KeyedArchiver archiver;
  archiver.encodeObject("root", Record::kArchiveClass,
                        [&](orvane::KeyedArchiver& fields) { record.encodeWithCoder(fields); });
  return Record(orvane::openKeyedArchive(archiver.finish()).object("root", Record::kArchiveClass).value());
}

void change(std::string& value) { value += "changed"; }
void change(SecretText& value) { value = SecretText("changed"); }
void change(bool& value) { value = !value; }
void change(int32_t& value) { value -= 7; }
void change(std::vector<std::string>& value) { value.insert(value.end(), {"one", "two"}); }
void change(OvLocationList& value) { value.push_back(OvLocation::location()); }
void change(OvCredentials& value) { value.setPreferredDomain("changed"); }
void change(OvDisplay& value) { value.setColor(15); }
void change(OvResources& value) { value.setSound(2); }
void change(OvPerformance& value) { value.setConnectionSpeed(1); }

template <class Record>
class RecordTest : public testing::Test {
 protected:
  // One in which nothing is computed from something else when it is read.
  static Record sample() {
    Record record;
    if constexpr (std::is_same_v<Record, OvDisplay>) {
      record.setCustomWidth(1);
      record.setCustomHeight(2);
    }
    if constexpr (std::is_same_v<Record, OvFarmConfiguration>)
      record.display().setCustomWidth(1), record.display().setCustomHeight(2);
    return record;
  }
};

using Records = testing::Types<OvLocation, OvCredentials, OvDisplay, OvResources, OvPerformance, OvFarmConfiguration>;
TYPED_TEST_SUITE(RecordTest, Records);

TYPED_TEST(RecordTest, EveryFieldIsComparedCopiedAndArchived) {
  const auto walk = [&](const auto& row) {
    SCOPED_TRACE(row.key == nullptr ? "password" : row.key);
    const TypeParam original = this->sample();
    TypeParam changed = original;
    EXPECT_TRUE(changed == original);
    change(changed.*row.member);
    EXPECT_FALSE(changed == original);
    EXPECT_FALSE(original == changed);
    EXPECT_TRUE(TypeParam(changed) == changed);

    using Form = typename orvane::Archiving<TypeParam>::Form;
    const auto& [form, onlyIf] = row.archiving;
    if (onlyIf != nullptr) {
      EXPECT_TRUE(archivedAndRead(changed) == original) << "though its switch is off";
      changed.*onlyIf = true;
    }
    EXPECT_TRUE(archivedAndRead(changed) == (form == Form::kNever ? original : changed));
  };
  std::apply([&](const auto&... row) { (walk(row), ...); }, TypeParam::fields());
}

TYPED_TEST(RecordTest, WhatAnArchiveLacksIsZero) {
  orvane::KeyedArchiver archiver;
  archiver.encodeObject("root", TypeParam::kArchiveClass, [](orvane::KeyedArchiver&) {});
  const TypeParam record(orvane::openKeyedArchive(archiver.finish()).object("root", TypeParam::kArchiveClass).value());
  const auto expectZero = [&](const auto& row) {
    EXPECT_TRUE(record.*row.member == std::decay_t<decltype(record.*row.member)>()) << row.key;
  };
  std::apply([&](const auto&... row) { (expectZero(row), ...); }, TypeParam::fields());
}

TEST(LocationTest, NumbersAreArchivedAsTexts) {
  struct Case {
    const char* text;
    int32_t number;
  };
  for (const auto& [text, number] : std::initializer_list<Case>{
           {"443", 443}, {" -12abc", -12}, {"", 0}, {"port", 0}, {"99999999999999999999", 2147483647}}) {
    EXPECT_EQ(orvane::integerOfText(text), number) << text;
  }
  OvLocation location;
  location.setPort(443);
  orvane::KeyedArchiver archiver;
  location.encodeWithCoder(archiver);
  EXPECT_EQ(orvane::openKeyedArchive(archiver.finish()).string("port"), "443");
}

TEST(CredentialsTest, ForgettingKeepsWhatIsNotTheUsers) {
  OvCredentials full;
  full.setUsername("user");
  full.setPassword(SecretText("secret"));
  full.setDomain("DOMAIN");
  full.setPreferredDomain("PREFERRED");
  full.setDisableUserDomain(true);
  full.setCredentialsAreValid(true);
  EXPECT_FALSE(full.isEmpty());

  OvCredentials configurationOnly;
  configurationOnly.setPreferredDomain("PREFERRED");
  configurationOnly.setDisableUserDomain(true);
  EXPECT_TRUE(configurationOnly.isEmpty());

  OvCredentials cleared = full;
  cleared.invalidateCredentials();
  EXPECT_TRUE(cleared == configurationOnly) << "not to be saved: the user goes too";

  OvCredentials saved = full;
  saved.setNeedToSave(true);
  OvCredentials refused = saved;
  refused.invalidateCredentials();
  saved.setPassword({});
  saved.setCredentialsAreValid(false);
  EXPECT_TRUE(refused == saved);
  refused.clear();
  EXPECT_TRUE(refused == configurationOnly);

  OvCredentials taken;
  taken.setEqualToCredentials(nullptr);
  EXPECT_TRUE(taken == OvCredentials());
  taken.setEqualToCredentials(&full);
  EXPECT_TRUE(taken == full);
}

TEST(DisplayTest, ACustomSizeOfNothingIsTheSize) {
  OvDisplay display;
  display.setWidth(1024);
  display.setCustomHeight(700);
  const OvDisplay read = archivedAndRead(display);
  EXPECT_EQ(read.customWidth(), 1024);
  EXPECT_EQ(read.customHeight(), 700);
}

}  // namespace
