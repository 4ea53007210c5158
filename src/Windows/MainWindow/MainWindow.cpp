#include "Windows/MainWindow/MainWindow.h"

#include <QCloseEvent>
#include <QFrame>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QScreen>
#include <QVBoxLayout>
#include <algorithm>

#include "Windows/MainWindow/CatalogueView.h"
#include "Windows/MainWindow/Cover.h"
#include "Windows/MainWindow/MainMenu.h"
#include "Windows/MainWindow/MessageBar.h"
#include "Windows/MainWindow/SheetOverlay.h"
#include "Windows/MainWindow/SidePanelView.h"
#include "Windows/Style/Controls.h"
#include "Windows/Style/Metrics.h"
#include "Windows/Style/Text.h"
#include "Windows/Tutorial/TutorialView.h"
#include "Windows/Welcome/WelcomeView.h"

namespace orvane {

namespace {

constexpr QSize kFirstSize(880, 680);
constexpr QSize kSmallestSize(420, 480);

}  // namespace

MainWindow::MainWindow(MainWindowController& controller, std::function<void()> quit)
    : controller_(controller),
      connections_(makeIconButton("connectionsButton", QStringLiteral("menu"), text("DiMode.Menu.Connections"))),
      activeConnection_(makeLabel("activeConnection", "heading")),
      refresh_(makeIconButton("refreshButton", QStringLiteral("refresh"), text("DiMode.Menu.Refresh"))),
      logout_(makeIconButton("logoutButton", QStringLiteral("sign-out"), text("DiMode.Menu.Logout"))),
      bar_(makeBar(std::move(quit))),
      catalogue_(new CatalogueView(controller.applicationTable())),
      cover_(new Cover(this)),
      sidePanel_(new SidePanelView(controller, this)),
      sheet_(new SheetOverlay(this)),
      messages_(new MessageBar(this)) {
  setObjectName(QStringLiteral("mainWindow"));
  setMinimumSize(kSmallestSize);
  auto* content = new QWidget;
  auto* layout = new QVBoxLayout(content);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->setSpacing(0);
  layout->addWidget(bar_);
  layout->addWidget(catalogue_, 1);
  setCentralWidget(content);
  // Above the content, in this order.
  cover_->raise();
  sidePanel_->raise();
  sheet_->raise();

  connect(connections_, &QPushButton::clicked, this, [this] { controller_.onConnectionsButtonClick(); });
  connect(refresh_, &QPushButton::clicked, this, [this] { controller_.onRefreshButtonClick(); });
  connect(logout_, &QPushButton::clicked, this, [this] { controller_.onLogoutButtonClick(); });
  cover_->setOnClick([this] {
    if (controller_.isSidePanelOpen()) controller_.handleSidePanelMainDisablingAreaClick();
  });
  controller_.setOnChange([this] { refresh(); });
  controller_.setOnFocus([this](MainWindowFocus) {
    if (focusWidget() != nullptr) focusWidget()->clearFocus();
  });
  limitSize();
  resize(kFirstSize.boundedTo(maximumSize()));
  refresh();
}

QWidget* MainWindow::makeBar(std::function<void()> quit) {
  auto* bar = new QFrame;
  bar->setObjectName(QStringLiteral("toolbar"));
  bar->setProperty("role", "bar");
  activeConnection_->setWordWrap(false);
  activeConnection_->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
  QPushButton* menuButton = makeIconButton("menuButton", QStringLiteral("more"), text("View.Menu.Title"));
  auto* menu = new MainMenu(controller_.mainMenu(), std::move(quit), this);
  connect(menuButton, &QPushButton::clicked, this, [menu, menuButton] {
    const QPoint right = menuButton->mapToGlobal(QPoint(menuButton->width(), menuButton->height()));
    menu->popup(right - QPoint(menu->sizeHint().width(), 0));
  });
  auto* layout = new QHBoxLayout(bar);
  layout->setContentsMargins(metrics::kSpacing, metrics::kSpacing, metrics::kSpacing, metrics::kSpacing);
  layout->setSpacing(metrics::kSpacing / 2);
  layout->addWidget(connections_);
  layout->addWidget(activeConnection_, 1);
  layout->addWidget(refresh_);
  layout->addWidget(logout_);
  layout->addWidget(menuButton);
  return bar;
}

void MainWindow::refresh() {
  setWindowTitle(controller_.windowTitle().empty() ? text("ProductName.Orvane") : toQString(controller_.windowTitle()));
  bar_->setVisible(controller_.isToolbarVisible());
  connections_->setEnabled(controller_.isConnectionsItemEnabled());
  refresh_->setEnabled(controller_.isRefreshItemEnabled());
  logout_->setEnabled(controller_.isLogoutItemEnabled());
  display(*activeConnection_, toQString(controller_.activeConnectionLabel()));
  activeConnection_->setToolTip(toQString(controller_.activeConnectionLabel()));

  const MainWindowController::Cover cover = controller_.cover();
  catalogue_->setConnected(controller_.currentFarm() != nullptr);
  catalogue_->setEnabled(cover == MainWindowController::Cover::kNone);
  cover_->setGrey(cover == MainWindowController::Cover::kGrey);
  cover_->setVisible(cover != MainWindowController::Cover::kNone);
  refreshWelcome();
  refreshTutorial();
  placeOverlays();
}

void MainWindow::refreshWelcome() {
  using Placement = MainWindowController::WelcomePlacement;
  const std::optional<Placement>& placement = controller_.welcomePlacement();
  if (placement && welcome_ == nullptr) welcome_ = new WelcomeView(controller_.welcomeScreen());
  const bool fillsWindow = placement == Placement::kWholeWindow;
  if (fillsWindow && welcome_->parentWidget() != this) welcome_->setParent(this);
  sidePanel_->refresh(placement == Placement::kSidePanel ? welcome_ : nullptr);
  catalogue_->setVisible(!fillsWindow);
  if (welcome_ == nullptr) return;
  if (fillsWindow) {
    const bool comes = !welcome_->isVisible();
    welcome_->setGeometry(rect());
    welcome_->raise();
    sheet_->raise();
    welcome_->show();
    if (comes) welcome_->setFocus(Qt::OtherFocusReason);  // a link may begin with any page
  } else if (welcome_->parentWidget() == this) {
    welcome_->hide();
  }
}

void MainWindow::refreshTutorial() {
  if (controller_.isTutorialShown() && tutorial_ == nullptr) {
    tutorial_ = new TutorialView(controller_.tutorial());
    tutorial_->setParent(this);
  }
  if (tutorial_ == nullptr || tutorial_->isVisible() == controller_.isTutorialShown()) return;
  tutorial_->setVisible(controller_.isTutorialShown());
  if (controller_.isTutorialShown()) {
    tutorial_->raise();
    sheet_->raise();
    tutorial_->setFocus(Qt::OtherFocusReason);
  } else {
    catalogue_->setFocus(Qt::OtherFocusReason);
  }
}

void MainWindow::showMessage(const QString& title, const QString& text) { messages_->showMessage(title, text); }

void MainWindow::closeEvent(QCloseEvent* event) {
  event->accept();
  controller_.windowWillClose();
}

void MainWindow::resizeEvent(QResizeEvent* event) {
  QMainWindow::resizeEvent(event);
  placeOverlays();
}

void MainWindow::showEvent(QShowEvent* event) {
  QMainWindow::showEvent(event);
  limitSize();
  placeOverlays();
}

void MainWindow::limitSize() {
  const Screens::Size limit = controller_.windowWillResize({QWIDGETSIZE_MAX, QWIDGETSIZE_MAX});
  if (limit.width <= 0 || limit.height <= 0) return;
  // The controller counts the screen's pixels.
  const QSize largest = (QSizeF(limit.width, limit.height) / devicePixelRatioF()).toSize();
  setMaximumSize(largest.expandedTo(kSmallestSize));
}

void MainWindow::placeOverlays() {
  const int top = controller_.isToolbarVisible() ? bar_->sizeHint().height() : 0;
  cover_->setGeometry(0, top, width(), height() - top);
  if (sidePanel_->height() != height() - top || sidePanel_->y() != top) sidePanel_->place(top);
  sheet_->setGeometry(rect());
  if (welcome_ != nullptr && welcome_->parentWidget() == this) welcome_->setGeometry(rect());
  if (tutorial_ != nullptr) tutorial_->setGeometry(0, top, width(), height() - top);
  if (messages_->isVisible()) messages_->place();
}

}  // namespace orvane
