#pragma once

#include "Model/OvCredentials.h"
#include "Model/OvDisplay.h"
#include "Model/OvLocationList.h"
#include "Model/OvPerformance.h"
#include "Model/OvResources.h"
#include "Model/RecordFields.h"

#define ORVANE_FARM_FIELDS(ROW)                                                                                     \
  ROW(std::string, name, Name, defaultName(), "farmName", archived())                                               \
  ROW(std::string, farmDBGUID, FarmDBGUID, {}, "farmDBGUID", archived()) /* the broker's identity of the farm */    \
  ROW(std::string, configName, ConfigName, {}, "configName", archived())                                            \
  ROW(std::string, configDBGUID, ConfigDBGUID, {}, "configDBGUID", archived())                                      \
  ROW(std::string, configTimestamp, ConfigTimestamp, {}, "configTimestamp", archived())                             \
  ROW(std::string, userDescription, UserDescription, {}, "userDescription", archived())                             \
  ROW(bool, doAutoLaunch, DoAutoLaunch, false, "doAutoLaunch", archived()) /* connected when the program starts */  \
  ROW(bool, doReconnect, DoReconnect, true, "doReconnect", archived())                                              \
  ROW(bool, serverCreated, ServerCreated, false, "serverCreated", archived()) /* managed: made by a broker */       \
  ROW(bool, disallowSaveCredentials, DisallowSaveCredentials, false, "disallowSaveCredentials", archived())         \
  ROW(bool, anonymousLogin, AnonymousLogin, false, "anonymousLogin", archived())                                    \
  ROW(OvCredentials, credentials, Credentials, {}, "credentials", archived())                                       \
  ROW(OvDisplay, display, Display, {}, "displaySettings", archived())                                               \
  ROW(OvResources, resourses, Resourses, {}, "resources", archived())                                               \
  ROW(OvPerformance, performance, Performance, {}, "performance", archived())                                       \
  ROW(OvLocationList, locations, Locations, {}, "locations", archived())                                            \
  ROW(int32_t, defaultLocationIndex, DefaultLocationIndex, 0, "defaultLocationIndex", archived()) /* -1 for none */ \
  ROW(std::string, prefferedLocationName, PrefferedLocationName, {}, "prefferedLocationName", archived())           \
  ROW(std::vector<std::string>, autoLaunchApps, AutoLaunchApps, {}, "apps", archived()) /* started after a connect */

/// All that the user, a broker or an administrator chose for a connection, and that the farm store keeps. A value: a
/// copy shares nothing. No lock.
class OvFarmConfiguration {
  ORVANE_RECORD(FarmConfiguration, ORVANE_FARM_FIELDS)

 public:
  OvFarmConfiguration() = default;

  // For changes in place.
  OvCredentials& credentials() { return credentials_; }
  OvDisplay& display() { return display_; }
  OvResources& resourses() { return resourses_; }
  OvPerformance& performance() { return performance_; }
  OvLocationList& locations() { return locations_; }
  std::vector<std::string>& autoLaunchApps() { return autoLaunchApps_; }

 private:
  static std::string defaultName();
};

#undef ORVANE_FARM_FIELDS
