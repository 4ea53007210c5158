#include "DemoBroker.h"

#include <algorithm>
#include <cctype>
#include <deque>
#include <mutex>

#include <strings.h>

#include "ConnectionServer.h"
#include "Conversation.h"
#include "Crypto/crypto.h"
#include "FaultList.h"

namespace orvane::demo {
namespace {

constexpr size_t kRecordedRequests = 10'000;
constexpr std::string_view kProxy = "/proxy";

/// Where a path leads: everything at the root, and the same again behind each "/proxy".
struct Place {
  bool takesMessages = false;
  std::string file;  ///< without a leading slash
};

Place placeOf(const std::string& path) {
  std::string lower = path;
  std::transform(lower.begin(), lower.end(), lower.begin(),
                 [](unsigned char character) { return static_cast<char>(std::tolower(character)); });
  const size_t inside = lower.rfind(std::string(kProxy) + "/");
  const size_t rest = inside == std::string::npos ? 1 : inside + kProxy.size() + 1;
  return {path == "/" || lower.ends_with(kProxy), path.size() > rest ? path.substr(rest) : ""};
}

Answer withBody(std::string text, const std::string& contentType, int status = 200) {
  Answer answer;
  answer.status = status;
  answer.contentType = contentType;
  answer.body = std::make_shared<const std::string>(std::move(text));
  return answer;
}

void replaceAll(std::string& text, std::string_view what, const std::string& replacement) {
  for (size_t at = 0; (at = text.find(what, at)) != std::string::npos; at += replacement.size()) {
    text.replace(at, what.size(), replacement);
  }
}

/// The name in a Host header, which is how the client reached us.
std::string hostOf(const httplib::Request& request) {
  std::string host = request.get_header_value("Host");
  const size_t colon = host.rfind(':');
  if (colon != std::string::npos && host.find(']', colon) == std::string::npos) host.resize(colon);
  return host;
}

template <typename Pairs>
std::string firstOf(const Pairs& pairs, std::string_view name) {
  for (const auto& [candidate, value] : pairs) {
    if (candidate == name) return value;
  }
  return {};
}

}  // namespace

std::string RecordedRequest::header(std::string_view name) const {
  for (const auto& [candidate, value] : headers) {
    if (candidate.size() == name.size() && strncasecmp(candidate.data(), name.data(), name.size()) == 0) return value;
  }
  return {};
}

std::string RecordedRequest::field(std::string_view name) const { return firstOf(fields, name); }

class DemoBroker::State {
 public:
  State(FarmDescription farm, Options options)
      : faults(farm.faults),
        conversation(std::move(farm)),
        onRequest(std::move(options.onRequest)),
        useTls(options.useTls),
        ip(options.ip),
        release(std::make_shared<Signal>()) {
    TlsIdentity identity;
    if (useTls) identity = makeTlsIdentity(options.certificateNames);
    certificatePem = identity.certificatePem;
    // Last, since requests may come from here on.
    server.emplace(
        ip, options.port, std::move(identity),
        [this](const httplib::Request& request, const ConnectionStream& stream) { return answer(request, stream); });
  }

  void record(const RecordedRequest& request) {
    if (onRequest) onRequest(request);
    const std::lock_guard lock(mutex);
    recorded.push_back(request);
    if (recorded.size() > kRecordedRequests) recorded.pop_front();
  }

  FaultList faults;
  Conversation conversation;
  std::function<void(const RecordedRequest&)> onRequest;
  bool useTls;
  std::string ip;
  std::string certificatePem;
  mutable std::mutex mutex;
  std::deque<RecordedRequest> recorded;
  std::shared_ptr<Signal> release;  // raised and replaced by each release
  std::optional<ConnectionServer> server;

 private:
  Answer answer(const httplib::Request& request, const ConnectionStream& stream);
  Answer regularAnswer(const httplib::Request& request, const std::string& name, const std::optional<Message>& message,
                       const Place& place);
  Answer faultyAnswer(const Fault& fault, const std::string& name, const ConnectionStream& stream,
                      const std::function<Answer()>& regular);
  std::string xmlType() const {
    return conversation.coding() == Coding::kUtf8 ? "text/xml; charset=utf-8" : "text/xml; charset=windows-1252";
  }
};

Answer DemoBroker::State::answer(const httplib::Request& request, const ConnectionStream& stream) {
  const Place place = placeOf(request.path);
  const bool isPost = request.method == "POST";
  const std::optional<Message> message = isPost ? parseMessage(request.body) : std::nullopt;
  const std::string name = message ? message->name : !isPost && place.file == "brokerinfo" ? "brokerinfo" : "";

  RecordedRequest entry;
  entry.message = name;
  entry.method = request.method;
  entry.target = request.target;
  for (const auto& [header, value] : request.headers) {
    // The library adds what it knows of the connection in the guise of headers.
    if (!header.starts_with("REMOTE_") && !header.starts_with("LOCAL_")) entry.headers.emplace_back(header, value);
  }
  entry.body = request.body;
  if (message) entry.fields = message->fields;
  record(entry);

  const auto regular = [&] { return regularAnswer(request, name, message, place); };
  const std::optional<Fault> fault = faults.next(name, request.path);
  return fault ? faultyAnswer(*fault, name, stream, regular) : regular();
}

Answer DemoBroker::State::regularAnswer(const httplib::Request& request, const std::string& name,
                                        const std::optional<Message>& message, const Place& place) {
  Answer answer;
  answer.contentType = xmlType();
  if (request.method == "POST") {
    if (!place.takesMessages)
      return withBody("Messages go to / or to a path that ends in /proxy.\n", "text/plain", 404);
    answer.body = message ? conversation.answer(*message) : nullptr;
    return answer.body ? answer : withBody("This is no message of the broker's.\n", "text/plain", 400);
  }
  if (name == "brokerinfo") {
    answer.body = conversation.brokerInfo();
    return answer;
  }
  if (request.method == "CONNECT") return withBody("This is no proxy.\n", "text/plain", 400);
  std::optional<ServedFile> file = conversation.file(place.file);
  if (!file) return withBody("There is no such file.\n", "text/plain", 404);
  if (file->fillIn) {
    replaceAll(file->content, "${host}", hostOf(request));
    replaceAll(file->content, "${port}", std::to_string(request.local_port));
    replaceAll(file->content, "${https}", useTls ? "1" : "0");
  }
  if (file->encipher) file->content = encipheredContainer(file->content);
  return withBody(std::move(file->content), file->contentType);
}

Answer DemoBroker::State::faultyAnswer(const Fault& fault, const std::string& name, const ConnectionStream& stream,
                                       const std::function<Answer()>& regular) {
  using Delivery = Answer::Delivery;
  const auto delivered = [](Answer answer, Delivery delivery) {
    answer.delivery = delivery;
    return answer;
  };
  switch (fault.kind) {
    case Fault::Kind::kRefuse:
      return delivered({}, Delivery::kNone);
    case Fault::Kind::kCut: {
      Answer answer = delivered(regular(), Delivery::kCut);
      answer.cutBehind = static_cast<size_t>(std::max(fault.number, 0));
      return answer;
    }
    case Fault::Kind::kTrickle:
      return delivered(regular(), Delivery::kTrickle);
    case Fault::Kind::kStall: {
      std::shared_ptr<Signal> awaited;
      {
        const std::lock_guard lock(mutex);
        awaited = release;
      }
      return stream.waitFor(*awaited) ? regular() : delivered({}, Delivery::kNone);
    }
    case Fault::Kind::kStatus: {
      Answer answer = withBody("Status " + std::to_string(fault.number) + "\n", "text/plain", fault.number);
      if (fault.number / 100 == 3) answer.location = fault.text;
      return answer;
    }
    case Fault::Kind::kEmptyBody:
      return {};
    case Fault::Kind::kWrongRoot:
      return withBody("<html><body>Welcome to the printer's web page.</body></html>", "text/html");
    case Fault::Kind::kErrorCode: {
      if (name.empty()) return regular();
      Answer answer;
      answer.contentType = xmlType();
      answer.body = conversation.refusal(name, {fault.number, fault.text});
      return answer;
    }
    case Fault::Kind::kEndlessBody:
      return delivered(regular(), Delivery::kEndless);
  }
  return regular();
}

DemoBroker::DemoBroker(FarmDescription farm, Options options)
    : state_(std::make_unique<State>(std::move(farm), std::move(options))) {}
DemoBroker::DemoBroker(FarmDescription farm) : DemoBroker(std::move(farm), Options()) {}
DemoBroker::~DemoBroker() = default;

uint16_t DemoBroker::port() const { return state_->server->port(); }

std::string DemoBroker::url() const {
  return (state_->useTls ? "https://" : "http://") + state_->ip + ":" + std::to_string(port());
}

const std::string& DemoBroker::certificatePem() const { return state_->certificatePem; }

void DemoBroker::stop() { state_->server->stop(); }

std::vector<RecordedRequest> DemoBroker::requests() const {
  const std::lock_guard lock(state_->mutex);
  return {state_->recorded.begin(), state_->recorded.end()};
}

std::vector<RecordedRequest> DemoBroker::requests(std::string_view message) const {
  std::vector<RecordedRequest> fitting = requests();
  std::erase_if(fitting, [&](const RecordedRequest& request) { return request.message != message; });
  return fitting;
}

size_t DemoBroker::acceptedConnections() const { return state_->server->acceptedConnections(); }

void DemoBroker::expireCookies() { state_->conversation.expireCookies(); }

void DemoBroker::addFault(Fault fault) { state_->faults.add(std::move(fault)); }

void DemoBroker::clearFaults() { state_->faults.clear(); }

void DemoBroker::releaseStalled() {
  auto next = std::make_shared<Signal>();
  const std::lock_guard lock(state_->mutex);
  state_->release->raise();
  state_->release = std::move(next);
}

void DemoBroker::changeFarm(const std::function<void(FarmDescription&)>& change) {
  state_->conversation.changeFarm(change);
}

std::string DemoBroker::ticketString(const std::string& ticket) const {
  return demo::ticketString(state_->useTls, state_->ip, port(), ticket);
}

}  // namespace orvane::demo
