#include "Windows/ConnectionEditor/ConnectionSettingsView.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QSignalBlocker>
#include <QVBoxLayout>

#include "Windows/ConnectionEditor/ConnectionInfoView.h"
#include "Windows/Style/Controls.h"
#include "Windows/Style/Metrics.h"
#include "Windows/Style/Symbols.h"
#include "Windows/Style/Text.h"

namespace orvane {

using Controller = ConnectionSettingsViewController;
using Setting = ConnectionSetting;

ConnectionSettingsView::ConnectionSettingsView(Controller& controller)
    : controller_(controller),
      back_(makeIconButton("backButton", QStringLiteral("back"), text("UI.Buttons.Back"))),
      heading_(makeLabel("connectionHeading", "title")),
      title_(makeField("connectionNameField", text("View.Editor.Name"))),
      undo_(makeIconButton("undoButton", QStringLiteral("undo"), text("View.Editor.Undo"))),
      info_(makeButton("infoButton", "link")),
      infoText_(new ConnectionInfoView(controller.managedInfo(), controller.manualInfo())),
      description_(makeLabel("descriptionText", nullptr)),
      descriptionField_(new QPlainTextEdit),
      addDescription_(makeButton("addDescriptionButton", "link", text("View.Editor.AddDescription"))),
      editDescription_(makeButton("editDescriptionButton", "link")),
      userName_(makeField("userNameField", text("View.Credentials.UserName"))),
      password_(makeSecretField("passwordField", text("View.Credentials.Password"))),
      domain_(makeField("domainField", text("View.Credentials.Domain"))),
      preview_(makeLabel("credentialsPreview", nullptr)),
      clearCredentials_(makeButton("clearCredentialsButton", "link", text("View.Editor.ClearCredentials"))),
      locations_(new QListWidget),
      addLocation_(makeIconButton("addLocationButton", QStringLiteral("add"), text("View.Editor.AddLocation"))),
      removeLocation_(
          makeIconButton("removeLocationButton", QStringLiteral("remove"), text("View.Editor.RemoveLocation"))),
      editLocation_(makeIconButton("editLocationButton", QStringLiteral("edit"), text("View.Editor.EditLocation"))),
      advanced_(makeButton("advancedButton", "link", text("View.Editor.Advanced"))),
      advancedSection_(new QWidget),
      flashNotice_(makeLabel("flashNotice", "secondary", text("View.Editor.FlashNotice"))),
      delete_(makeButton("deleteButton", "danger", text("View.Editor.Delete"))),
      cancel_(makeButton("cancelButton", nullptr, text("UI.Buttons.Cancel"))),
      add_(makeButton("addButton", "primary", text("View.Editor.Add"))) {
  setObjectName(QStringLiteral("connectionEditor"));
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->setSpacing(0);
  layout->addWidget(makeHeader());
  layout->addWidget(makeSections(), 1);
  layout->addWidget(makeFooter());
  connectFields();
  controller_.setOnChange([this] { refresh(); });
  controller_.setOnFocus([this](ConnectionSettingsFocus) { descriptionField_->setFocus(Qt::OtherFocusReason); });
  refresh();
}

void ConnectionSettingsView::connectFields() {
  connect(title_, &QLineEdit::textEdited, this,
          [this](const QString& typed) { controller_.setTitle(typed.toStdString()); });
  connect(userName_, &QLineEdit::textEdited, this,
          [this](const QString& typed) { controller_.setUserName(typed.toStdString()); });
  connect(password_, &QLineEdit::textEdited, this,
          [this](const QString& typed) { controller_.setPassword(SecretText(typed.toStdString())); });
  connect(domain_, &QLineEdit::textEdited, this,
          [this](const QString& typed) { controller_.setDomain(typed.toStdString()); });
  connect(descriptionField_, &QPlainTextEdit::textChanged, this,
          [this] { controller_.setEditedDescription(descriptionField_->toPlainText().toStdString()); });
  connect(locations_, &QListWidget::currentRowChanged, this,
          [this](int row) { controller_.selectLocation(row < 0 ? std::nullopt : std::optional<size_t>(row)); });
  connect(locations_, &QListWidget::itemDoubleClicked, this, [this] {
    if (controller_.isLocationListEditable()) controller_.onEditLocationListClick(Controller::kEditLocation);
  });
  const std::pair<QPushButton*, std::function<void()>> kClicks[] = {
      {back_, [this] { controller_.onBackButtonClick(); }},
      {undo_,
       [this] {
         password_->clear();
         controller_.onUndoButtonClick();
       }},
      {info_, [this] { controller_.onConfigInfoClick(); }},
      {addDescription_, [this] { controller_.editConnectionDescriptionClick(); }},
      {editDescription_, [this] { controller_.editConnectionDescriptionClick(); }},
      {clearCredentials_, [this] { controller_.clearCredentialsClick(); }},
      {addLocation_, [this] { controller_.onEditLocationListClick(Controller::kAddLocation); }},
      {removeLocation_, [this] { controller_.onEditLocationListClick(Controller::kRemoveLocation); }},
      {editLocation_, [this] { controller_.onEditLocationListClick(Controller::kEditLocation); }},
      {advanced_, [this] { controller_.toggleAdvancedSettingsClick(); }},
      {delete_, [this] { controller_.onDeleteConnectionClick(); }},
      {cancel_, [this] { controller_.onCancelManualConnectionClick(); }},
      {add_, [this] { controller_.onAddManualConnectionClick(); }}};
  for (const auto& [button, click] : kClicks) connect(button, &QPushButton::clicked, this, click);
}

void ConnectionSettingsView::refresh() {
  forgetTypedSecret();
  display(*heading_, toQString(controller_.title()));
  heading_->setVisible(!controller_.isTitleEditable());
  display(*title_, toQString(controller_.title()));
  title_->setVisible(controller_.isTitleEditable());
  back_->setVisible(controller_.isBackButtonShown());
  undo_->setVisible(controller_.isUndoButtonShown());
  undo_->setEnabled(controller_.isUndoEnabled());
  add_->setVisible(controller_.isAddButtonShown());
  add_->setEnabled(controller_.isAddEnabled());
  cancel_->setVisible(controller_.isCancelButtonShown());
  delete_->setVisible(!controller_.isManualFarmMode());
  clickOnEscape(*this, controller_.isCancelButtonShown() ? *cancel_ : *back_);
  for (size_t index = 0; index < kConnectionSettings; ++index) {
    const auto setting = static_cast<Setting>(index);
    display(*boxes_[index], controller_.isChecked(setting));
    boxes_[index]->setEnabled(controller_.isEnabled(setting));
    boxes_[index]->setVisible(controller_.isShown(setting));
  }
  flashNotice_->setVisible(controller_.isFlashNoticeShown());
  advancedSection_->setVisible(controller_.isAdvancedSectionShown());
  advanced_->setIcon(symbolIcon(controller_.isAdvancedSectionShown() ? QStringLiteral("chevron-down")
                                                                     : QStringLiteral("chevron-right")));
  info_->setText(toQString(controller_.configInfoButtonTitle()));
  infoText_->setVisible(controller_.isConfigInfoShown());
  if (controller_.isConfigInfoShown()) infoText_->refresh(controller_.isConfigInfoManaged());
  refreshLogIn();
  refreshPopUps();
  refreshDescription();
  refreshLocations();
}

// What was typed for one farm, or before Undo, is no beginning of another password.
void ConnectionSettingsView::forgetTypedSecret() {
  const std::weak_ptr<OvFarm> original = controller_.originalFarm();
  if (!original.owner_before(shownOriginal_) && !shownOriginal_.owner_before(original)) return;
  shownOriginal_ = original;
  password_->clear();
}

void ConnectionSettingsView::refreshLogIn() {
  display(*userName_, toQString(controller_.userName()));
  userName_->setEnabled(controller_.isUserNameEnabled());
  showSecret(*password_, controller_.hasPassword());
  password_->setEnabled(controller_.isPasswordEnabled());
  display(*domain_, toQString(controller_.domain()));
  domain_->setEnabled(controller_.isDomainEnabled());
  const std::optional<std::string> preview = controller_.credentialsPreview();
  display(*preview_, preview ? toQString(*preview) : QString());
  preview_->setVisible(preview.has_value());
  clearCredentials_->setVisible(preview.has_value());
}

void ConnectionSettingsView::refreshPopUps() {
  for (size_t index = 0; index < kConnectionPopUps; ++index) {
    QComboBox& shown = *popUps_[index];
    const QSignalBlocker blocker(shown);
    const std::vector<ConnectionPopUpItem> items = controller_.items(static_cast<ConnectionPopUp>(index));
    for (size_t row = 0; row < items.size(); ++row) {
      const int at = static_cast<int>(row);
      if (at == shown.count()) shown.addItem({});
      if (shown.itemText(at) != toQString(items[row].title)) shown.setItemText(at, toQString(items[row].title));
      static_cast<QListView*>(shown.view())->setRowHidden(at, items[row].isHidden);
    }
    while (shown.count() > static_cast<int>(items.size())) shown.removeItem(shown.count() - 1);
    shown.setCurrentIndex(static_cast<int>(controller_.selectedItem(static_cast<ConnectionPopUp>(index))));
  }
}

void ConnectionSettingsView::refreshDescription() {
  const bool isEditing = controller_.isEditingDescription();
  display(*description_, toQString(controller_.userDescription()));
  description_->setVisible(!isEditing && !controller_.userDescription().empty());
  descriptionField_->setVisible(isEditing);
  const QString edited = toQString(controller_.editedDescription());
  if (descriptionField_->toPlainText() != edited) {
    const QSignalBlocker blocker(descriptionField_);
    descriptionField_->setPlainText(edited);
  }
  addDescription_->setVisible(controller_.isAddDescriptionButtonShown());
  editDescription_->setVisible(controller_.isEditDescriptionButtonShown());
  editDescription_->setText(toQString(controller_.editDescriptionButtonTitle()));
}

void ConnectionSettingsView::refreshLocations() {
  locationsCard_->setVisible(controller_.isLocationsTableShown());
  std::vector<std::string> names;
  for (const auto& location : controller_.locations()) names.push_back(location->name());
  const QSignalBlocker blocker(locations_);
  if (shownLocations_ != names) {
    shownLocations_ = names;
    locations_->clear();
    for (const std::string& name : names) locations_->addItem(toQString(name));
  }
  const std::optional<size_t> selected = controller_.selectedLocation();
  locations_->setCurrentRow(selected ? static_cast<int>(*selected) : -1);
  const bool isEditable = controller_.isLocationListEditable();
  for (QPushButton* button : {addLocation_, removeLocation_, editLocation_}) button->setVisible(isEditable);
  removeLocation_->setEnabled(controller_.isRemoveLocationEnabled() && selected);
  editLocation_->setEnabled(selected.has_value());
}

}  // namespace orvane
