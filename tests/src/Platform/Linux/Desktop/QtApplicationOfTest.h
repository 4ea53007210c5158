#pragma once

#include <QApplication>
#include <QEventLoop>
#include <QTimer>
#include <cstdlib>
#include <functional>
#include <utility>

#include "Support/ChildProcess.h"

/// The toolkit's application of a test, without a desktop's screen. The main thread is the one that makes it.
class QtApplicationOfTest {
 public:
  QtApplicationOfTest() : application_(makeApplication()) {}

  /// Lets the loop run until the condition holds, which is asked after each of its passes. @return whether it did.
  static bool until(const std::function<bool()>& condition) {
    QTimer patience;
    patience.setSingleShot(true);
    patience.start(ChildProcess::kPatience);
    while (!condition() && patience.isActive()) QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    return condition();
  }

 private:
  static std::unique_ptr<QApplication> makeApplication() {
    static int count = 1;
    static char name[] = "test";
    static char* arguments[] = {name, nullptr};
    setenv("QT_QPA_PLATFORM", "offscreen", 0);
    return std::make_unique<QApplication>(count, arguments);
  }

  const std::unique_ptr<QApplication> application_;
};
