#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <mutex>
#include <span>
#include <string>
#include <vector>

#include "Orchestration/OvNetServiceRecord.h"
#include "Support/FileDescriptor.h"

/// Finds the brokers that a domain publishes as SRV records of its DNS, and tells their names, best first.
///
/// One object runs one search at a time; objects are independent of each other. cancelSearch() and a search may be
/// called on any thread at any time; all else works on the records in hand and belongs to the thread that searches.
class OvNetServiceBrowser {
 public:
  /// Gets the names found, best first; none if there were none, or none could be asked for.
  using SearchCompletion = std::function<void(const std::vector<std::string>&)>;

  static constexpr std::chrono::milliseconds kDefaultDeadline{5000};
  /// What a domain may publish beyond this is left out, with a line in the log.
  static constexpr size_t kMaximumRecords = 1000;

  /// @param deadline how long a whole search may take, all servers and tries together.
  /// @param servers the DNS servers to ask, "address:port" with commas between; empty: those of the system, which are
  /// read anew for each search.
  explicit OvNetServiceBrowser(std::chrono::milliseconds deadline = kDefaultDeadline, std::string servers = {});
  /// No search may be running.
  ~OvNetServiceBrowser();
  OvNetServiceBrowser(const OvNetServiceBrowser&) = delete;
  OvNetServiceBrowser& operator=(const OvNetServiceBrowser&) = delete;

  /// Asks the DNS for the SRV records of the name `query`, UTF-8, and calls `completion` with what it found.
  ///
  /// Blocks until the answer is there, every server has failed, the deadline is over or cancelSearch() is called. The
  /// completion runs inside this call and on its thread, once; for an error, a time-out and a name that doesn't exist
  /// too. By then the search has ended, so the completion may take its time or start another one. A call made while
  /// another thread's search runs waits for that search to end, and its own deadline starts then.
  /// @return false if the search couldn't be started: the name is empty or can't be one of the DNS, or the servers make
  /// no sense. Then the completion is never called.
  bool searchServiceRecordsWithQuery(const std::string& query, SearchCompletion completion);

  /// Ends the running search at once: its completion gets what was found so far. Without one it does nothing. Never
  /// waits.
  void cancelSearch();

  /// The end of every search: calls its completion with sortedNetServiceNames() and forgets completion and records. Of
  /// no effect on another thread's running search: it waits for that to end.
  void stopSearch();

  /// Sorts the records and tells their names. A name that was published twice comes twice.
  std::vector<std::string> sortedNetServiceNames();
  /// Sorts by priority, the lowest first, and then by weight, the highest first: no draw of lots among weights. Records
  /// equal in both stay in the order of the answer.
  void sortRecords();

  /// Adds the record that the data of an SRV answer describes: priority, weight and port, two bytes each and the
  /// highest first, and the target, which ends the data. A target that isn't a host's name, of at most 253 ASCII
  /// letters, digits, "-", "_" and ".", makes a log line and no record, as do data of another form; so does the root,
  /// which says that the service isn't offered.
  /// @param message the DNS message that `data` is a part of, whose names the target may refer back to; empty: `data`
  /// stand alone.
  void processRecord(std::span<const uint8_t> data, std::span<const uint8_t> message = {});
  /// Adds all SRV records among the answers of a whole DNS message. Who owns them doesn't matter, as an alias may stand
  /// in between. What comes behind the first flaw in the message's form is left out, with a log line.
  void processAnswers(std::span<const uint8_t> message);

 private:
  class Query;

  void endSearch(std::unique_lock<std::mutex> running);

  const std::chrono::milliseconds _deadline;
  const std::string _servers;
  const orvane::FileDescriptor _wakeUp;  // an event that ends the wait of a search
  std::mutex _running;                   // locked as long as a search runs, but not while its completion does

  std::unique_ptr<Query> _serviceRef;
  SearchCompletion _onSearchCompleteBlock;
  std::vector<OvNetServiceRecord> _foundRecords;
};
