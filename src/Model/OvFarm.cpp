#include "Model/OvFarm.h"

#include <algorithm>
#include <string_view>
#include <tuple>

#include "OrvaneCommon/LocalizedText.h"

namespace {

constexpr int kErrorLocationNotSelected = 8;
constexpr std::string_view kPrefferedLocationKey = "prefferedLocationName";

}  // namespace

OvFarm::OvFarm(orvane::SerialQueueFactory makeQueue) : makeQueue_(std::move(makeQueue)) { createBrokerClient(); }

OvFarm::OvFarm(const orvane::KeyedObject& object) : OvFarmConfiguration(object), makeQueue_(orvane::makeSerialQueue) {
  createBrokerClient();
}

OvFarm::OvFarm(const OvFarm& other) : OvFarmConfiguration(other), makeQueue_(other.makeQueue_) { createBrokerClient(); }

bool OvFarm::isEqualToFarm(const OvFarm& other) const {
  const auto agrees = [&](const auto& row) {
    if (row.key == kPrefferedLocationKey) return true;  // compared as the getter has it
    return this->*row.member == other.*row.member;
  };
  return std::apply([&](const auto&... row) { return (agrees(row) && ...); }, fields()) &&
         prefferedLocationNameAfterUpdate() == other.prefferedLocationNameAfterUpdate();
}

void OvFarm::setConfigurationEqualToFarm(const OvFarm* other) {
  if (other != nullptr) OvFarmConfiguration::operator=(*other);
}

void OvFarm::addLocation(std::shared_ptr<OvLocation> location) { locations().push_back(std::move(location)); }

void OvFarm::removeLocation(const OvLocation* location) {
  if (location == nullptr) return;
  const OvLocation removed = *location;  // which may be one of the list
  const auto isRemoved = [&](const auto& candidate) { return *candidate == removed; };
  const auto first = std::ranges::find_if(locations(), isRemoved);
  if (first == locations().end()) return;
  if (first - locations().begin() == defaultLocationIndex()) setDefaultLocationIndex(-1);
  std::erase_if(locations(), isRemoved);
}

void OvFarm::replaceLocation(const OvLocation& location, std::shared_ptr<OvLocation> replacement) {
  const auto place = std::ranges::find_if(locations(), [&](const auto& candidate) { return *candidate == location; });
  if (place == locations().end()) return;
  if (OvFarmConfiguration::prefferedLocationName() == location.name()) setPrefferedLocationName(replacement->name());
  *place = std::move(replacement);
}

void OvFarm::setDefaultLocation(const OvLocation* location) {
  if (location == nullptr) return setDefaultLocationIndex(-1);
  const auto place = std::ranges::find_if(locations(), [&](const auto& candidate) { return *candidate == *location; });
  if (place != locations().end()) setDefaultLocationIndex(static_cast<int32_t>(place - locations().begin()));
}

std::shared_ptr<OvLocation> OvFarm::defaultLocation() const {
  return locations().size() == 1 ? locations().front() : nullptr;
}

std::shared_ptr<OvLocation> OvFarm::findLocationWithName(const std::string& name) const {
  const auto place = std::ranges::find_if(locations(), [&](const auto& location) { return location->name() == name; });
  return place == locations().end() ? nullptr : *place;
}

std::string OvFarm::prefferedLocationNameAfterUpdate() const {
  if (const auto only = defaultLocation()) return only->name();
  const std::string& name = OvFarmConfiguration::prefferedLocationName();
  return findLocationWithName(name) ? name : "";
}

void OvFarm::updatePrefferedLocationName() { setPrefferedLocationName(prefferedLocationNameAfterUpdate()); }

const std::string& OvFarm::prefferedLocationName() {
  updatePrefferedLocationName();
  return OvFarmConfiguration::prefferedLocationName();
}

void OvFarm::setBrokerClient(std::shared_ptr<OvBrokerClient> client) { ovBrokerClient_ = std::move(client); }

void OvFarm::resetBrokerClient() { setBrokerClient(std::make_shared<OvBrokerClient>()); }

void OvFarm::createBrokerClient() {
  resetBrokerClient();
  ovBrokerClientDispatchSerialQueue_ = makeQueue_();
}

bool OvFarm::configureProxySettingsForLocation(const OvLocation* location, OvError* error) {
  if (location == nullptr) {
    OvU_ConfigureError(error, kErrorLocationNotSelected,
                       orvane::localizedText("Farm.NSException.Location.MessageNotSelected"));
    return false;
  }
  brokerClient()->setUseAlternateIPAddress(location->doUseNatSupport());
  brokerClient()->setSslGateway(location->doUseSsl() ? location->sslGateway() : "");
  return true;
}
