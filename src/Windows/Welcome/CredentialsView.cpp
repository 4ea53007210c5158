#include "Windows/Welcome/CredentialsView.h"

#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalBlocker>
#include <QVBoxLayout>

#include "Controllers/InputCredentialsViewController.h"
#include "Windows/Style/Controls.h"
#include "Windows/Style/Metrics.h"
#include "Windows/Style/Text.h"

namespace orvane {

CredentialsView::CredentialsView(InputCredentialsViewController& controller)
    : controller_(controller),
      userName_(makeField("userNameField", text("View.Credentials.UserName"))),
      password_(makeSecretField("passwordField", text("View.Credentials.Password"))),
      domainLabel_(makeLabel("domainLabel", "heading", text("View.Credentials.Domain"))),
      domain_(makeField("domainField", text("View.Credentials.Domain"))),
      save_(makeCheckBox("saveBox", text("View.Credentials.Save"))),
      error_(makeLabel("credentialsError", "error")),
      cancel_(makeButton("backButton", nullptr)),
      next_(makeButton("connectButton", "primary")) {
  setWindowTitle(text("View.Credentials.Title"));
  next_->setDefault(true);

  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->setSpacing(metrics::kSpacing);
  layout->addWidget(makeLabel("credentialsTitle", "title", text("View.Credentials.Title")));
  layout->addWidget(makeLabel("credentialsExplanation", "secondary", text("View.Credentials.Explanation")));
  layout->addWidget(error_);
  layout->addSpacing(metrics::kSpacing);
  QLabel* userLabel = makeLabel("userNameLabel", "heading", text("View.Credentials.UserName"));
  QLabel* passwordLabel = makeLabel("passwordLabel", "heading", text("View.Credentials.Password"));
  for (const auto& [label, field] :
       {std::pair{userLabel, userName_}, std::pair{passwordLabel, password_}, std::pair{domainLabel_, domain_}}) {
    label->setBuddy(field);
    layout->addWidget(label);
    layout->addWidget(field);
  }
  layout->addWidget(save_);
  layout->addSpacing(metrics::kMargin);
  layout->addLayout(buttonRow({}, {cancel_, next_}));
  layout->addStretch();
  clickOnEscape(*this, *cancel_);

  connect(userName_, &QLineEdit::textEdited, this,
          [this](const QString& typed) { controller_.setUserName(typed.toStdString()); });
  connect(password_, &QLineEdit::textEdited, this,
          [this](const QString& typed) { controller_.setPassword(SecretText(typed.toStdString())); });
  connect(domain_, &QLineEdit::textEdited, this,
          [this](const QString& typed) { controller_.setDomain(typed.toStdString()); });
  connect(save_, &QCheckBox::toggled, this, [this](bool isChecked) { controller_.setNeedToSave(isChecked); });
  connect(next_, &QPushButton::clicked, this, [this] { controller_.onConnectClick(); });
  connect(cancel_, &QPushButton::clicked, this, [this] { controller_.onCancelClick(); });
  controller_.setOnChange([this] { refresh(); });
  controller_.setOnFocus([this](InputCredentialsFocus) { userName_->setFocus(Qt::OtherFocusReason); });
  setFocusProxy(userName_);
  refresh();
}

void CredentialsView::refresh() {
  display(*userName_, toQString(controller_.userName()));
  showSecret(*password_, controller_.hasPassword());
  display(*domain_, toQString(controller_.domain()));
  domainLabel_->setVisible(!controller_.isDomainHidden());
  domain_->setVisible(!controller_.isDomainHidden());
  display(*save_, controller_.needToSave());
  save_->setVisible(!controller_.isSaveBoxHidden());
  showError(*error_, controller_.errorText());
  next_->setEnabled(controller_.isNextEnabled());
  next_->setText(toQString(controller_.nextTitle()));
  cancel_->setText(toQString(controller_.backTitle()));
}

}  // namespace orvane
