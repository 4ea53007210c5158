#include <chrono>
#include <thread>

#include "Orchestration/OvNetServiceBrowser.h"
#include "Support/DnsServerOfTest.h"
#include "Support/OvWriteLog.h"
#include "Support/TemporaryFolder.h"

namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::EndsWith;
using testing::HasSubstr;
using testing::IsEmpty;
using Names = std::vector<std::string>;

constexpr std::chrono::milliseconds kLong = 60s;

std::string service(const std::string& domain) { return "_orvane._tcp." + domain; }

// The names of many brokers, more than a datagram holds, best first.
Names manyNames() {
  Names names;
  for (int i = 10; i < 60; ++i) names.push_back("broker-number-" + std::to_string(i) + ".many.example.test");
  return names;
}

// The server's rows of one domain, each "target,port,priority,weight".
void publish(std::vector<std::string>& options, const std::string& domain, const Names& rows) {
  for (const std::string& row : rows) options.push_back("--srv-host=" + service(domain) + "," + row);
}

std::vector<std::string> zone() {
  std::vector<std::string> options;
  publish(options, "example.test", {"a.example.test,443,10,5", "b.example.test,443,10,50", "c.example.test,443,5,0"});
  publish(options, "dot.example.test", {"dot.example.test.,1"});
  publish(options, "twice.example.test", {"a.example.test,443,0,1", "b.example.test,443,1,1", "a.example.test,81,1,0"});
  Names rows;
  for (const std::string& name : manyNames()) rows.push_back(name + ",443," + std::to_string(rows.size()));
  publish(options, "many.example.test", rows);
  options.push_back("--srv-host=" + service("none.example.test"));
  options.push_back("--cname=" + service("alias.example.test") + "," + service("example.test"));
  options.push_back("--host-record=" + service("host.example.test") + ",127.0.0.1");
  return options;
}

// What a search finds; nothing if it couldn't be started.
std::optional<Names> search(OvNetServiceBrowser& browser, const std::string& query) {
  std::optional<Names> found;
  const auto thread = std::this_thread::get_id();
  const bool started = browser.searchServiceRecordsWithQuery(query, [&](const Names& names) {
    EXPECT_FALSE(found);
    EXPECT_EQ(std::this_thread::get_id(), thread);
    found = names;
  });
  EXPECT_EQ(started, found.has_value());
  return found;
}

TEST(OvNetServiceBrowserTest, TheNamesOfADomainComeBestFirst) {
  const struct {
    std::string domain;
    Names names;
  } cases[] = {
      {"example.test", {"c.example.test", "b.example.test", "a.example.test"}},
      {"alias.example.test", {"c.example.test", "b.example.test", "a.example.test"}},
      {"twice.example.test", {"a.example.test", "b.example.test", "a.example.test"}},
      {"dot.example.test", {"dot.example.test"}},
      {"dot.example.test.", {"dot.example.test"}},
      {"many.example.test", manyNames()},
      {"host.example.test", {}},     // the name has other records
      {"none.example.test", {}},     // says that the service isn't offered
      {"unknown.example.test", {}},  // no such name
      {"elsewhere.test", {}},        // the server refuses
  };
  const DnsServerOfTest server(zone());
  OvNetServiceBrowser browser(kLong, server.address());
  for (const auto& [domain, names] : cases) {
    browser.cancelSearch();  // without a search to cancel
    EXPECT_EQ(search(browser, service(domain)), names) << domain;
  }
}

TEST(OvNetServiceBrowserTest, AServerThatFailsGivesItsTurnToTheNextAndTheLastOnesReasonIsLogged) {
  const DnsServerOfTest server(zone());
  SilentDnsServer dead, refusing;
  refusing.refuse();
  const auto failure = [](int code) {
    return ": ServiceQueryRecordCallback failed with code: [" + std::to_string(code) + "]\n";
  };
  const struct {
    std::chrono::milliseconds deadline;
    std::string servers, domain;
    Names names;
    std::string log;
  } cases[] = {
      {kLong, server.address(), "unknown", {}, failure(4)},
      {kLong, refusing.address(), "dot", {}, failure(11)},
      {50ms, dead.address(), "dot", {}, failure(12)},
      {4s, refusing.address() + "," + dead.address() + "," + server.address(), "dot", {"dot.example.test"}, ""}};
  for (const auto& [deadline, servers, domain, names, logged] : cases) {
    const TemporaryFolder folder;
    OvSetLogFile(folder.file("log").c_str());
    OvNetServiceBrowser browser(deadline, servers);
    const auto start = std::chrono::steady_clock::now();
    EXPECT_EQ(search(browser, service(domain + ".example.test")), names);
    EXPECT_LT(std::chrono::steady_clock::now() - start, kLong / 2);
    EXPECT_THAT(contentOf(folder.file("log")), EndsWith(logged));
  }
}

TEST(OvNetServiceBrowserTest, WhatCannotBeAskedForIsRefusedWithoutACompletion) {
  const DnsServerOfTest server(zone());
  const std::string name = service("dot.example.test");
  OvNetServiceBrowser browser(kLong, server.address());
  for (const std::string& query : {std::string(), std::string("a..b"), "." + name, std::string(64, 'a') + ".test",
                                   name + '\0', std::string(300, 'a').replace(50, 1, ".").replace(100, 1, ".")}) {
    EXPECT_EQ(search(browser, query), std::nullopt) << query;
  }
  EXPECT_EQ(search(browser, name), Names{"dot.example.test"});
  OvNetServiceBrowser nobody(kLong, "no address");
  EXPECT_EQ(search(nobody, name), std::nullopt);
}

TEST(OvNetServiceBrowserTest, ACancelFromAnotherThreadEndsTheWait) {
  const SilentDnsServer dead;
  OvNetServiceBrowser browser(kLong, dead.address());
  const auto start = std::chrono::steady_clock::now();
  std::thread canceller([&] {
    dead.waitForQuestion();
    browser.cancelSearch();
  });
  EXPECT_EQ(search(browser, service("example.test")), Names{});
  canceller.join();
  EXPECT_LT(std::chrono::steady_clock::now() - start, kLong / 2);
}

TEST(OvNetServiceBrowserTest, SearchesOfSeveralThreadsDoNotMix) {
  const DnsServerOfTest server(zone());
  const std::pair<std::string, Names> questions[] = {{"many.example.test", manyNames()},
                                                     {"dot.example.test", {"dot.example.test"}}};
  OvNetServiceBrowser shared(kLong, server.address());
  std::vector<std::thread> threads;
  for (int i = 0; i < 4; ++i) {
    threads.emplace_back([&, i] {
      OvNetServiceBrowser own(kLong, server.address());
      for (int round = 0; round < 10; ++round) {
        const auto& [domain, names] = questions[(round + i) % 2];
        EXPECT_EQ(search(i < 2 ? shared : own, service(domain)), names);
      }
    });
  }
  for (std::thread& thread : threads) thread.join();
}

TEST(OvNetServiceBrowserTest, TheCompletionMaySearchAgainAndStop) {
  const DnsServerOfTest server(zone());
  OvNetServiceBrowser browser(kLong, server.address());
  int calls = 0;
  EXPECT_TRUE(browser.searchServiceRecordsWithQuery(service("dot.example.test"), [&](const Names&) {
    ++calls;
    browser.stopSearch();
    EXPECT_EQ(search(browser, service("twice.example.test"))->size(), 3);
  }));
  EXPECT_EQ(calls, 1);
}

std::span<const uint8_t> bytesOf(const std::string& text) {
  return {reinterpret_cast<const uint8_t*>(text.data()), text.size()};
}

// Labels as they stand in data, each behind its length.
std::string labels(const Names& names) {
  std::string bytes;
  for (const std::string& name : names) bytes += static_cast<char>(name.size()) + name;
  return bytes;
}

TEST(OvNetServiceBrowserTest, OnlyDataThatNameAHostMakeARecord) {
  using namespace std::string_literals;
  const TemporaryFolder folder;
  OvSetLogFile(folder.file("log").c_str());
  const std::string numbers = "\1\2\3\4\5\6", end = "\0"s;
  OvNetServiceBrowser browser;
  Names longest(64, "abc");
  longest.back() = "a";
  browser.processRecord(bytesOf(numbers + labels({"b-1", "Example_x", "test"}) + end));
  browser.processRecord(bytesOf(numbers + labels(longest) + end));
  EXPECT_THAT(browser.sortedNetServiceNames(), ElementsAre("b-1.Example_x.test", testing::SizeIs(253)));
  EXPECT_EQ(contentOf(folder.file("log")), "");
  browser.stopSearch();

  Names wrong = {"",
                 numbers,
                 numbers + end,
                 numbers.substr(1) + "\2b1\0"s,
                 numbers + "\2b1",
                 numbers + "\2b1\0\0"s,
                 numbers + "\5b1\0"s,
                 numbers + "\x40" + std::string(64, 'a') + end,
                 numbers + "\2b1\xC0\6"s,  // refers to itself
                 numbers + "\2b1\xC0\xFF"s,
                 numbers + labels({"b1", "\0"s, "test"}) + end,
                 numbers + labels(Names(64, "abc")) + end};
  for (const std::string& label :
       {"b.1"s, "b 1"s, "b\n1"s, "b1\0"s, "b/1"s, "a@b1"s, "b1:80"s, "b\\1"s, "b\xC3\xA4"s}) {
    wrong.push_back(numbers + labels({label, "test"}) + end);
  }
  for (const std::string& data : wrong) {
    OvDeleteLog();
    browser.processRecord(bytesOf(data));
    EXPECT_THAT(browser.sortedNetServiceNames(), IsEmpty()) << testing::PrintToString(data);
    EXPECT_THAT(contentOf(folder.file("log")), EndsWith(": DNS resource record parce failed.\n"));
  }
}

TEST(OvNetServiceBrowserTest, EqualRecordsKeepTheirOrderAndThereIsALimit) {
  const TemporaryFolder folder;
  OvSetLogFile(folder.file("log").c_str());
  OvNetServiceBrowser browser;
  Names names;
  for (size_t i = 0; i < OvNetServiceBrowser::kMaximumRecords + 1; ++i) {
    names.push_back("b" + std::to_string(i));
    browser.processRecord(bytesOf(std::string(6, '\0') + labels({names.back()}) + '\0'));
  }
  names.pop_back();
  EXPECT_EQ(browser.sortedNetServiceNames(), names);
  EXPECT_THAT(contentOf(folder.file("log")), HasSubstr("more than 1000 records"));
}

TEST(OvNetServiceBrowserTest, AnAnswerCutAnywhereGivesTheRecordsBeforeTheCut) {
  using namespace std::string_literals;
  const std::string header = "\0\1\x80\0\0\1\0\4\0\0\0\0"s;
  const std::string question = labels({"q", "test"}) + "\0\0\x21\0\1"s;
  const std::string owner = "\xC0\x0C"s;
  const std::string alias = owner + "\0\5\0\1\0\0\0\0\0\2\xC0\x0C"s;
  const std::string target = "\2b1\xC0\x0E"s;  // its end is that of the question's name
  const std::string first = owner + "\0\x21\0\1\0\0\0\0\0\x0B\0\1\0\0\0\1"s + target;
  const std::string otherClass = owner + "\0\x21\0\3\0\0\0\0\0\x0B\0\1\0\0\0\1"s + target;
  const std::string second = owner + "\0\x21\0\1\0\0\0\0\0\x0A\0\2\0\0\0\1\1b\0\0"s;  // a byte too much in its data
  const std::string message = header + question + alias + first + otherClass + second;
  const size_t endOfFirst = message.size() - second.size() - otherClass.size();
  for (size_t size = 0; size <= message.size(); ++size) {
    const std::vector<uint8_t> cut(message.begin(), message.begin() + static_cast<std::ptrdiff_t>(size));
    OvNetServiceBrowser browser;
    browser.processAnswers(cut);
    EXPECT_EQ(browser.sortedNetServiceNames(), size < endOfFirst ? Names{} : Names{"b1.test"}) << size;
  }
}

}  // namespace
