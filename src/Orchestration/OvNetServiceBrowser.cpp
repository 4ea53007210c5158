#include "Orchestration/OvNetServiceBrowser.h"

#include <algorithm>
#include <cerrno>
#include <optional>
#include <tuple>
#include <utility>

#include <ares.h>
#include <poll.h>
#include <sys/eventfd.h>
#include <sys/time.h>

#include "Support/OvWriteLog.h"

namespace {

using Bytes = std::span<const uint8_t>;
using std::chrono::milliseconds;

constexpr char kClass[] = "OvNetServiceBrowser";
constexpr int kServiceType = 33;  // SRV
constexpr int kInternetClass = 1;
constexpr size_t kHeaderSize = 12;
constexpr size_t kMaximumMessageSize = 65535;
constexpr size_t kMaximumNameLength = 253;  // c-ares expands longer names as well

// A number of two bytes, which `bytes` must have at `position`.
uint16_t numberAt(Bytes bytes, size_t position) {
  return static_cast<uint16_t>(bytes[position] << 8 | bytes[position + 1]);
}

struct Name {
  std::string text;  // bytes that no host name has are escaped with a backslash
  size_t end;        // position behind the name
};

// The name at `position` of `message`, if one is there.
std::optional<Name> nameAt(Bytes message, size_t position) {
  if (position >= message.size() || message.size() > kMaximumMessageSize) return std::nullopt;
  char* text = nullptr;
  long length = 0;
  const int status =
      ares_expand_name(message.data() + position, message.data(), static_cast<int>(message.size()), &text, &length);
  if (status != ARES_SUCCESS) return std::nullopt;
  const std::unique_ptr<char, decltype(&ares_free_string)> owner(text, &ares_free_string);
  return Name{text, position + static_cast<size_t>(length)};
}

// A question or an answer of a message.
struct Entry {
  bool isServiceRecord;
  Bytes data;
  size_t end;  // position behind the entry
};

std::optional<Entry> entryAt(Bytes message, size_t position, bool isQuestion) {
  // Behind the owner's name: type and class, and in an answer the time to live and the length of the data.
  const size_t fieldsSize = isQuestion ? 4 : 10;
  const std::optional<Name> owner = nameAt(message, position);
  if (!owner || message.size() - owner->end < fieldsSize) return std::nullopt;
  const Bytes fields = message.subspan(owner->end, fieldsSize);
  const size_t dataStart = owner->end + fieldsSize;
  if (isQuestion) return Entry{false, {}, dataStart};
  const size_t dataSize = numberAt(fields, 8);
  if (message.size() - dataStart < dataSize) return std::nullopt;
  return Entry{numberAt(fields, 0) == kServiceType && numberAt(fields, 2) == kInternetClass,
               message.subspan(dataStart, dataSize), dataStart + dataSize};
}

bool isHostName(const std::string& text) {
  constexpr char kAllowed[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789-_.";
  if (text.empty() || text.size() > kMaximumNameLength) return false;
  // c-ares writes a label of a single zero byte as that byte, so such a text ends at the dot before it.
  return text.back() != '.' && text.find_first_not_of(kAllowed) == std::string::npos;
}

}  // namespace

// One question to the DNS, on the thread of its caller.
class OvNetServiceBrowser::Query {
 public:
  // `wakeUp` becomes readable to end run().
  Query(milliseconds deadline, int wakeUp) : end_(Clock::now() + deadline), patience_(deadline), wakeUp_(wakeUp) {}
  ~Query() {
    if (channel_) ares_destroy(channel_);
  }
  Query(const Query&) = delete;
  Query& operator=(const Query&) = delete;

  // False if the question can't be asked.
  bool start(const std::string& name, const std::string& servers);
  // Blocks until there is an answer, or can't be one in time.
  void run();

  // Of c-ares; tells success also for a message without the records asked for, if run() wasn't ended from outside.
  int status() const { return status_; }
  Bytes message() const { return message_; }

 private:
  using Clock = std::chrono::steady_clock;

  static void answered(void* query, int status, int timeouts, unsigned char* message, int size) noexcept;
  // Waits for a socket, c-ares' next deadline or the query's end. False if run() is to end.
  bool work();

  const Clock::time_point end_;
  const milliseconds patience_;
  const int wakeUp_;
  ares_channel channel_ = nullptr;
  bool hasAnswer_ = false;
  int status_ = ARES_SUCCESS;
  std::vector<uint8_t> message_;
};

bool OvNetServiceBrowser::Query::start(const std::string& name, const std::string& servers) {
  static const int libraryStatus = ares_library_init(ARES_LIB_INIT_ALL);
  if (libraryStatus != ARES_SUCCESS || name.empty() || name.find('\0') != std::string::npos) return false;

  // Rounds over the servers, a server's time doubled in each, and each time cut by up to 7/16 at random: one server is
  // asked until the time is over, and of several the fourth still gets its turn.
  ares_options options{};
  options.timeout = std::max(static_cast<int>(patience_.count() / 4), 1);
  options.tries = 3;
  if (ares_init_options(&channel_, &options, ARES_OPT_TIMEOUTMS | ARES_OPT_TRIES) != ARES_SUCCESS) {
    channel_ = nullptr;
    return false;
  }
  if (!servers.empty() && ares_set_servers_ports_csv(channel_, servers.c_str()) != ARES_SUCCESS) return false;
  ares_query(channel_, name.c_str(), kInternetClass, kServiceType, &Query::answered, this);
  return !hasAnswer_ || status_ != ARES_EBADNAME;
}

void OvNetServiceBrowser::Query::run() {
  while (!hasAnswer_ && work()) {
  }
}

bool OvNetServiceBrowser::Query::work() {
  const auto left = std::chrono::ceil<milliseconds>(end_ - Clock::now());
  if (left <= milliseconds(0)) {
    status_ = ARES_ETIMEOUT;
    return false;
  }
  timeval longest{static_cast<time_t>(left.count() / 1000), static_cast<suseconds_t>(left.count() % 1000 * 1000)};
  timeval wait{};
  const timeval* const chosen = ares_timeout(channel_, &longest, &wait);
  const auto timeout = chosen->tv_sec * 1000 + chosen->tv_usec / 1000 + 1;

  ares_socket_t sockets[ARES_GETSOCK_MAXNUM];
  const int wanted = ares_getsock(channel_, sockets, ARES_GETSOCK_MAXNUM);
  std::vector<pollfd> entries{{wakeUp_, POLLIN, 0}};
  for (int i = 0; i < ARES_GETSOCK_MAXNUM; ++i) {
    const int events =
        (ARES_GETSOCK_READABLE(wanted, i) ? POLLIN : 0) | (ARES_GETSOCK_WRITABLE(wanted, i) ? POLLOUT : 0);
    if (events != 0) entries.push_back({sockets[i], static_cast<short>(events), 0});
  }
  const int ready = poll(entries.data(), entries.size(), static_cast<int>(timeout));
  if ((ready < 0 && errno != EINTR) || (ready > 0 && entries[0].revents != 0)) {
    status_ = ARES_ECANCELLED;
    return false;
  }
  if (ready <= 0) ares_process_fd(channel_, ARES_SOCKET_BAD, ARES_SOCKET_BAD);
  for (const pollfd& entry : entries) {
    if (ready <= 0 || entry.revents == 0) continue;
    const bool isReadable = (entry.revents & ~POLLOUT) != 0;  // an error is read as well
    const bool isWritable = (entry.revents & POLLOUT) != 0;
    ares_process_fd(channel_, isReadable ? entry.fd : ARES_SOCKET_BAD, isWritable ? entry.fd : ARES_SOCKET_BAD);
  }
  return true;
}

void OvNetServiceBrowser::Query::answered(void* query, int status, int, unsigned char* message, int size) noexcept {
  if (status == ARES_EDESTRUCTION) return;
  auto& self = *static_cast<Query*>(query);
  self.hasAnswer_ = true;
  self.status_ = status;
  if (status == ARES_SUCCESS) self.message_.assign(message, message + size);
}

OvNetServiceBrowser::OvNetServiceBrowser(milliseconds deadline, std::string servers)
    : _deadline(deadline), _servers(std::move(servers)), _wakeUp(eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK)) {}

OvNetServiceBrowser::~OvNetServiceBrowser() = default;

bool OvNetServiceBrowser::searchServiceRecordsWithQuery(const std::string& query, SearchCompletion completion) {
  std::unique_lock running(_running);
  eventfd_t cancels = 0;
  eventfd_read(_wakeUp.number(), &cancels);  // none that came before concerns this search

  _serviceRef = std::make_unique<Query>(_deadline, _wakeUp.number());
  if (!_serviceRef->start(query, _servers)) {
    _serviceRef.reset();
    return false;
  }
  _onSearchCompleteBlock = std::move(completion);
  _serviceRef->run();
  if (const int status = _serviceRef->status(); status == ARES_SUCCESS) {
    processAnswers(_serviceRef->message());
  } else {
    OvWriteLog(2, "%s::%s: ServiceQueryRecordCallback failed with code: [%u]", kClass, __func__,
               static_cast<unsigned>(status));
  }
  endSearch(std::move(running));
  return true;
}

void OvNetServiceBrowser::cancelSearch() { eventfd_write(_wakeUp.number(), 1); }

void OvNetServiceBrowser::stopSearch() { endSearch(std::unique_lock(_running)); }

void OvNetServiceBrowser::endSearch(std::unique_lock<std::mutex> running) {
  _serviceRef.reset();
  const std::vector<std::string> names = sortedNetServiceNames();
  const SearchCompletion completion = std::exchange(_onSearchCompleteBlock, nullptr);
  _foundRecords.clear();
  running.unlock();
  if (completion) completion(names);
}

std::vector<std::string> OvNetServiceBrowser::sortedNetServiceNames() {
  sortRecords();
  std::vector<std::string> names;
  for (const OvNetServiceRecord& record : _foundRecords) names.push_back(record.netServiceName());
  return names;
}

void OvNetServiceBrowser::sortRecords() {
  std::ranges::stable_sort(_foundRecords, {}, [](const OvNetServiceRecord& record) {
    return std::tuple(record.netServicePriority(), -record.netServiceWeight());
  });
}

void OvNetServiceBrowser::processRecord(Bytes data, Bytes message) {
  constexpr size_t kTargetStart = 6;
  if (message.empty()) message = data;
  std::optional<Name> target;
  if (data.size() > kTargetStart) {
    const size_t start = static_cast<size_t>(data.data() - message.data());
    target = nameAt(message, start + kTargetStart);
    if (target && target->end != start + data.size()) target.reset();
  }
  if (!target || !isHostName(target->text)) {
    OvWriteLog(2, "%s::%s: DNS resource record parce failed.", kClass, __func__);
  } else if (_foundRecords.size() == kMaximumRecords) {
    OvWriteLog(2, "%s::%s: more than %zu records, the rest is left out", kClass, __func__, kMaximumRecords);
  } else {
    _foundRecords.emplace_back(std::move(target->text), numberAt(data, 0), numberAt(data, 2));
  }
}

void OvNetServiceBrowser::processAnswers(Bytes message) {
  if (message.size() < kHeaderSize) {
    OvWriteLog(2, "%s::%s: the answer has no header", kClass, __func__);
    return;
  }
  const unsigned questions = numberAt(message, 4);
  const unsigned entries = questions + numberAt(message, 6);
  size_t position = kHeaderSize;
  for (unsigned i = 0; i < entries; ++i) {
    const std::optional<Entry> entry = entryAt(message, position, i < questions);
    if (!entry) {
      OvWriteLog(2, "%s::%s: the answer is malformed behind %zu records", kClass, __func__, _foundRecords.size());
      return;
    }
    if (entry->isServiceRecord) processRecord(entry->data, message);
    position = entry->end;
  }
}
