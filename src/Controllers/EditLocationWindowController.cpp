#include "Controllers/EditLocationWindowController.h"

#include <algorithm>
#include <cstdlib>
#include <limits>
#include <utility>

#include "OrvaneCommon/PresentationTexts.h"

namespace {

constexpr int kHttp = 0;
constexpr int kHttps = 1;
constexpr const char* kNewBroker = "0.0.0.0";

// The number that a text begins with; 0 if it begins with none, and the nearest if it is too great.
int32_t integerValue(const std::string& text) {
  using Limits = std::numeric_limits<int32_t>;
  return static_cast<int32_t>(
      std::clamp<long long>(std::strtoll(text.c_str(), nullptr, 10), Limits::min(), Limits::max()));
}

}  // namespace

void EditLocationWindowController::setupWithLocation(std::shared_ptr<OvLocation> location, bool isDefaultLocation,
                                                     EditLocationMode mode) {
  _location = std::move(location);
  _mode = mode;
  printLocation(*_location, isDefaultLocation);
  changed();
}

void EditLocationWindowController::printLocation(const OvLocation& location, bool isDefaultLocation) {
  _name = location.name();
  _isDefault = isDefaultLocation;
  _protocolItem = location.protocol() == kHttp ? kHttp : kHttps;
  _port = std::to_string(location.port());
  _doUseSsl = location.doUseSsl();
  _sslGateway = location.doUseSsl() ? location.sslGateway() : "";
  _brokers = location.brokers();
  _selectedBroker.reset();
}

void EditLocationWindowController::scanLocation(OvLocation& location) const {
  location.setName(_name);
  location.setProtocol(_protocolItem == kHttp ? kHttp : kHttps);
  location.setPort(integerValue(_port));
  location.setDoUseSsl(_doUseSsl);
  location.setSslGateway(_doUseSsl ? _sslGateway : "");
  location.setBrokers(_brokers);
}

std::vector<std::string> EditLocationWindowController::protocolItems() {
  return {orvane::protocolName(kHttp), orvane::protocolName(kHttps)};
}

void EditLocationWindowController::setName(const std::string& text) {
  _name = text;
  changed();
}

void EditLocationWindowController::setDefault(bool isDefault) {
  _isDefault = isDefault;
  changed();
}

void EditLocationWindowController::setProtocolItem(int item) {
  _protocolItem = item;
  changed();
}

void EditLocationWindowController::setPort(const std::string& text) {
  _port = text;
  changed();
}

void EditLocationWindowController::onUseSSLClick(bool doUseSsl) {
  _doUseSsl = doUseSsl;
  changed();
}

void EditLocationWindowController::setSslGateway(const std::string& text) {
  _sslGateway = text;
  changed();
}

void EditLocationWindowController::selectBroker(std::optional<size_t> row) {
  _selectedBroker = row && *row < _brokers.size() ? row : std::nullopt;
  changed();
}

void EditLocationWindowController::onEditBrokerListClick(int segment) {
  if (segment == kAddBroker) {
    _brokers.emplace_back(kNewBroker);
    _selectedBroker = _brokers.size() - 1;
    changed();
    focus(EditLocationFocus::kBrokerAddress);
  } else if (segment == kRemoveBroker && _selectedBroker) {
    _brokers.erase(_brokers.begin() + static_cast<std::ptrdiff_t>(*_selectedBroker));
    _selectedBroker.reset();
    changed();
  }
}

void EditLocationWindowController::onBrokerEditFinish(const std::string& text) {
  if (text.empty()) return;
  if (_brokers.empty()) {
    _brokers.push_back(text);
  } else if (_selectedBroker) {
    _brokers[*_selectedBroker] = text;
  }
  changed();
}

void EditLocationWindowController::onDoneButtonClick() {
  if (!_location) return;
  focus(EditLocationFocus::kNone);
  scanLocation(*_location);
  finish(true);
}

void EditLocationWindowController::onCancelButtonClick() { finish(false); }

void EditLocationWindowController::finish(bool isDone) {
  const std::shared_ptr<OvLocation> location = std::exchange(_location, nullptr);
  if (location) _delegate.editLocationDidFinishEditingLocation(isDone ? location : nullptr, _isDefault, _mode);
}
