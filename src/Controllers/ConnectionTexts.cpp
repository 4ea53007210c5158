#include "Controllers/ConnectionTexts.h"

#include "OrvaneCommon/LocalizedText.h"
#include "OrvaneCommon/TextFormat.h"

namespace orvane {

std::string connectionTypeName(const OvFarmConfiguration& farm) {
  return farm.serverCreated() ? localizedText("ConnectionInfo.Labels.ManagedConnection")
                              : localizedText("ConnectionInfo.Labels.ManualConnection");
}

std::string qualifiedUserName(const OvCredentials& credentials) {
  const bool tellsDomain = credentials.username().find('@') != std::string::npos;
  if (tellsDomain || credentials.domain().empty()) return credentials.username();
  return formatText("%@\\%@", {credentials.domain(), credentials.username()});
}

}  // namespace orvane
