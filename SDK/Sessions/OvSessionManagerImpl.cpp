#include "Sessions/OvSessionManagerImpl.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>
#include <iterator>

#include <unistd.h>

#include "Sessions/CONTEXTSTRUCT.h"
#include "Sessions/FixedText.h"
#include "Support/OvWriteLog.h"
#include "Support/RandomBytes.h"

namespace {

constexpr char kClass[] = "OvSessionManagerImpl";

// Whether a program of ours could have written this.
bool isPossible(const OvSESSION_INFO& record) {
  return record.processId <= INT32_MAX && record.sessionSharing <= 1 && record.sslGateway <= 1 &&
         orvane::fixedText(record.server) && orvane::fixedText(record.domain) && orvane::fixedText(record.username);
}

OvSESSION_INFO* recordOf(OvSharedSegment& segment, uint32_t sessionId) {
  const auto record = std::find_if(std::begin(segment.sessions), std::end(segment.sessions),
                                   [=](const OvSESSION_INFO& candidate) { return candidate.sessionId == sessionId; });
  return record == std::end(segment.sessions) ? nullptr : record;
}

// Ids count upwards. After the highest, which takes four thousand million sessions or a faulty process, 0 and those in
// use are left out.
uint32_t takeNextSessionId(OvSharedSegment& segment) {
  uint32_t id = 0;
  do {
    id = segment.nextSessionId++;
  } while (id == 0 || recordOf(segment, id));
  return id;
}

int replaceInLowestSlot(OvSharedSegment& segment, uint32_t oldProcessId, uint32_t newProcessId) {
  const auto slot = std::find(std::begin(segment.processes), std::end(segment.processes), oldProcessId);
  if (slot == std::end(segment.processes)) return 0;
  *slot = newProcessId;
  return 1;
}

}  // namespace

namespace orvane {

// A handle of another process that had our identifier, or of an earlier opening, should name nothing here.
SessionObservers::SessionObservers()
    : table_([] {
        uint32_t handle = 0;
        fillWithRandomBytes(&handle, sizeof handle);
        return handle;
      }()) {}

void SessionObservers::assign(uint32_t handle, uint32_t sessionId) {
  if (handle == 0) return;
  const std::scoped_lock lock(mutex_);
  handles_[sessionId] = handle;
}

void SessionObservers::removeSession(uint32_t sessionId) {
  uint32_t handle = 0;
  {
    const std::scoped_lock lock(mutex_);
    const auto entry = handles_.find(sessionId);
    if (entry == handles_.end()) return;
    handle = entry->second;
    handles_.erase(entry);
  }
  table_.remove(handle);
}

}  // namespace orvane

OvSessionManagerImpl::OvSessionManagerImpl(const orvane::SessionRegistryNames& names, ManagerObservers& observers) {
  if (!openContext(names, observers)) destroyContext();
}

OvSessionManagerImpl::~OvSessionManagerImpl() { destroyContext(); }

bool OvSessionManagerImpl::openContext(const orvane::SessionRegistryNames& names, ManagerObservers& observers) {
  context_ = std::make_unique<CONTEXTSTRUCT>(names, observers);
  if (!context_->semaphore.open(names.semaphore)) {
    OvWriteLog(2, "%s: error opening semaphore (errno=%d)", kClass, errno);
    return false;
  }
  {
    const orvane::SemaphoreTurn turn(context_->semaphore);
    if (!turn) {
      OvWriteLog(2, "%s: error waiting for semaphore (errno=%d)", kClass, errno);
      return false;
    }
    if (!orvane::openSharedMemory(*context_, kClass)) return false;
  }
  context_->listener = std::make_unique<orvane::SessionListener>(
      names.socketPath(getProcessId()), [this](const OvSESSIONMANAGER_EVENT& event) { fireEvent(event, false); });
  return context_->listener->start(kClass);
}

void OvSessionManagerImpl::destroyContext() {
  if (!context_) return;
  context_->listener.reset();
  if (context_->fdSharedMemory >= 0) {
    const orvane::SemaphoreTurn turn(context_->semaphore);
    if (turn) {
      orvane::closeSharedMemory(*context_);
    } else {
      OvWriteLog(2, "%s::%s: error waiting for semaphore (errno=%d)", kClass, __func__, errno);
      orvane::abandonSharedMemory(*context_);
    }
  }
  context_.reset();
}

void OvSessionManagerImpl::stopListening() {
  if (context_) context_->listener->stop();
}

bool OvSessionManagerImpl::isListenerThread() const { return context_ && context_->listener->isListenerThread(); }

uint32_t OvSessionManagerImpl::getProcessId() { return static_cast<uint32_t>(getpid()); }

bool OvSessionManagerImpl::isOpen(const char* function) const {
  if (!context_) OvWriteLog(2, "%s::%s: session registry is not open", kClass, function);
  return context_ != nullptr;
}

// What `work` returns, or an empty value of its kind.
template <typename Work>
auto OvSessionManagerImpl::underSemaphore(const char* function, Work work) {
  using Result = decltype(work(*context_->pSharedMemory));
  if (!isOpen(function)) return Result{};
  const orvane::SemaphoreTurn turn(context_->semaphore);
  if (turn) return work(*context_->pSharedMemory);
  OvWriteLog(2, "%s::%s: error waiting for semaphore (errno=%d)", kClass, function, errno);
  return Result{};
}

int OvSessionManagerImpl::addProcess(uint32_t processId) {
  return underSemaphore(__func__, [=](OvSharedSegment& segment) { return replaceInLowestSlot(segment, 0, processId); });
}

int OvSessionManagerImpl::removeProcess(uint32_t processId) {
  return underSemaphore(__func__, [=](OvSharedSegment& segment) { return replaceInLowestSlot(segment, processId, 0); });
}

std::vector<uint32_t> OvSessionManagerImpl::getProcessList() {
  std::vector<uint32_t> result = underSemaphore(__func__, [](const OvSharedSegment& segment) {
    return std::vector<uint32_t>(std::begin(segment.processes), std::end(segment.processes));
  });
  std::erase(result, 0u);
  return result;
}

uint32_t OvSessionManagerImpl::addSession(const OvSESSION_INFO& session, OvSessionObserver* observer) {
  if (!isOpen(__func__)) return 0;
  if (!isPossible(session)) {
    OvWriteLog(2, "%s::%s: text without end", kClass, __func__);
    return 0;
  }
  OvSESSION_INFO added = session;
  added.sessionId = 0;
  added.observer = context_->sessionObservers.add(observer);
  const uint32_t sessionId = underSemaphore(__func__, [&added](OvSharedSegment& segment) {
    OvSESSION_INFO* const record = recordOf(segment, 0);
    if (!record) return 0u;
    const uint32_t id = takeNextSessionId(segment);
    *record = added;
    record->sessionId = id;
    return id;
  });
  if (sessionId != 0)
    context_->sessionObservers.assign(added.observer, sessionId);
  else
    context_->sessionObservers.remove(added.observer);
  return sessionId;
}

std::unique_ptr<OvSESSION_INFO> OvSessionManagerImpl::getSessionInfo(uint32_t sessionId) {
  auto result = underSemaphore(__func__, [=](OvSharedSegment& segment) {
    const OvSESSION_INFO* const record = sessionId != 0 ? recordOf(segment, sessionId) : nullptr;
    return record ? std::make_unique<OvSESSION_INFO>(*record) : nullptr;
  });
  if (result && !isPossible(*result)) result.reset();
  return result;
}

int OvSessionManagerImpl::removeSession(uint32_t sessionId) {
  const int isRemoved = underSemaphore(__func__, [=](OvSharedSegment& segment) {
    OvSESSION_INFO* const record = sessionId != 0 ? recordOf(segment, sessionId) : nullptr;
    if (record) *record = {};
    return record ? 1 : 0;
  });
  // Whatever became of the record: the observer's owner means to destroy it now.
  if (context_) context_->sessionObservers.removeSession(sessionId);
  return isRemoved;
}

std::vector<OvSESSION_INFO> OvSessionManagerImpl::getSessionList() {
  // Copied first, so that what is judged is what is returned, whoever writes to the segment meanwhile.
  std::vector<OvSESSION_INFO> result = underSemaphore(__func__, [](const OvSharedSegment& segment) {
    return std::vector<OvSESSION_INFO>(std::begin(segment.sessions), std::end(segment.sessions));
  });
  std::erase_if(result, [](const OvSESSION_INFO& record) { return record.sessionId == 0 || !isPossible(record); });
  return result;
}
