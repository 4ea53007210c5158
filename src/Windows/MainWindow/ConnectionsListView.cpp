#include "Windows/MainWindow/ConnectionsListView.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QScrollArea>
#include <QTimer>
#include <QVBoxLayout>

#include "Controllers/ConnectionsListViewController.h"
#include "OrvaneCommon/TextFormat.h"
#include "Windows/Style/Controls.h"
#include "Windows/Style/Metrics.h"
#include "Windows/Style/Symbols.h"
#include "Windows/Style/Text.h"

namespace orvane {

namespace {

constexpr int kRowsAtOnce = 20;

}  // namespace

struct ConnectionsListView::Row {
  QWidget* row;
  QPushButton* connection;
  QPushButton* edit;
};

ConnectionsListView::ConnectionsListView(ConnectionsListViewController& controller)
    : controller_(controller),
      list_(new QWidget),
      rows_(new QVBoxLayout(list_)),
      add_(makeButton("addConnectionButton", "row", text("View.Connections.Add"))) {
  rows_->setContentsMargins(0, 0, 0, 0);
  rows_->setSpacing(2);
  rows_->setAlignment(Qt::AlignTop);

  QPushButton* settings = makeButton("settingsButton", "row", text("View.Menu.Settings"));
  QPushButton* about = makeButton("aboutButton", "row", text("DiMode.Menu.About"));
  const std::tuple<QPushButton*, const char*, void (ConnectionsListViewController::*)()> kButtons[] = {
      {add_, "add", &ConnectionsListViewController::onAddConnectionClick},
      {settings, "settings", &ConnectionsListViewController::onSettingsClick},
      {about, "info", &ConnectionsListViewController::onAboutClick}};

  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(metrics::kMargin, metrics::kMargin, metrics::kMargin, metrics::kMargin);
  layout->setSpacing(metrics::kSpacing);
  layout->addWidget(makeLabel("connectionsTitle", "title", text("DiMode.Menu.Connections")));
  layout->addWidget(scrolling("connectionsScroll", list_), 1);
  for (const auto& [button, symbol, click] : kButtons) {
    button->setIcon(symbolIcon(QLatin1String(symbol)));
    button->setIconSize(QSize(metrics::kIcon, metrics::kIcon));
    layout->addWidget(button);
    connect(button, &QPushButton::clicked, this, [this, click = click] { (controller_.*click)(); });
  }
  controller_.setOnChange([this] {
    if (isVisible()) refresh();
  });
}

// A list that nobody sees is not drawn: hundreds of connections cost nothing at the start.
void ConnectionsListView::showEvent(QShowEvent* event) {
  refresh();
  QWidget::showEvent(event);
}

void ConnectionsListView::refresh() {
  const ConnectionsListViewController::Rows& rows = controller_.rows();
  while (shown_.size() > rows.size()) {
    shown_.back().row->hide();
    shown_.back().row->deleteLater();
    shown_.pop_back();
  }
  // Hundreds at once would hold up the sliding of the panel.
  for (int made = 0; shown_.size() < rows.size() && made < kRowsAtOnce; ++made) makeRow();
  if (shown_.size() < rows.size()) QTimer::singleShot(0, this, [this] { refresh(); });
  for (size_t index = 0; index < shown_.size(); ++index) {
    const Row& row = shown_[index];
    const QString title = toQString(rows[index].title());
    const bool isConnected = rows[index].isConnected();
    row.connection->setText(QString(title).replace(QLatin1Char('&'), QLatin1String("&&")));
    row.connection->setIcon(symbolIcon(isConnected ? QStringLiteral("connected") : QStringLiteral("disconnected")));
    row.connection->setAccessibleName(title);
    row.connection->setAccessibleDescription(isConnected ? text("View.Connections.Connected")
                                                         : text("View.Connections.NotConnected"));
    setRole(*row.connection, isConnected ? "row current" : "row");
    const QString edit = toQString(formatText(localizedText("View.Connections.Edit"), {rows[index].title()}));
    row.edit->setAccessibleName(edit);
    row.edit->setToolTip(edit);
  }
  setFocusProxy(shown_.empty() ? add_ : shown_.front().connection);
}

void ConnectionsListView::makeRow() {
  const size_t index = shown_.size();
  Row row{new QWidget, makeButton("connection", "row"), makeIconButton("editConnection", QStringLiteral("edit"), {})};
  row.connection->setObjectName(QStringLiteral("connection%1").arg(index));
  row.edit->setObjectName(QStringLiteral("editConnection%1").arg(index));
  row.connection->setIconSize(QSize(metrics::kIcon, metrics::kIcon));
  // A long name must not push the pencil out of sight.
  row.connection->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
  auto* layout = new QHBoxLayout(row.row);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->setSpacing(2);
  layout->addWidget(row.connection, 1);
  layout->addWidget(row.edit);
  connect(row.connection, &QPushButton::clicked, this, [this, index] { controller_.onConnectionClick(index); });
  connect(row.edit, &QPushButton::clicked, this, [this, index] { controller_.onEditConnectionClick(index); });
  rows_->addWidget(row.row);
  shown_.push_back(row);
}

}  // namespace orvane
