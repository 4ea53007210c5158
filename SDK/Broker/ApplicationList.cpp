// The applications published to the user, and their icons.

#include "Broker/Protocol.h"
#include "Broker/SessionExchange.h"
#include "Support/ico2png.h"

namespace protocol = orvane::protocol;

namespace {

constexpr orvane::TextRow<OvApplication> kTexts[] = {
    {"name", &OvApplication::setName},
    {"shortcut", &OvApplication::setShortcut},
    {"path", &OvApplication::setPath},
    {"arguments", &OvApplication::setArguments},
    {"workingdir", &OvApplication::setWorkingDir},
    {"foldername", &OvApplication::setFolderName},
};

constexpr orvane::NumberRow<OvApplication> kNumbers[] = {
    {"showcmd", &OvApplication::setShowCmd},
    {"apptype", &OvApplication::setAppType},
    {"desktopshortcutlocation", &OvApplication::setDesktopShortcutLocation},
};

void readApplication(const orvane::ResponseFields& item, OvApplication& application) {
  item.readTexts<OvApplication>(kTexts, application);
  if (auto icon = item.content("largeicon")) application.setLargeIcon(IconText(std::move(*icon)));
  if (auto icon = item.content("smallicon")) application.setSmallIcon(IconText(std::move(*icon)));
  item.readNumbers<OvApplication>(kNumbers, application);
}

}  // namespace

std::list<std::shared_ptr<OvApplication>> OvBrokerClient::getApplicationList() {
  std::list<std::shared_ptr<OvApplication>> applications;
  run({.message = "getapplicationlist",
       .operation = "getApplicationList",
       .deliver = [&](const orvane::ResponseFields& response) {
         applications = response.list<OvApplication>("application", readApplication);
       }});
  return applications;
}

void OvBrokerClient::saveIconToICOBuffer(const std::string& icon, unsigned char** buffer, unsigned int* size) {
  if (!ico2png_convert_icon_string_to_ico_buffer(icon.c_str(), buffer, size))
    throw OvException(protocol::kErrorCannotMake, "The buffer cannot be created.");
}

void OvBrokerClient::saveIconToPNGBuffer(const std::string& icon, unsigned char** buffer, unsigned int* size) {
  if (!ico2png_convert_icon_string_to_png_buffer(icon.c_str(), buffer, size))
    throw OvException(protocol::kErrorCannotMake, "The buffer cannot be created.");
}

void OvBrokerClient::saveIconToICOFile(const std::string& icon, const std::string& path) {
  saveIconToPNGFile(icon, path);
}

void OvBrokerClient::saveIconToPNGFile(const std::string& icon, const std::string& path) {
  if (!ico2png_save_icon_string_to_png_file(icon.c_str(), path.c_str()))
    throw OvException(protocol::kErrorCannotMake, "The directory or file cannot be created.");
}
