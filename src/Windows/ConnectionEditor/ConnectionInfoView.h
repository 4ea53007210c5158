#pragma once

#include <QWidget>
#include <string>
#include <utility>
#include <vector>

class ManagedConnectionInfoViewController;
class ManualConnectionInfoViewController;
class QGridLayout;

namespace orvane {

/// The summary of a connection, to be read only. The controllers outlive it.
class ConnectionInfoView : public QWidget {
 public:
  ConnectionInfoView(ManagedConnectionInfoViewController& managed, ManualConnectionInfoViewController& manual);

  /// Shows what the one or the other says now.
  void refresh(bool isManaged);

 private:
  using Line = std::pair<QString, std::string>;

  std::vector<Line> managedLines() const;
  std::vector<Line> manualLines() const;

  ManagedConnectionInfoViewController& managed_;
  ManualConnectionInfoViewController& manual_;
  QGridLayout* const lines_;
  bool isManaged_ = false;
};

}  // namespace orvane
