#include "Windows/EditLocation/EditLocationView.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QSignalBlocker>
#include <QVBoxLayout>

#include "Controllers/EditLocationWindowController.h"
#include "Windows/Style/Controls.h"
#include "Windows/Style/Metrics.h"
#include "Windows/Style/Text.h"

namespace orvane {

namespace {

constexpr int kShownBrokers = 4;

}  // namespace

// A list whose open editor can be made to hand over its text, whatever has the focus.
class EditLocationView::List : public QListWidget {
 public:
  void finishTyping() {
    QWidget* editor = state() == EditingState ? indexWidget(currentIndex()) : nullptr;
    if (editor == nullptr) return;
    commitData(editor);
    closeEditor(editor, QAbstractItemDelegate::NoHint);
  }
};

EditLocationView::EditLocationView(EditLocationWindowController& controller)
    : controller_(controller),
      name_(makeField("locationNameField", text("View.EditLocation.Name"))),
      default_(makeCheckBox("defaultLocationBox", text("View.EditLocation.Default"))),
      protocol_(makePopUpButton("protocolPopUp")),
      port_(makeField("portField", text("View.EditLocation.Port"))),
      useSsl_(makeCheckBox("useSslBox", text("View.EditLocation.UseSsl"))),
      sslGateway_(makeField("sslGatewayField", text("View.EditLocation.SslGateway"))),
      brokers_(new List),
      addBroker_(makeIconButton("addBrokerButton", QStringLiteral("add"), text("View.EditLocation.AddBroker"))),
      removeBroker_(
          makeIconButton("removeBrokerButton", QStringLiteral("remove"), text("View.EditLocation.RemoveBroker"))) {
  setWindowTitle(text("View.EditLocation.Title"));
  for (const std::string& title : EditLocationWindowController::protocolItems()) protocol_->addItem(toQString(title));
  QPushButton* cancel = makeButton("cancelButton", nullptr, text("UI.Buttons.Cancel"));
  QPushButton* done = makeButton("doneButton", "primary", text("UI.Buttons.Done"));
  done->setDefault(true);

  auto* protocolAndPort = new QHBoxLayout;
  protocolAndPort->setSpacing(metrics::kSpacing);
  protocolAndPort->addWidget(labelled(text("View.EditLocation.Protocol"), protocol_), 1);
  protocolAndPort->addWidget(labelled(text("View.EditLocation.Port"), port_), 1);
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->setSpacing(metrics::kSpacing);
  layout->addWidget(makeLabel("editLocationTitle", "title", text("View.EditLocation.Title")));
  layout->addWidget(labelled(text("View.EditLocation.Name"), name_));
  layout->addWidget(default_);
  layout->addWidget(makeBrokers(), 1);
  layout->addLayout(protocolAndPort);
  layout->addWidget(useSsl_);
  layout->addWidget(labelled(text("View.EditLocation.SslGateway"), sslGateway_));
  layout->addSpacing(metrics::kSpacing);
  layout->addLayout(buttonRow({}, {cancel, done}));
  clickOnEscape(*this, *cancel);

  const std::pair<QLineEdit*, void (EditLocationWindowController::*)(const std::string&)> kFields[] = {
      {name_, &EditLocationWindowController::setName},
      {port_, &EditLocationWindowController::setPort},
      {sslGateway_, &EditLocationWindowController::setSslGateway}};
  for (const auto& [field, set] : kFields) {
    connect(field, &QLineEdit::textEdited, this,
            [this, set = set](const QString& typed) { (controller_.*set)(typed.toStdString()); });
  }
  connect(default_, &QCheckBox::toggled, this, [this](bool isChecked) { controller_.setDefault(isChecked); });
  connect(useSsl_, &QCheckBox::toggled, this, [this](bool isChecked) { controller_.onUseSSLClick(isChecked); });
  connect(protocol_, &QComboBox::activated, this, [this](int item) { controller_.setProtocolItem(item); });
  connect(done, &QPushButton::clicked, this, [this] { controller_.onDoneButtonClick(); });
  connect(cancel, &QPushButton::clicked, this, [this] { controller_.onCancelButtonClick(); });
  controller_.setOnChange([this] { refresh(); });
  controller_.setOnFocus([this](EditLocationFocus focus) {
    if (focus == EditLocationFocus::kNone) {
      brokers_->finishTyping();
    } else if (brokers_->currentItem() != nullptr) {
      brokers_->setFocus(Qt::OtherFocusReason);
      brokers_->editItem(brokers_->currentItem());
    }
  });
  setFocusProxy(name_);
  refresh();
}

QWidget* EditLocationView::makeBrokers() {
  brokers_->setObjectName(QStringLiteral("brokerList"));
  brokers_->setEditTriggers(QAbstractItemView::DoubleClicked | QAbstractItemView::EditKeyPressed |
                            QAbstractItemView::AnyKeyPressed);
  brokers_->setMinimumHeight(metrics::kRowHeight * kShownBrokers);
  connect(brokers_, &QListWidget::currentRowChanged, this,
          [this](int row) { controller_.selectBroker(row < 0 ? std::nullopt : std::optional<size_t>(row)); });
  connect(brokers_, &QListWidget::itemChanged, this, [this](QListWidgetItem* item) {
    controller_.onBrokerEditFinish(item->text().toStdString());
    listBrokers();  // an empty text is none that is taken over
  });
  using Controller = EditLocationWindowController;
  connect(addBroker_, &QPushButton::clicked, this, [this] {
    brokers_->finishTyping();
    controller_.onEditBrokerListClick(Controller::kAddBroker);
  });
  connect(removeBroker_, &QPushButton::clicked, this,
          [this] { controller_.onEditBrokerListClick(Controller::kRemoveBroker); });
  auto* group = new QWidget;
  auto* layout = new QVBoxLayout(group);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->setSpacing(metrics::kSpacing / 2);
  layout->addWidget(labelled(text("View.EditLocation.Brokers"), brokers_), 1);
  layout->addLayout(buttonRow({addBroker_, removeBroker_}, {}));
  return group;
}

void EditLocationView::refresh() {
  display(*name_, toQString(controller_.name()));
  display(*default_, controller_.isDefault());
  display(*port_, toQString(controller_.port()));
  display(*useSsl_, controller_.doUseSsl());
  display(*sslGateway_, toQString(controller_.sslGateway()));
  sslGateway_->setEnabled(controller_.isSslGatewayEnabled());
  {
    const QSignalBlocker blocker(protocol_);
    protocol_->setCurrentIndex(controller_.protocolItem());
  }
  listBrokers();
  removeBroker_->setEnabled(controller_.selectedBroker().has_value());
}

void EditLocationView::listBrokers() {
  const QSignalBlocker blocker(brokers_);
  const std::vector<std::string>& wanted = controller_.brokers();
  while (brokers_->count() > static_cast<int>(wanted.size())) delete brokers_->takeItem(brokers_->count() - 1);
  for (size_t row = 0; row < wanted.size(); ++row) {
    const int at = static_cast<int>(row);
    if (at == brokers_->count()) {
      auto* item = new QListWidgetItem;
      item->setFlags(item->flags() | Qt::ItemIsEditable);
      brokers_->addItem(item);
    }
    if (brokers_->item(at)->text() != toQString(wanted[row])) brokers_->item(at)->setText(toQString(wanted[row]));
  }
  const std::optional<size_t> selected = controller_.selectedBroker();
  brokers_->setCurrentRow(selected ? static_cast<int>(*selected) : -1);
}

}  // namespace orvane
