#pragma once

#include <memory>
#include <string>

#include "Guide.h"
#include "MainLoop.h"
#include "Options.h"
#include "Orchestration/OvBrokerClientController.h"
#include "ShownSessions.h"

namespace orvane::walkthrough {

class ShownOpener;

/// The whole way on the command line, step by step: each prints what came of it. On the main thread.
/// @throws Failure from each step that doesn't work out.
class Walk {
 public:
  /// `options` must outlive the walk.
  explicit Walk(const Options& options);
  ~Walk() { sessions_->close(); }
  Walk(const Walk&) = delete;
  Walk& operator=(const Walk&) = delete;

  /// From the typed address to a farm.
  void findFarm();
  void connect();
  void showApplications() const;
  /// Everything that the options name.
  void launch();
  void endSessions() { sessions_->end(); }

 private:
  std::shared_ptr<OvLocation> locationToUse() const;
  void checkCertificate(const OvLocation& location) const;
  const AppItem& applicationNamed(const std::string& name) const;
  void launch(const AppItem& application);
  void await();

  const Options& options_;
  const std::shared_ptr<MainLoop> mainLoop_ = std::make_shared<MainLoop>();
  const std::shared_ptr<ShownSessions> sessions_ = std::make_shared<ShownSessions>();
  const std::shared_ptr<ShownOpener> opener_;
  const std::shared_ptr<Guide> guide_;
  const std::shared_ptr<OvBrokerClientController> controller_;
  std::shared_ptr<OvLocation> location_;
};

}  // namespace orvane::walkthrough
