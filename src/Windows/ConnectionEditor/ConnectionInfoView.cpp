#include "Windows/ConnectionEditor/ConnectionInfoView.h"

#include <QGridLayout>
#include <QLabel>

#include "Controllers/ManagedConnectionInfoViewController.h"
#include "Controllers/ManualConnectionInfoViewController.h"
#include "Windows/Style/Controls.h"
#include "Windows/Style/Metrics.h"
#include "Windows/Style/Text.h"

namespace orvane {

ConnectionInfoView::ConnectionInfoView(ManagedConnectionInfoViewController& managed,
                                       ManualConnectionInfoViewController& manual)
    : managed_(managed), manual_(manual), lines_(new QGridLayout(this)) {
  lines_->setContentsMargins(0, 0, 0, 0);
  lines_->setHorizontalSpacing(metrics::kMargin);
  lines_->setVerticalSpacing(metrics::kSpacing / 2);
  lines_->setColumnStretch(0, 2);
  lines_->setColumnStretch(1, 3);
  managed_.setOnChange([this] {
    if (isVisible() && isManaged_) refresh(true);
  });
}

void ConnectionInfoView::refresh(bool isManaged) {
  isManaged_ = isManaged;
  qDeleteAll(findChildren<QLabel*>());
  int row = 0;
  for (const auto& [title, value] : isManaged ? managedLines() : manualLines()) {
    if (value.empty()) continue;
    lines_->addWidget(makeLabel("infoTitle", "secondary", title), row, 0, Qt::AlignTop);
    lines_->addWidget(makeLabel("infoText", nullptr, toQString(value)), row++, 1, Qt::AlignTop);
  }
}

std::vector<ConnectionInfoView::Line> ConnectionInfoView::managedLines() const {
  return {{text("View.Editor.Name"), managed_.connectionName()},
          {text("View.Info.Type"), managed_.connectionType()},
          {text("View.Info.Configuration"), managed_.configName()},
          {text("View.Info.Timestamp"), managed_.configTimestamp()},
          {text("View.Info.Policies"), managed_.policyNames()}};
}

std::vector<ConnectionInfoView::Line> ConnectionInfoView::manualLines() const {
  using Item = ManualConnectionInfoLine;
  std::vector<Line> lines{{text("View.Editor.Name"), manual_.text(Item::kName)},
                          {text("View.Info.Type"), manual_.text(Item::kType)},
                          {text("View.Credentials.Title"), manual_.text(Item::kCredentials)}};
  for (const auto& location : manual_.locations()) {
    lines.insert(lines.end(), {{text("View.Info.Location"), location.title()},
                               {text("View.EditLocation.Protocol"), location.protocol()},
                               {text("View.EditLocation.Port"), location.port()},
                               {text("View.EditLocation.Brokers"), location.servers()},
                               {text("View.Info.NatSupport"), location.natSupport()},
                               {text("View.EditLocation.UseSsl"), location.rdpOverSsl()},
                               {text("View.Info.Proxy"), location.proxy()}});
  }
  lines.insert(lines.end(), {{text("View.Info.DisallowSave"), manual_.text(Item::kDisallowSaveCredentials)},
                             {text("View.Editor.Resolution"), manual_.text(Item::kResolution)},
                             {text("View.Editor.Colors"), manual_.text(Item::kColors)},
                             {text("View.Editor.Seamless"), manual_.text(Item::kSeamless)},
                             {text("View.Editor.PlayAudio"), manual_.text(Item::kSound)},
                             {text("View.Editor.Devices"), manual_.text(Item::kRedirections)},
                             {text("View.Editor.Speed"), manual_.text(Item::kSpeed)},
                             {text("View.Editor.Performance"), manual_.text(Item::kExperience)},
                             {text("View.ConnectOnStart.Box"), manual_.text(Item::kAutoLaunch)}});
  return lines;
}

}  // namespace orvane
