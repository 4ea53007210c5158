#include "Sessions/OvSessionManager.h"

#include <algorithm>
#include <mutex>
#include <string>
#include <string_view>
#include <thread>
#include <utility>

#include "Files/OvSettings.h"
#include "Sessions/FixedText.h"
#include "Sessions/OvSessionManagerImpl.h"
#include "Support/OvWriteLog.h"
#include "Support/StringList.h"

namespace {

constexpr char kClass[] = "OvSessionManager";
constexpr size_t kServerCapacity = 256;

static_assert(OvSessionManager::kLongestText == sizeof(OvSESSIONMANAGER_EVENT::program) - 1);
static_assert(OvSessionManager::kLongestText == sizeof(OvSESSIONMANAGER_EVENT::workingDir) - 1);

struct ProcessState {
  std::mutex OvMutex;  // guards the three below
  std::shared_ptr<OvSessionManagerImpl> implementation;
  size_t managerCount = 0;
  orvane::SessionRegistryNames names;

  OvSessionManagerImpl::ManagerObservers observers;
};

// Never destroyed: an object of static storage may be the last to go.
ProcessState& processState() {
  static ProcessState& state = *new ProcessState;
  return state;
}

void logCall(const char* function) { OvWriteLog(5, "%s::%s: called", kClass, function); }

char lowered(char letter) { return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter - 'A' + 'a') : letter; }

// Without regard to the locale: in some, the case of ASCII letters is another matter.
bool equalIgnoringCase(std::string_view one, std::string_view other) {
  return std::equal(one.begin(), one.end(), other.begin(), other.end(),
                    [](char left, char right) { return lowered(left) == lowered(right); });
}

std::vector<std::string> serversOf(const OvSettings& settings) {
  std::vector<std::string> servers;
  char server[kServerCapacity];
  for (int index = 0; ovutils_stringlist_get_item(settings.getServerName(), index, server, sizeof server); ++index) {
    servers.emplace_back(server);
  }
  return servers;
}

std::shared_ptr<OvSessionInfo> publicCopy(const OvSESSION_INFO& record) {
  return std::make_shared<OvSessionInfo>(OvSessionInfo{record.sessionId, record.sessionSharing != 0,
                                                       record.sslGateway != 0, record.server, record.domain,
                                                       record.username});
}

// Closing waits for the listener thread. From within a call that it makes, another thread has to do it.
void closeRegistry(OvSessionManagerImpl* last) {
  if (last->isListenerThread()) {
    std::thread([last] { delete last; }).detach();
  } else {
    delete last;
  }
}

}  // namespace

OvSessionManager::OvSessionManager(OvSessionManagerObserver* observer) : observer_(observer) {
  logCall(__func__);
  ProcessState& state = processState();
  const std::scoped_lock lock(state.OvMutex);
  if (state.managerCount == 0) {
    state.implementation.reset(new OvSessionManagerImpl(state.names, state.observers), closeRegistry);
    state.implementation->addProcess(OvSessionManagerImpl::getProcessId());
  }
  implementation_ = state.implementation;
  if (observer) state.observers.add(observer);
  ++state.managerCount;
}

OvSessionManager::~OvSessionManager() {
  logCall(__func__);
  ProcessState& state = processState();
  {
    const std::scoped_lock lock(state.OvMutex);
    if (--state.managerCount == 0) {
      // The path has to be free when the next object is made. The rest is done without OvMutex: the listener thread may
      // be in an observer that makes an object itself.
      implementation_->removeProcess(OvSessionManagerImpl::getProcessId());
      implementation_->stopListening();
      state.implementation.reset();
    } else {
      // Under the lock, so that whichever object is the last also is the one that closes the registry.
      implementation_.reset();
    }
  }
  if (observer_) state.observers.removeAll(observer_);
}

void OvSessionManager::useRegistry(orvane::SessionRegistryNames names) {
  ProcessState& state = processState();
  const std::scoped_lock lock(state.OvMutex);
  state.names = std::move(names);
}

uint32_t OvSessionManager::findSession(const OvSettings& settings) {
  logCall(__func__);
  if (!settings.getSessionSharing()) return 0;
  const std::vector<std::string> servers = serversOf(settings);
  const auto matches = [](const char* wanted, const char* stored) {
    return !wanted || equalIgnoringCase(wanted, stored);
  };
  for (const OvSESSION_INFO& record : implementation_->getSessionList()) {
    if (record.sessionSharing && matches(settings.getDomain(), record.domain) &&
        matches(settings.getUsername(), record.username) &&
        std::any_of(servers.begin(), servers.end(),
                    [&record](const std::string& server) { return equalIgnoringCase(server, record.server); })) {
      return record.sessionId;
    }
  }
  return 0;
}

uint32_t OvSessionManager::addSession(const OvSettings& settings, OvSessionObserver* sessionObserver) {
  logCall(__func__);
  const char* const gateway = settings.getSSLGateway();
  OvSESSION_INFO record{};
  record.processId = OvSessionManagerImpl::getProcessId();
  record.sessionSharing = settings.getSessionSharing() ? 1 : 0;
  record.sslGateway = gateway && *gateway ? 1 : 0;
  ovutils_stringlist_get_item(settings.getServerName(), 0, record.server, kServerCapacity);
  if (!orvane::setFixedText(record.domain, settings.getDomain()) ||
      !orvane::setFixedText(record.username, settings.getUsername())) {
    OvWriteLog(2, "%s::%s: domain or user name too long", kClass, __func__);
    return 0;
  }
  const auto implementation = implementation_;  // an observer may destroy this object
  const uint32_t sessionId = implementation->addSession(record, sessionObserver);
  if (sessionId != 0) implementation->fireEvent({SessionAdded, sessionId, {}, {}}, true);
  return sessionId;
}

int OvSessionManager::removeSession(uint32_t sessionId) {
  logCall(__func__);
  const auto implementation = implementation_;
  const int isRemoved = implementation->removeSession(sessionId);
  if (isRemoved) implementation->fireEvent({SessionRemoved, sessionId, {}, {}}, true);
  return isRemoved;
}

std::shared_ptr<OvSessionInfo> OvSessionManager::getSessionInfo(uint32_t sessionId) {
  logCall(__func__);
  const std::unique_ptr<OvSESSION_INFO> record = implementation_->getSessionInfo(sessionId);
  return record ? publicCopy(*record) : nullptr;
}

std::vector<std::shared_ptr<OvSessionInfo>> OvSessionManager::getSessionList() {
  logCall(__func__);
  std::vector<std::shared_ptr<OvSessionInfo>> result;
  for (const OvSESSION_INFO& record : implementation_->getSessionList()) result.push_back(publicCopy(record));
  return result;
}

int OvSessionManager::logoffSession(uint32_t sessionId) {
  logCall(__func__);
  return fireEvent(LogoffSession, sessionId);
}

int OvSessionManager::disconnectSession(uint32_t sessionId) {
  logCall(__func__);
  return fireEvent(DisconnectSession, sessionId);
}

int OvSessionManager::activateSessionView(uint32_t sessionId) {
  logCall(__func__);
  return fireEvent(ActivateSessionView, sessionId);
}

int OvSessionManager::startApplication(uint32_t sessionId, const char* program, const char* workingDir) {
  logCall(__func__);
  OvSESSIONMANAGER_EVENT event{StartApplicationEvent, sessionId, {}, {}};
  if (!orvane::setFixedText(event.program, program) || !orvane::setFixedText(event.workingDir, workingDir)) {
    OvWriteLog(2, "%s::%s: program or working directory too long", kClass, __func__);
    return 0;
  }
  const auto implementation = implementation_;
  return implementation->fireEvent(event, true);
}

int OvSessionManager::fireEvent(uint32_t eventCode, uint32_t sessionId) {
  const auto implementation = implementation_;
  return implementation->fireEvent({eventCode, sessionId, {}, {}}, true);
}
