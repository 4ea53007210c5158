#include "Platform/Linux/Desktop/DesktopScreens.h"

#include <QApplication>
#include <QPointer>
#include <QScreen>
#include <QStyle>
#include <QWidget>
#include <QWindow>
#include <cmath>
#include <mutex>

namespace orvane {
namespace {

// What the toolkit has divided by the screen's scale and rounded. Of the numbers that it may have been, screens have
// the even ones.
int inPixels(int length, qreal ratio) {
  const qreal pixels = length * ratio;
  return static_cast<int>(pixels == std::floor(pixels) ? pixels : 2 * std::nearbyint(pixels / 2));
}

Screens::Size inPixels(QSize size, const QScreen& screen) {
  return {inPixels(size.width(), screen.devicePixelRatio()), inPixels(size.height(), screen.devicePixelRatio())};
}

}  // namespace

// Follows the toolkit on the main thread, and tells on any.
class DesktopScreens::Watch : public QObject {
 public:
  Watch() {
    connect(qApp, &QGuiApplication::screenAdded, this, &Watch::follow);
    connect(qApp, &QGuiApplication::screenRemoved, this, &Watch::update);
    connect(qApp, &QGuiApplication::primaryScreenChanged, this, &Watch::update);
    // The frame of a window is known some time after it was shown, without a signal.
    connect(qApp, &QGuiApplication::focusWindowChanged, this, &Watch::update);
    for (QScreen* const screen : QGuiApplication::screens()) follow(screen);
    update();
  }

  void setMainWindow(QWidget* window) {
    mainWindow_ = window;
    update();
  }

  Size largestWindowContent() const {
    const std::lock_guard lock(mutex_);
    return largestWindowContent_;
  }
  Size visibleArea() const {
    const std::lock_guard lock(mutex_);
    return visibleArea_;
  }

 private:
  void follow(QScreen* screen) {
    connect(screen, &QScreen::availableGeometryChanged, this, &Watch::update);
    connect(screen, &QScreen::physicalDotsPerInchChanged, this, &Watch::update);
    connect(screen, &QScreen::logicalDotsPerInchChanged, this, &Watch::update);
    update();
  }

  void update() {
    const QScreen* const first = QGuiApplication::primaryScreen();
    const QScreen* const main = mainWindow_ && mainWindow_->screen() != nullptr ? mainWindow_->screen() : first;
    // The widget gets its window when it is shown, and maybe another one later.
    QWindow* const handle = mainWindow_ ? mainWindow_->windowHandle() : nullptr;
    if (handle != nullptr) connect(handle, &QWindow::screenChanged, this, &Watch::update, Qt::UniqueConnection);
    const Size content = first == nullptr ? Size() : inPixels(first->availableSize().shrunkBy(frame()), *first);
    const Size area = main == nullptr ? Size() : inPixels(main->availableSize(), *main);
    const std::lock_guard lock(mutex_);
    largestWindowContent_ = content;
    visibleArea_ = area;
  }

  // Of a titled window, as far as it is known.
  QMargins frame() const {
    const QWindow* const handle = mainWindow_ ? mainWindow_->windowHandle() : nullptr;
    const QMargins known = handle != nullptr ? handle->frameMargins() : QMargins();
    return known.isNull() ? QMargins(0, QApplication::style()->pixelMetric(QStyle::PM_TitleBarHeight), 0, 0) : known;
  }

  QPointer<QWidget> mainWindow_{};
  mutable std::mutex mutex_;
  Size largestWindowContent_{};
  Size visibleArea_{};
};

DesktopScreens::DesktopScreens() : watch_(std::make_unique<Watch>()) {}

DesktopScreens::~DesktopScreens() = default;

void DesktopScreens::setMainWindow(QWidget* window) { watch_->setMainWindow(window); }

Screens::Size DesktopScreens::largestWindowContent() const { return watch_->largestWindowContent(); }

Screens::Size DesktopScreens::visibleArea() const { return watch_->visibleArea(); }

}  // namespace orvane
