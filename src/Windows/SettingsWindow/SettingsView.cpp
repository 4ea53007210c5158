#include "Windows/SettingsWindow/SettingsView.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QPushButton>
#include <QScrollArea>
#include <QSignalBlocker>
#include <QVBoxLayout>
#include <algorithm>

#include "Windows/Style/Controls.h"
#include "Windows/Style/Metrics.h"
#include "Windows/Style/Text.h"

namespace orvane {

namespace {

using Box = SettingsWindowController::Box;

constexpr int kTallest = 480;

}  // namespace

SettingsView::SettingsView(SettingsWindowController& controller)
    : controller_(controller),
      onResolutionChange_(makePopUpButton("resolutionChangePopUp")),
      closing_(makeLabel("closingLabel", "secondary")) {
  setWindowTitle(text("View.Menu.Settings"));
  QPushButton* cancel = makeButton("cancelButton", nullptr, text("UI.Buttons.Cancel"));
  QPushButton* done = makeButton("doneButton", "primary", text("UI.Buttons.Done"));
  done->setDefault(true);

  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->setSpacing(metrics::kMargin);
  QScrollArea* groups = scrolling("settingsScroll", makeGroups());
  groups->setMinimumHeight(std::min(kTallest, groups->widget()->sizeHint().height()));
  layout->addWidget(groups, 1);
  layout->addLayout(buttonRow({}, {cancel, done}));
  clickOnEscape(*this, *cancel);

  connect(done, &QPushButton::clicked, this, [this] { controller_.onDoneClick(); });
  connect(cancel, &QPushButton::clicked, this, [this] { controller_.onCancelClick(); });
  controller_.setOnChange([this] { refresh(); });
  setFocusProxy(boxes_.front().second);
  refresh();
}

QWidget* SettingsView::makeGroups() {
  const struct {
    QString title;
    std::vector<std::tuple<Box, const char*, QString>> boxes;
  } kGroups[] = {
      {text("View.Settings.Start"),
       {{Box::kShowTutorialOnStart, "showTutorialBox", text("View.Settings.ShowTutorial")},
        {Box::kStartAtLogin, "startAtLoginBox", text("View.Settings.StartAtLogin")}}},
      {text("View.Settings.Sessions"),
       {{Box::kAdaptiveGraphics, "adaptiveGraphicsBox", text("View.Settings.AdaptiveGraphics")},
        {Box::kFullscreenInMaximizedWindow, "fullscreenBox", text("View.Settings.FullscreenInMaximizedWindow")},
        {Box::kForceDisableSeamless, "noSeamlessBox", text("View.Settings.ForceDisableSeamless")},
        {Box::kTranslateCtrlClickToRightClick, "controlClickBox", text("View.Settings.TranslateCtrlClick")}}},
      {text("View.Settings.Ask"),
       {{Box::kAskBeforeCloseSession, "askCloseBox", text("View.Settings.AskBeforeCloseSession")},
        {Box::kAskBeforeLogoff, "askLogoffBox", text("View.Settings.AskBeforeLogoff")},
        {Box::kAskBeforeClearCredentials, "askClearBox", text("View.Settings.AskBeforeClearCredentials")},
        {Box::kAskBeforeDeleteConnection, "askDeleteBox", text("View.Settings.AskBeforeDeleteConnection")}}},
      {text("View.Settings.Support"), {{Box::kLogging, "loggingBox", text("View.Settings.Logging")}}},
  };
  auto* content = new QWidget;
  auto* layout = new QVBoxLayout(content);
  layout->setContentsMargins(0, 0, metrics::kMargin, 0);
  layout->setSpacing(metrics::kMargin);
  for (const auto& group : kGroups) {
    QVBoxLayout* card = addCard(*layout, group.title);
    for (const auto& [box, objectName, title] : group.boxes) {
      QCheckBox* made = makeCheckBox(objectName, title);
      boxes_.emplace_back(box, made);
      card->addWidget(made);
      connect(made, &QCheckBox::toggled, this,
              [this, box = box](bool isChecked) { controller_.setChecked(box, isChecked); });
    }
    if (std::get<Box>(group.boxes.front()) == Box::kAdaptiveGraphics) {
      onResolutionChange_->addItems({text("View.Settings.ResolutionChange.Ask"),
                                     text("View.Settings.ResolutionChange.Reconnect"),
                                     text("View.Settings.ResolutionChange.Nothing")});
      card->addWidget(labelled(text("View.Settings.ResolutionChange"), onResolutionChange_));
    }
    if (std::get<Box>(group.boxes.front()) == Box::kAskBeforeCloseSession) card->addWidget(closing_);
  }
  layout->addStretch();
  connect(onResolutionChange_, &QComboBox::activated, this,
          [this](int index) { controller_.setActionOnResolutionChange(index); });
  return content;
}

void SettingsView::refresh() {
  for (const auto& [box, made] : boxes_) display(*made, controller_.isChecked(box));
  const QSignalBlocker blocker(onResolutionChange_);
  onResolutionChange_->setCurrentIndex(controller_.actionOnResolutionChange());
  display(*closing_, toQString(controller_.closingLabel()));
}

}  // namespace orvane
