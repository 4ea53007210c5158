#pragma once

#include <memory>
#include <string>

#include "Broker/OvBrokerClient.h"
#include "Model/OvFarmConfiguration.h"
#include "OrvaneCommon/OvError.h"
#include "Platform/ThreadQueues.h"

/// One connection of the user: how to reach a farm, as whom, with which choices, together with the farm's protocol
/// client and the queue on which that works. Shared by identity; outlives its connections.
///
/// No lock: the configuration belongs to the main thread, the client to the farm's queue while a flow runs.
class OvFarm : public OvFarmConfiguration {
 public:
  static constexpr const char* kArchiveClass = "OvFarm";

  /// A new farm, with a client that is not configured yet.
  /// @param makeQueue where the farm's queue and those of its copies come from.
  explicit OvFarm(orvane::SerialQueueFactory makeQueue = orvane::makeSerialQueue);
  /// Decodes: a record that the archive lacks is a new one, all else as with the records.
  explicit OvFarm(const orvane::KeyedObject& object);
  /// A farm of the same configuration, with a client and a queue of its own.
  OvFarm(const OvFarm& other);
  OvFarm& operator=(const OvFarm&) = delete;

  /// Whether the configurations agree, the password and the preferred location as its getter has it included.
  bool isEqualToFarm(const OvFarm& other) const;
  bool operator==(const OvFarm& other) const { return this == &other || isEqualToFarm(other); }

  /// Takes a deep copy of the configuration of `other`, and leaves client and queue: a flow that runs on them goes on.
  /// Does nothing if it is null.
  void setConfigurationEqualToFarm(const OvFarm* other);

  void addLocation(std::shared_ptr<OvLocation> location);
  /// Removes every location equal to `location`; null removes none. If the first is the default one, there is no
  /// default any more; otherwise the default's number stays.
  void removeLocation(const OvLocation* location);
  /// Puts `replacement` in the place of the first location equal to `location`, if there is one; a preferred location
  /// stays preferred.
  void replaceLocation(const OvLocation& location, std::shared_ptr<OvLocation> replacement);

  /// Makes a location of the list the default one; null makes none the default, any other changes nothing.
  void setDefaultLocation(const OvLocation* location);
  /// The location to use without asking: that of a farm with just one, else null.
  std::shared_ptr<OvLocation> defaultLocation() const;
  std::shared_ptr<OvLocation> findLocationWithName(const std::string& name) const;

  /// The name of the location to use, after updatePrefferedLocationName: never that of one that is gone.
  const std::string& prefferedLocationName();
  /// The preferred name becomes that of the only location, or empty if no location bears it.
  void updatePrefferedLocationName();

  const std::shared_ptr<OvBrokerClient>& brokerClient() const { return ovBrokerClient_; }
  /// `client` mustn't be null.
  void setBrokerClient(std::shared_ptr<OvBrokerClient> client);
  /// A new client, and the queue that there is.
  void resetBrokerClient();
  /// A new client and a new queue.
  void createBrokerClient();
  const std::shared_ptr<orvane::SerialQueue>& brokerClientDispatchQueue() const {
    return ovBrokerClientDispatchSerialQueue_;
  }

  /// Tells the client how `location` is reached. False, with error 8, if it is null.
  bool configureProxySettingsForLocation(const OvLocation* location, OvError* error);

  /// Tells the client what this farm wants for its sessions, except for what the broker has fixed. To be called before
  /// a launch, where the client may be used, and with nobody changing the configuration meanwhile: a flow calls it on a
  /// copy of the farm that was made on the main thread and given the client.
  void setCurrentApplicationSettings();

  /// Fetches a server farm configuration and makes a farm of it; null if that fails. Only http and https are fetched.
  /// Blocks on the network.
  static std::shared_ptr<OvFarm> farmFromUrl(const std::string& url);

  /// The first farm of a server farm configuration (docs/farm-configuration.md), managed by its broker. Null, with a
  /// line in the log, for what has none; null data is nothing too.
  static std::shared_ptr<OvFarm> farmFromXmlConfigData(const std::string* data);

  /// Wide text as UTF-8; empty if it can't be converted.
  static std::string nsStringFromWstring(const std::wstring& text);

 private:
  std::string prefferedLocationNameAfterUpdate() const;

  orvane::SerialQueueFactory makeQueue_;
  std::shared_ptr<OvBrokerClient> ovBrokerClient_;
  std::shared_ptr<orvane::SerialQueue> ovBrokerClientDispatchSerialQueue_;
};
