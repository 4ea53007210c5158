#pragma once

#include <QAbstractEventDispatcher>
#include <QApplication>
#include <QEventLoop>
#include <QTimer>

#include "Support/ChildProcess.h"

/// The toolkit's application of a test, without a desktop's screen. The main thread is the one that makes it.
class QtApplicationOfTest {
 public:
  QtApplicationOfTest() { setenv("QT_QPA_PLATFORM", "offscreen", 0), application_ = make(); }

  /// Lets a loop run until the condition holds, which is asked in each of its passes. @return whether it did.
  static bool until(const std::function<bool()>& condition) {
    QEventLoop loop;
    QTimer::singleShot(ChildProcess::kPatience, &loop, &QEventLoop::quit);
    const auto check = [&] {
      if (condition()) loop.quit();
    };
    for (const auto signal : {&QAbstractEventDispatcher::awake, &QAbstractEventDispatcher::aboutToBlock}) {
      QObject::connect(QAbstractEventDispatcher::instance(), signal, &loop, check);
    }
    if (!condition()) loop.exec();
    return condition();
  }

 private:
  static std::unique_ptr<QApplication> make() {
    static char name[] = "test", *arguments[] = {name, nullptr};
    static int count = 1;
    return std::make_unique<QApplication>(count, arguments);
  }

  std::unique_ptr<QApplication> application_{};
};
