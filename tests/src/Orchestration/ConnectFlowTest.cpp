#include <future>
#include <span>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "ConnectFixture.h"
#include "Orchestration/UrlEscaping.h"
#include "Support/IconStrings.h"

namespace {

using testing::ElementsAre;
using Kind = orvane::demo::Fault::Kind;
using Flow = ConnectFixture;

constexpr int kUtf8 = orvane::demo::kCapabilityUtf8;
constexpr int kLogInFirst =
    kUtf8 | orvane::demo::kCapabilityConnectorInfo | orvane::demo::kCapabilityConnectorInfoNeedsLogIn;

void answerWith(Flow& test, const std::string& name, const std::string& password) {
  test.delegate->credentials.push_back(Flow::user(name, password, false));
}
void offerUpdate(Flow& test, int choice) {
  test.broker.changeFarm([](auto& farm) { farm.connectorUpdate = {{"99.1", "new.deb", 1}}; });
  test.delegate->updateChoices = {choice};
}
void forgetUser(Flow& test) { test.farm->credentials().clear(); }
void allowAnonymous(Flow& test) {
  test.broker.changeFarm([](auto& farm) { farm.anonymousAllowed = true; });
}
// A farm that the search for configurations has found at a broker: it has nothing but a client.
void isNewFromBroker(Flow& test) {
  forgetUser(test);
  test.farm->locations().clear();
  test.location->setName("");
}

struct Case {
  const char* name;
  Flow::Change prepare;
  // As ConnectFixture tells them.
  const char* requests;
  const char* events;
  const char* stored;
};

const Case kCases[] = {
    {"a manual farm goes its way, configured or not", [](Flow& t) { t.know(); }, "BACPL", "done", "Theirs@Office ann"},
    {"a manual farm doesn't mind an unknown status", [](Flow& t) { t.know(), t.assign(9); }, "BACPL", "done",
     "Theirs@Office ann"},
    {"an old broker that tells no capabilities", [](Flow& t) { t.know(), t.setCapabilities({}); }, "BAPL", "done",
     "Theirs@Office ann"},
    {"an old broker that knows no such request", [](Flow& t) { t.know(), t.addFault(Kind::kRefuse, "brokerinfo"); },
     "BAPL", "done", "Theirs@Office ann"},
    {"a new farm is asked for a user last", [](Flow& t) { forgetUser(t), answerWith(t, "ann", "secret"); }, "BCAPL",
     "credentials, done", "none"},
    {"unless the broker wants that first",
     [](Flow& t) { forgetUser(t), t.setCapabilities(kLogInFirst), answerWith(t, "ann", "secret"); }, "BACPL",
     "credentials, done", "none"},
    {"a known farm is asked first", [](Flow& t) { forgetUser(t), t.know(), answerWith(t, "ann", "secret"); }, "BACPL",
     "credentials, done", "Theirs@Office ann"},
    {"a refused user is asked for again, and again",
     [](Flow& t) {
       t.farm->credentials().setPassword("wrong");
       t.know(), answerWith(t, "bob", "secret"), answerWith(t, "ann", "secret");
     },
     "BAAACPL", "credentials 1326, credentials 1326, done", "Theirs@Office ann"},
    {"marked invalid, they aren't even tried",
     [](Flow& t) { t.farm->credentials().setCredentialsAreValid(false), t.know(); }, "B", "credentials", "unsaved"},
    {"another refusal ends it", [](Flow& t) { t.know(), t.addFault(Kind::kErrorCode, "authenticate", 5); }, "BA",
     "failed 5", "Mine@ ann"},
    {"an anonymous farm asks for nobody",
     [](Flow& t) { forgetUser(t), t.farm->setAnonymousLogin(true), t.know(), allowAnonymous(t); }, "BACPL", "done",
     "Theirs@Office !"},
    {"nor when it is refused", [](Flow& t) { forgetUser(t), t.farm->setAnonymousLogin(true), t.know(); }, "BA",
     "failed 1326", "Mine@ !"},
    {"the connector's information fails",
     [](Flow& t) { t.know(), t.addFault(Kind::kErrorCode, "getconnectorinfo", 87); }, "BAC", "failed 87", "Mine@ ann"},
    {"an update is put off", [](Flow& t) { t.know(), offerUpdate(t, 2); }, "BACPL", "update 99.1, done",
     "Theirs@Office ann"},
    {"an update is installed", [](Flow& t) { t.know(), offerUpdate(t, 0); }, "BAC", "update 99.1, failed 2",
     "Mine@ ann"},
    {"an update is refused", [](Flow& t) { t.know(), offerUpdate(t, 1); }, "BAC", "update 99.1, failed 3", "Mine@ ann"},
    {"a managed farm has lost its configuration", [](Flow& t) { t.manage({"Office"}), t.know(); }, "BAC", "failed 7",
     "none"},
    {"a managed farm is current",
     [](Flow& t) {
       t.manage({"Home", "Office"}), t.know(), t.assign(1);
     },
     "BACPL", "done", "Theirs@Office ann"},
    {"its location is gone and one is left", [](Flow& t) { t.manage({"Home"}), t.know(), t.assign(1); }, "BACBAPL",
     "done", "Theirs@Home ann"},
    {"its location is another of that name",
     [](Flow& t) {
       t.manage({"Home", "Office"}), t.know(), t.assign(1);
       t.location->setDoUseSsl(true);
     },
     "BACBAPL", "done", "Theirs@Office ann"},
    {"its location is gone and two are left",
     [](Flow& t) {
       t.manage({"Home", "Lab"}), t.know(), t.assign(1), t.delegate->locations = {"Lab"};
     },
     "BACBAPL", "location, done", "Theirs@Lab ann"},
    {"and the user wants neither",
     [](Flow& t) {
       t.manage({"Home", "Lab"}), t.know(), t.assign(1);
     },
     "BAC", "location, failed 8", "Mine@ ann"},
    {"a status that means nothing", [](Flow& t) { t.manage({"Office"}), t.know(), t.assign(9); }, "BAC", "failed 8",
     "Mine@ ann"},
    {"a known farm gets a newer configuration", [](Flow& t) { t.manage({"Office"}), t.know(), t.assign(0); },
     "BACFBAPL", "notify, done", "Theirs@Office ann"},
    {"a new farm gets its first one, and a user for it",
     [](Flow& t) { isNewFromBroker(t), t.assign(0), answerWith(t, "ann", "secret"); }, "BCFBAPL", "credentials, done",
     "Theirs@Office ann"},
    {"one without logging in",
     [](Flow& t) { isNewFromBroker(t), t.assign(0, "AnonymousLogin=\"yes\""), allowAnonymous(t); }, "BCFBACPL", "done",
     "Theirs@Office !"},
    {"a manual farm becomes anonymous",
     [](Flow& t) { t.know(), t.assign(0, "AnonymousLogin=\"yes\""), allowAnonymous(t); }, "BACFBACPL", "notify, done",
     "Theirs@Office !"},
    {"a configuration with locations to choose from",
     [](Flow& t) {
       t.manage({"Office"}), t.know(), t.assign(0, "", {"Home", "Lab"}), t.delegate->locations = {"Home"};
     },
     "BACFBAPL", "notify, location, done", "Theirs@Home ann"},
    {"a configuration that isn't there",
     [](Flow& t) { t.manage({"Office"}), t.know(), t.assign(0), t.broker.changeFarm([](auto& f) { f.files = {}; }); },
     "BACF", "failed 6", "Mine@ ann"},
    {"a location without brokers", [](Flow& t) { t.manage({"Office"}), t.know(), t.assign(0, "", {"Office"}, ""); },
     "BACF", "notify, failed 12", "F@ ann"},
    {"its second look at the broker fails",
     [](Flow& t) {
       t.manage({"Home"}), t.know(), t.assign(1);
       t.broker.addFault({.kind = Kind::kEmptyBody, .request = "brokerinfo", .nth = 2});
     },
     "BACBAPL", "done", "Theirs@Home ann"},
    {"the farm's name can't be had", [](Flow& t) { t.know(), t.addFault(Kind::kErrorCode, "getfarmproperties", 5); },
     "BACP", "failed 5", "Mine@ ann"},
    {"the farm's name is no text",
     [](Flow& t) { t.know(), t.broker.changeFarm([](auto& farm) { farm.name = "\xff\xfe"; }); }, "BACPL", "done",
     "@Office ann"},
    {"the list can't be had", [](Flow& t) { t.know(), t.addFault(Kind::kErrorCode, "getapplicationlist", 5); }, "BACPL",
     "failed 14", "Theirs@Office ann"},
};

TEST(ConnectFlowTest, EveryBranchHasItsRequestsEventsAndStore) {
  for (const Case& row : kCases) {
    SCOPED_TRACE(row.name);
    Flow test;
    row.prepare(test);
    test.connect();
    EXPECT_EQ(test.requests(), row.requests);
    EXPECT_EQ(test.events(), row.events);
    EXPECT_EQ(test.stored(), row.stored);
    if (test.delegate->has("failed 14")) {
      EXPECT_EQ(test.delegate->error.description, "Broken.");
    }
    if (test.delegate->has("update")) {
      EXPECT_EQ(test.delegate->update, std::pair(test.broker.url() + "/new.deb", true));
    }
  }
}

TEST(ConnectFlowTest, SomeRefusalsBringThePromptAndADismissedOneChangesNothing) {
  for (const auto& [code, asks] : std::map<int, bool>{
           {5, false}, {13, true}, {87, true}, {1326, true}, {1327, true}, {1330, true}, {1331, false}, {1793, true}}) {
    SCOPED_TRACE(code);
    Flow test;
    test.know();
    test.farm->setDisallowSaveCredentials(true);
    test.addFault(Kind::kErrorCode, "authenticate", code);
    if (asks) answerWith(test, "bob", "guess");
    const OvCredentials before = test.farm->credentials();
    const auto task = test.start();
    ASSERT_TRUE(test.runUntilIdle(*test.farm));
    const std::string prompt = "credentials " + std::to_string(code);
    EXPECT_EQ(test.events(), asks ? prompt + ", " + prompt : "failed " + std::to_string(code));
    EXPECT_EQ(task->isRunning(), !asks);
    EXPECT_EQ(test.farm->credentials(), before);
    if (asks) {
      ASSERT_EQ(test.delegate->oldCredentials.size(), 2U);
      EXPECT_EQ(test.delegate->oldCredentials[0].password().text(), "secret");
      EXPECT_EQ(test.delegate->oldCredentials[1].username(), "bob");
      EXPECT_THAT(test.delegate->disallowsSaving, ElementsAre(true, true));
    }
  }
}

TEST(ConnectFlowTest, ACancelledConnectStopsAtItsNextLookAndSaysNothing) {
  struct Point {
    const char* where;  ///< a request, or an event of the delegate
    Flow::Change prepare;
    const char* requests;
  };
  const auto known = [](Flow& t) { t.know(); };
  const Point points[] = {
      {"brokerinfo", known, "B"},
      {"authenticate", known, "BAC"},
      {"authenticate", [](Flow& t) { t.know(), t.farm->credentials().setPassword("wrong"); }, "BA"},
      {"credentials", [](Flow& t) { t.know(), forgetUser(t), answerWith(t, "ann", "secret"); }, "B"},
      {"getconnectorinfo", known, "BAC"},
      {"update", [](Flow& t) { t.know(), offerUpdate(t, 0); }, "BAC"},
      {"location",
       [](Flow& t) {
         t.manage({"Home", "Lab"}), t.know(), t.assign(1), t.delegate->locations = {"Lab"};
       },
       "BACB"},
      {"getfarmproperties", known, "BACP"},
      {"getapplicationlist", known, "BACPL"},
  };
  for (const Point& point : points) {
    SCOPED_TRACE(point.where);
    std::promise<std::shared_ptr<PendingTask>> started;
    const auto task = started.get_future().share();
    const auto cancelAt = [&](const std::string& where) {
      if (where.starts_with(point.where)) task.get()->cancel();
    };
    Flow test([&](const auto& request) { cancelAt(request.message); });
    test.delegate->onEvent = cancelAt;
    point.prepare(test);
    started.set_value(test.start());
    ASSERT_TRUE(test.runUntilIdle(*test.farm));
    EXPECT_EQ(test.requests(), point.requests);
    EXPECT_FALSE(test.delegate->has("connected") || test.delegate->has("failed")) << test.events();
  }
}

TEST(ConnectFlowTest, ARefreshTellsTheApplicationsAlone) {
  Flow test;
  test.connect();
  const auto refresh = [&](bool isCancelled) {
    const auto task = test.controller->getApplicationListForFarm(test.farm, test.delegate);
    if (isCancelled) task->cancel();  // the flow waits for this thread before it looks
    ASSERT_TRUE(test.runUntilIdle(*test.farm));
  };
  refresh(true);
  EXPECT_EQ(test.events(), "done");
  refresh(false);
  test.addFault(Kind::kErrorCode, "getapplicationlist", 87);
  refresh(false);
  EXPECT_EQ(test.events(), "done, applications, failed 14");
}

TEST(ConnectFlowTest, ADelegateThatIsGoneChoosesNothing) {
  for (const auto& [prepare, requests] :
       std::vector<std::pair<Flow::Change, const char*>>{{[](Flow& t) { t.know(), forgetUser(t); }, "B"},
                                                         {[](Flow& t) {
                                                            t.manage({"Home", "Lab"}), t.know(), t.assign(1);
                                                          },
                                                          "BAC"},
                                                         {[](Flow& t) { t.know(), offerUpdate(t, 0); }, "BACPL"}}) {
    Flow test;
    prepare(test);
    test.start(std::make_shared<ScriptedDelegate>(), *test.controller);
    EXPECT_TRUE(test.runUntilIdle(*test.farm));
    EXPECT_EQ(test.requests(), requests);
  }
}

TEST(ConnectFlowTest, AFarmsConnectWaitsForNoOther) {
  Flow first, second, stuck;
  stuck.addFault(Kind::kStall, "authenticate");
  const auto task = stuck.start(stuck.delegate, *first.controller);
  first.start();
  second.start(second.delegate, *first.controller);
  for (const Flow* test : {&first, &second}) {
    EXPECT_TRUE(first.runUntilIdle(*test->farm));  // the only main thread of the three
    EXPECT_EQ(test->events(), "done");
  }
  EXPECT_EQ(stuck.events(), "");
  task->cancel();
  stuck.broker.clearFaults();
  stuck.broker.releaseStalled();
  EXPECT_TRUE(first.runUntilIdle(*stuck.farm));
  EXPECT_EQ(stuck.events(), "");
}

TEST(ConnectFlowTest, APasswordThatCouldNotBeReadAtTheStartIsReadNow) {
  Flow test;
  test.know();
  test.manager->save();
  test.mainQueue->pump();

  test.secrets->setUnreadable(true);  // a keyring that is locked when the program starts anew
  const auto manager =
      std::make_shared<OvFarmManager>(test.home.file("settings_2.plist"),
                                      std::make_shared<MCCachedKeychain>(test.secrets), test.mainQueue, test.mainQueue);
  const auto controller = std::make_shared<OvBrokerClientController>(
      OvBrokerClientController::Environment{manager, nullptr, nullptr, test.mainQueue, nullptr});
  test.mainQueue->pump();
  const auto farm = manager->farms().front();
  ASSERT_TRUE(farm->credentials().password().empty());
  test.secrets->setUnreadable(false);

  OvBrokerClientController::configureBrokerClient(*farm->brokerClient(), &farm->credentials(), false,
                                                  test.location.get());
  controller->connectToFarm(farm, test.location, test.delegate);
  ASSERT_TRUE(test.runUntilIdle(*farm));
  EXPECT_EQ(test.requests(), "BACPL");
  EXPECT_EQ(test.events(), "done");
}

TEST(ConnectFlowTest, TheListBecomesATreeOfFoldersInOrder) {
  constexpr uint32_t kSide = 8;
  const std::string good = icon_strings::make({kSide, kSide, std::vector<uint8_t>(kSide * kSide * 4, 0x7f)}, 32);
  Flow test;
  test.broker.changeFarm([&](auto& farm) {
    farm.applications = {{.name = "b", .shortcut = "beta", .folder = "Tools\\Inner"},
                         {.name = "Alpha", .folder = "Tools\\Inner"},
                         {.name = "b", .shortcut = "Beta", .folder = "tools\\inner"},
                         {.name = "b", .shortcut = "beta", .folder = "Tools\\Inner"},
                         {.name = "loose"}};
    for (int i = 0; i < 300; ++i) {  // enough for several threads
      const auto icon = orvane::demo::Icon{i % 3 == 0 ? good.substr(0, 100) : good, ""};
      farm.applications.push_back({.name = "app" + std::to_string(1000 + i),
                                   .folder = "Many",
                                   .icon = std::make_shared<orvane::demo::Icon>(icon)});
    }
  });
  test.connect();
  ASSERT_TRUE(test.delegate->applications);
  std::string tree;
  for (const auto& folder : test.delegate->applications->appItems()) {
    const auto& items = dynamic_cast<const AppFolderItem&>(*folder).appItems();
    tree += folder->displayName() + ":";
    if (items.size() < 10) {
      for (const auto& item : items) tree += " " + item->displayName() + "=" + item->name();
    } else {
      ASSERT_EQ(items.size(), 300U);
      for (size_t i = 0; i < items.size(); ++i) EXPECT_EQ(items[i]->icon() == nullptr, i % 3 == 0) << i;
      EXPECT_THAT(std::span(items[1]->icon()->rgba).first(4), ElementsAre(0x7f, 0x7f, 0x7f, 0xff));
    }
    tree += "; ";
  }
  EXPECT_EQ(tree, ": loose=loose; Many:; Tools\\Inner: Alpha=Alpha beta=b beta=b; tools\\inner: Beta=b; ");
}

TEST(ConnectFlowTest, AUrlIsEscapedOnce) {
  for (const auto& [text, url] : std::map<std::string, std::string>{
           {"http://h:80/a b/\xc3\xa4%20.xml?q=1&r#f", "http://h:80/a%20b/%C3%A4%20.xml?q=1&r#f"},
           {"http://[::1]/100%/%4", "http://[::1]/100%25/%254"},
           {"\"<>\\^`{|}\n\x7f", "%22%3C%3E%5C%5E%60%7B%7C%7D%0A%7F"}}) {
    EXPECT_EQ(orvane::escapedUrl(text), url);
  }
}

}  // namespace
