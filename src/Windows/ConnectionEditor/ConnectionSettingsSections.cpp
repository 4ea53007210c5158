// What the connection editor is made of.

#include <QCheckBox>
#include <QComboBox>
#include <QFrame>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScrollArea>
#include <QVBoxLayout>

#include "Windows/ConnectionEditor/ConnectionInfoView.h"
#include "Windows/ConnectionEditor/ConnectionSettingsView.h"
#include "Windows/Style/Controls.h"
#include "Windows/Style/Metrics.h"
#include "Windows/Style/Text.h"

namespace orvane {

using Setting = ConnectionSetting;

QWidget* ConnectionSettingsView::makeHeader() {
  auto* header = new QFrame;
  header->setProperty("role", "bar");
  auto* layout = new QHBoxLayout(header);
  layout->setContentsMargins(metrics::kSpacing, metrics::kSpacing, metrics::kSpacing, metrics::kSpacing);
  layout->setSpacing(metrics::kSpacing);
  layout->addWidget(back_);
  layout->addWidget(heading_, 1);
  layout->addWidget(title_, 1);
  layout->addWidget(undo_);
  return header;
}

QWidget* ConnectionSettingsView::makeSections() {
  auto* content = new QWidget;
  auto* sections = new QVBoxLayout(content);
  sections->setContentsMargins(metrics::kMargin, metrics::kMargin, metrics::kMargin, metrics::kMargin);
  sections->setSpacing(metrics::kMargin);
  addGeneral(*sections);
  addLogIn(*sections);
  addLocations(*sections);
  addDisplay(*sections);
  addDevices(*sections);
  addAdvanced(*sections);
  sections->addStretch();
  return scrolling("connectionSettingsScroll", content);
}

QWidget* ConnectionSettingsView::makeFooter() {
  auto* footer = new QWidget;
  auto* layout = new QVBoxLayout(footer);
  layout->setContentsMargins(metrics::kMargin, metrics::kSpacing, metrics::kMargin, metrics::kMargin);
  layout->addLayout(buttonRow({delete_}, {cancel_, add_}));
  return footer;
}

void ConnectionSettingsView::addGeneral(QVBoxLayout& sections) {
  QVBoxLayout* card = addCard(sections, text("View.Editor.General"));
  card->addWidget(makeBox(Setting::kConnectOnStart, "connectOnStartBox", text("View.ConnectOnStart.Box")));
  card->addWidget(makeLabel("descriptionLabel", "secondary", text("View.Editor.Description")));
  card->addWidget(description_);
  card->addWidget(descriptionField_);
  descriptionField_->setObjectName(QStringLiteral("descriptionField"));
  descriptionField_->setAccessibleName(text("View.Editor.Description"));
  descriptionField_->setTabChangesFocus(true);
  descriptionField_->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
  descriptionField_->setFixedHeight(metrics::kRowHeight * 3);
  card->addLayout(buttonRow({addDescription_, editDescription_, info_}, {}));
  card->addWidget(infoText_);
}

void ConnectionSettingsView::addLogIn(QVBoxLayout& sections) {
  QVBoxLayout* card = addCard(sections, text("View.Credentials.Title"));
  card->addWidget(preview_);
  card->addWidget(makeBox(Setting::kAnonymousLogin, "anonymousBox", text("View.Editor.Anonymous")));
  card->addWidget(makeBox(Setting::kSaveCredentials, "saveCredentialsBox", text("View.Credentials.Save")));
  card->addWidget(labelled(text("View.Credentials.UserName"), userName_));
  card->addWidget(labelled(text("View.Credentials.Password"), password_));
  card->addWidget(labelled(text("View.Credentials.Domain"), domain_));
  card->addLayout(buttonRow({clearCredentials_}, {}));
}

void ConnectionSettingsView::addLocations(QVBoxLayout& sections) {
  QVBoxLayout* card = addCard(sections, text("View.Editor.Locations"));
  locationsCard_ = card->parentWidget();
  locations_->setObjectName(QStringLiteral("locationList"));
  locations_->setAccessibleName(text("View.Editor.Locations"));
  locations_->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
  locations_->setFixedHeight(metrics::kRowHeight * 3);
  card->addWidget(locations_);
  card->addLayout(buttonRow({addLocation_, removeLocation_, editLocation_}, {}));
}

void ConnectionSettingsView::addDisplay(QVBoxLayout& sections) {
  QVBoxLayout* card = addCard(sections, text("View.Editor.Display"));
  card->addWidget(makePopUp(ConnectionPopUp::kResolution, "resolutionPopUp", text("View.Editor.Resolution")));
  card->addWidget(makePopUp(ConnectionPopUp::kColors, "colorsPopUp", text("View.Editor.Colors")));
  card->addWidget(makeBox(Setting::kMultipleMonitors, "multipleMonitorsBox", text("View.Editor.MultipleMonitors")));
}

void ConnectionSettingsView::addDevices(QVBoxLayout& sections) {
  QVBoxLayout* card = addCard(sections, text("View.Editor.Devices"));
  card->addWidget(makeBox(Setting::kPlayAudio, "playAudioBox", text("View.Editor.PlayAudio")));
  card->addWidget(makeBox(Setting::kRedirectClipboard, "clipboardBox", text("View.Editor.Clipboard")));
  card->addWidget(makeBox(Setting::kRedirectDrives, "drivesBox", text("View.Editor.Drives")));
}

void ConnectionSettingsView::addAdvanced(QVBoxLayout& sections) {
  sections.addWidget(advanced_, 0, Qt::AlignLeft);
  auto* column = new QVBoxLayout(advancedSection_);
  column->setContentsMargins(0, 0, 0, 0);
  column->setSpacing(metrics::kMargin);
  sections.addWidget(advancedSection_);
  const struct {
    QString title;
    std::vector<std::tuple<Setting, const char*, QString>> boxes;
  } kGroups[] = {
      {text("View.Editor.Integration"),
       {{Setting::kSeamless, "seamlessBox", text("View.Editor.Seamless")},
        {Setting::kPrinters, "printersBox", text("View.Editor.Printers")},
        {Setting::kSerialPorts, "serialPortsBox", text("View.Editor.SerialPorts")}}},
      {text("View.Editor.Performance"),
       {{Setting::kDesktopBackground, "backgroundBox", text("View.Editor.Background")},
        {Setting::kFontSmoothing, "fontSmoothingBox", text("View.Editor.FontSmoothing")},
        {Setting::kDesktopComposition, "compositionBox", text("View.Editor.Composition")},
        {Setting::kWindowContent, "windowContentBox", text("View.Editor.WindowContent")},
        {Setting::kAnimation, "animationBox", text("View.Editor.Animation")},
        {Setting::kThemes, "themesBox", text("View.Editor.Themes")},
        {Setting::kBitmapCaching, "bitmapCachingBox", text("View.Editor.BitmapCaching")}}},
      {text("View.Editor.Acceleration"),
       {{Setting::kGraphicsAcceleration, "graphicsBox", text("Features.Name.GraphicsAcceleration")},
        {Setting::kSurge, "surgeBox", text("Features.Name.WANAcceleration")},
        {Setting::kFlashRedirection, "flashBox", text("Features.Name.FlashAcceleration")}}},
  };
  for (const auto& group : kGroups) {
    QVBoxLayout* card = addCard(*column, group.title);
    const Setting first = std::get<Setting>(group.boxes.front());
    if (first == Setting::kDesktopBackground)
      card->addWidget(makePopUp(ConnectionPopUp::kSpeed, "speedPopUp", text("View.Editor.Speed")));
    for (const auto& [setting, objectName, title] : group.boxes) card->addWidget(makeBox(setting, objectName, title));
    if (first == Setting::kGraphicsAcceleration) card->addWidget(flashNotice_);
  }
}

QCheckBox* ConnectionSettingsView::makeBox(Setting setting, const char* objectName, const QString& title) {
  QCheckBox*& box = boxes_[static_cast<size_t>(setting)];
  box = makeCheckBox(objectName, title);
  connect(box, &QCheckBox::toggled, this,
          [this, setting](bool isChecked) { controller_.setChecked(setting, isChecked); });
  return box;
}

QWidget* ConnectionSettingsView::makePopUp(ConnectionPopUp popUp, const char* objectName, const QString& title) {
  QComboBox*& made = popUps_[static_cast<size_t>(popUp)];
  made = makePopUpButton(objectName);
  connect(made, &QComboBox::activated, this, [this, popUp](int item) {
    controller_.handlePopUpButtonDidChangeSelection(popUp, static_cast<size_t>(item));
  });
  return labelled(title, made);
}

}  // namespace orvane
