#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "Controllers/EditLocationDelegate.h"
#include "Controllers/Surface.h"

/// kNone: no control keeps the focus, so that what is being typed is handed over.
enum class EditLocationFocus { kNone, kBrokerAddress };

/// The sheet that edits one location. The location keeps its values until Done. Nothing that is entered is checked: a
/// wrong value shows at the next connect.
class EditLocationWindowController : public orvane::FocusableSurface<EditLocationFocus> {
 public:
  /// The segments of the control below the list of brokers.
  enum BrokerListSegment { kAddBroker = 0, kRemoveBroker = 1 };

  /// @param delegate outlives this.
  explicit EditLocationWindowController(EditLocationDelegate& delegate) : _delegate(delegate) {}

  /// Shows the location, which is not null, in place of any shown before.
  void setupWithLocation(std::shared_ptr<OvLocation> location, bool isDefaultLocation, EditLocationMode mode);

  void setName(const std::string& text);
  void setDefault(bool isDefault);
  void setProtocolItem(int item);
  void setPort(const std::string& text);
  void onUseSSLClick(bool doUseSsl);
  void setSslGateway(const std::string& text);
  void selectBroker(std::optional<size_t> row);
  void onEditBrokerListClick(int segment);
  /// The user has typed a broker's address: in place of the selected one, or into the empty list.
  void onBrokerEditFinish(const std::string& text);
  void onDoneButtonClick();
  void onCancelButtonClick();

  const std::string& name() const { return _name; }
  bool isDefault() const { return _isDefault; }
  /// The titles of the protocol's items.
  static std::vector<std::string> protocolItems();
  int protocolItem() const { return _protocolItem; }
  const std::string& port() const { return _port; }
  bool doUseSsl() const { return _doUseSsl; }
  bool isSslGatewayEnabled() const { return _doUseSsl; }
  const std::string& sslGateway() const { return _sslGateway; }
  const std::vector<std::string>& brokers() const { return _brokers; }
  std::optional<size_t> selectedBroker() const { return _selectedBroker; }

 private:
  void printLocation(const OvLocation& location, bool isDefaultLocation);
  void scanLocation(OvLocation& location) const;
  void finish(bool isDone);

  EditLocationDelegate& _delegate;
  std::shared_ptr<OvLocation> _location{};  // null: nothing is being edited
  EditLocationMode _mode = EditLocationMode::kNew;

  std::string _name{};
  bool _isDefault = false;
  int _protocolItem = 0;
  std::string _port{};
  bool _doUseSsl = false;
  std::string _sslGateway{};
  std::vector<std::string> _brokers{};
  std::optional<size_t> _selectedBroker{};
};
