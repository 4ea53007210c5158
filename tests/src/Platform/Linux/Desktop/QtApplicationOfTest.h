#pragma once

#include <QAbstractEventDispatcher>
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

  /// Lets a loop run until the condition holds, which is asked in each of its passes. @return whether it did.
  static bool until(const std::function<bool()>& condition) {
    QEventLoop loop;
    QTimer::singleShot(ChildProcess::kPatience, &loop, [&loop] { loop.quit(); });
    const auto check = [&] {
      if (condition()) loop.quit();
    };
    QAbstractEventDispatcher* const dispatcher = QAbstractEventDispatcher::instance();
    QObject::connect(dispatcher, &QAbstractEventDispatcher::awake, &loop, check);
    QObject::connect(dispatcher, &QAbstractEventDispatcher::aboutToBlock, &loop, check);
    if (!condition()) loop.exec();
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
