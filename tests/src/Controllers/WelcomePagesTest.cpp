#include <gtest/gtest.h>

#include "Controllers/ChooseLocationViewController.h"
#include "Controllers/InputCredentialsViewController.h"
#include "Controllers/InputUrlViewController.h"
#include "Support/FakeTimer.h"
#include "Support/PumpedQueue.h"

namespace {

using namespace std::chrono_literals;

TEST(WelcomePagesTest, ADomainInTheUserNameCountsAndOnlyChangesAreTold) {
  struct Observer : UPNFormatterObserver {
    void handleUpnUsingChanged(bool useUPN) override { told += useUPN ? "+" : "-"; }
    std::string told;
  } observer;
  UPNFormatter formatter(observer);
  for (const char* text : {"ann", "ann@", "OFFICE\\ann", "@ann", "\\ann", "@a@b", "@\\", "\\@", ""}) {
    observer.told += text;
    formatter.setObjectValue(text);
  }
  EXPECT_EQ(observer.told, "annann@+OFFICE\\ann@ann-\\ann@a@b@\\+\\@-");
}

TEST(WelcomePagesTest, AnAddressIsAnsweredOnceAsItIs) {
  InputUrlViewController page;
  std::string answers;
  const auto done = [&](const std::optional<std::string>& url) { answers += "[" + url.value_or("none") + "]"; };
  page.setupWithURL("", done);
  EXPECT_FALSE(page.isNextEnabled());
  page.onNextClick();
  page.setUrlToConnect(" any thing ");
  page.onNextClick(), page.onNextClick(), page.onCancelClick();
  page.setupWithURL("", [&](const auto&) { page.setupWithURL("anew", done); });
  page.onCancelClick(), page.onNextClick();
  page.setupWithURL("", done);
  page.onCancelClick();
  page.setupWithURL("unanswered", done);
  page.resetContent(), page.onCancelClick();
  EXPECT_EQ(answers, "[ any thing ][anew][none]");
}

TEST(WelcomePagesTest, CredentialsAreShownTypedAndAnsweredOnce) {
  // Shown is the domain, with "-" if it is hidden at first, and again if it is so after the typing.
  using Row = std::tuple<OvCredentials, bool, std::optional<std::string>, std::string, std::string>;
  const auto given = [](const char* user, const char* domain, const char* preferredDomain, bool isSaved = false,
                        bool disablesDomain = false) {
    OvCredentials credentials;
    credentials.setUsername(user);
    credentials.setPassword("old");
    credentials.setDomain(domain);
    credentials.setPreferredDomain(preferredDomain);
    credentials.setNeedToSave(isSaved);
    credentials.setDisableUserDomain(disablesDomain);
    return credentials;
  };
  InputCredentialsViewController page;  // one for all: nothing may stay
  int focused = 0;
  page.setOnFocus([&](InputCredentialsFocus) { ++focused; });
  std::string answers;
  const auto done = [&](const std::optional<OvCredentials>& user) {
    answers += !user ? "none"
                     : user->username() + ":" + user->password().text() + "@" + user->domain() +
                           (user->needToSave() ? " saved" : "");
  };
  const auto hidden = [&] { return page.isDomainHidden() ? "-" : ""; };
  for (const auto& [credentials, disallowsSave, typed, shown, answer] :
       {Row(given("ann", "home", "office", true), false, {}, "home", "ann:old@home saved"),
        Row(given("ann", "", "office"), false, {}, "office", "ann:old@office"),
        Row(given("ann", "home", "", true), true, {}, "home", "ann:old@home"),
        Row(given("ann", "home", ""), false, "ann@lab", "home-", "ann@lab:old@"),
        Row(given("LAB\\ann", "home", ""), false, {}, "home--", "LAB\\ann:old@"),
        Row(given("ann@lab", "home", ""), false, "@ann", "home-", "@ann:old@home"),
        Row(given("ann@lab", "home", "", false, true), false, "bob", "home--", "bob:old@home"),
        Row(given("", "", ""), false, {}, "", ""),  // Next is not enabled
        Row(given("ann", "", ""), false, "", "", "")}) {
    SCOPED_TRACE(answer);
    page.showError("Wrong.");
    page.setupWithCredentials(&credentials, disallowsSave, done);
    EXPECT_EQ(std::exchange(focused, 0), 1);
    EXPECT_FALSE(page.errorText());
    EXPECT_EQ(page.userName(), credentials.username());
    EXPECT_EQ(page.isSaveBoxHidden(), disallowsSave);
    const std::string before = page.domain() + hidden();
    if (typed) page.setUserName(*typed);
    EXPECT_EQ(before + hidden(), shown);
    EXPECT_EQ(page.isNextEnabled(), !answer.empty());
    page.onConnectClick(), page.onConnectClick();
    EXPECT_EQ(std::exchange(answers, {}), answer);
    if (!answer.empty()) {
      EXPECT_EQ(page.userName() + page.domain() + (page.hasPassword() ? "?" : ""), "");
    }
  }
  for (const char* end : {"bob:new@lab saved", "none", ""}) {
    page.setupWithCredentials(nullptr, false, done);
    page.setUserName("bob"), page.setPassword("new"), page.setDomain("lab"), page.setNeedToSave(true);
    *end == 'b' ? page.onConnectClick() : page.resetContentWithBlockPerform(*end == 'n');
    page.onCancelClick();
    EXPECT_EQ(std::exchange(answers, {}), end);
    EXPECT_FALSE(page.hasPassword());
  }
}

TEST(WelcomePagesTest, ALocationIsChosenOrTheTitleTurnsRedForASecond) {
  const auto clock = std::make_shared<FakeTimer>();
  const auto mainQueue = std::make_shared<PumpedQueue>();
  ChooseLocationViewController page(clock, mainQueue);
  const auto isRedAfter = [&](std::chrono::milliseconds time) {
    clock->advance(time);
    mainQueue->pump();
    return page.isTitleRed();
  };
  const auto farm = std::make_shared<OvFarm>();
  for (const char* name : {"Home", "Lab", "Office"}) {
    farm->addLocation(OvLocation::location());
    farm->locations().back()->setName(name);
  }
  std::string answers;
  const auto chosen = [&](const auto& location) { answers += "[" + (location ? location->name() : "none") + "]"; };

  page.setupWithFarm(farm, chosen, true);
  EXPECT_TRUE(page.isSuccessHeaderVisible());
  EXPECT_EQ(page.cancelTitle(), "Skip");
  EXPECT_EQ(page.locationNames(), (std::vector<std::string>{"Home", "Lab", "Office"}));
  page.selectLocation(3);  // there is none
  page.onConnectClick();
  EXPECT_TRUE(isRedAfter(600ms));
  page.onConnectClick();
  EXPECT_TRUE(isRedAfter(999ms));
  EXPECT_FALSE(isRedAfter(1ms));
  for (const bool performs : {true, false}) {
    farm->setPrefferedLocationName("Lab");
    page.setupWithFarm(farm, chosen, false);
    EXPECT_EQ(page.selectedLocation(), 1U);
    EXPECT_EQ(page.cancelTitle(), "Cancel");
    page.resetContentWithBlockPerform(performs), page.onConnectClick(), page.onCancelClick();
  }
  page.setupWithFarm(farm, chosen, false);
  page.selectLocation(2);
  farm->locations().clear();  // while the page is up
  page.onConnectClick(), page.onConnectClick();
  EXPECT_EQ(answers, "[none][Office]");
}

}  // namespace
