#include "Windows/Desktop/DesktopStatusArea.h"

#include <QSystemTrayIcon>

#include "Windows/Desktop/ResidentWindow.h"
#include "Windows/Desktop/StatusMenu.h"
#include "Windows/Style/Symbols.h"
#include "Windows/Style/Text.h"

namespace orvane {

namespace {

// A panel may start behind the program, end, or be started again.
constexpr int kLookMilliseconds = 3000;

}  // namespace

class DesktopStatusArea::Item : public QObject, public StatusItem {
 public:
  explicit Item(DesktopStatusArea& area)
      : area_(area), menu_([this](const StatusMenuItem& item) { click(item); }, area.quit_) {
    area_.item_ = this;
    // Its controller is still being made.
    QMetaObject::invokeMethod(
        this, [this] { follow(); }, Qt::QueuedConnection);
    connect(&menu_, &QMenu::aboutToShow, this, [this] { draw(alternatePicture_); });
    connect(&menu_, &QMenu::aboutToHide, this, [this] { draw(picture_); });
    connect(&tray_, &QSystemTrayIcon::activated, this, [this](QSystemTrayIcon::ActivationReason reason) {
      if (reason == QSystemTrayIcon::Trigger) menu_.popup(QCursor::pos());
    });
    tray_.setContextMenu(&menu_);
    connect(&look_, &QTimer::timeout, this, [this] { place(); });
    look_.start(kLookMilliseconds);
  }
  ~Item() override {
    if (const auto controller = controller_.lock()) controller->setOnChange({});
    area_.item_ = nullptr;
  }

  void setToolTip(const std::string& text) override { tray_.setToolTip(toQString(text)); }
  void setPicture(const std::string& name) override {
    picture_ = toQString(name);
    if (!menu_.isVisible()) draw(picture_);
    place();
  }
  void setAlternatePicture(const std::string& name) override { alternatePicture_ = toQString(name); }

  void showResident() {
    if (!resident_) return;
    resident_->showNormal();
    resident_->raise();
    resident_->activateWindow();
  }

 private:
  void follow() {
    const auto controller = area_.controller_ ? area_.controller_() : nullptr;
    if (!controller) return;
    controller_ = controller;
    controller->setOnChange([this] { redraw_.start(0); });
    redraw_.setSingleShot(true);
    connect(&redraw_, &QTimer::timeout, this, [this] {
      if (const auto now = controller_.lock()) menu_.setItems(now->menu());
    });
    menu_.setItems(controller->menu());
  }
  void click(const StatusMenuItem& item) {
    if (const auto controller = controller_.lock()) controller->onClick(item);
  }
  void draw(const QString& picture) {
    const QIcon icon = statusIcon(picture);
    tray_.setIcon(icon);
    if (resident_) resident_->setPicture(icon);
  }
  void place() {
    const bool hasArea = QSystemTrayIcon::isSystemTrayAvailable();
    if (hasArea && !tray_.isVisible()) tray_.show();
    if (hasArea) resident_.reset();
    if (hasArea || resident_) return;
    tray_.hide();
    resident_ = std::make_unique<ResidentWindow>(menu_);
    resident_->setPicture(statusIcon(picture_));
    resident_->show();
  }

  DesktopStatusArea& area_;
  std::weak_ptr<DiModeController> controller_{};
  StatusMenu menu_;
  QSystemTrayIcon tray_{};
  std::unique_ptr<ResidentWindow> resident_{};
  QString picture_{};
  QString alternatePicture_{};
  QTimer look_{};
  QTimer redraw_{};
};

std::unique_ptr<StatusItem> DesktopStatusArea::addItem() { return std::make_unique<Item>(*this); }

void DesktopStatusArea::showResident() {
  if (item_ != nullptr) item_->showResident();
}

}  // namespace orvane
