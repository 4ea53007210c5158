#include "Files/ServerFarmConfiguration.h"

#include <algorithm>
#include <exception>
#include <map>
#include <pugixml.hpp>
#include <stdexcept>
#include <string_view>
#include <utility>

#include "Files/FarmAttributes.h"

namespace OvCommon {

namespace {

// A record of more than a kilobyte may come of an element of four bytes: without a limit a document that is quickly
// downloaded would take all memory.
constexpr size_t kMaximumRecords = 100000;

void read(const pugi::xml_attribute& attribute, int& field) { field = attribute.as_int(); }
void read(const pugi::xml_attribute& attribute, bool& field) { field = attribute.as_bool(); }
void read(const pugi::xml_attribute& attribute, std::wstring& field) { field = pugi::as_wide(attribute.value()); }
void read(const pugi::xml_attribute& attribute, std::deque<std::wstring>& field) {
  SplitString(pugi::as_wide(attribute.value()), L",", field);
}

std::deque<std::wstring> autoLaunchApps(const pugi::xml_node& farm) {
  // Collected in one walk: a search for each number would take a time quadratic in the size of a hostile document.
  std::map<std::string_view, const char*> values;
  for (const pugi::xml_attribute& attribute : farm.attributes())
    values.try_emplace(attribute.name(), attribute.value());

  std::deque<std::wstring> applications;
  for (int number = 1;; ++number) {
    const auto found = values.find("AutoLaunchApp" + std::to_string(number));
    if (found == values.end()) return applications;
    std::wstring name = pugi::as_wide(found->second);
    if (name.empty()) return applications;  // bytes that are no text make none either
    applications.push_back(std::move(name));
  }
}

class ConfigurationReader {
 public:
  std::deque<OvFarmSettings> farmsOf(const pugi::xml_document& document) {
    std::deque<OvFarmSettings> farms;
    for (const pugi::xml_node& list : document.children("ServerFarms")) {
      for (const pugi::xml_node& farm : list.children("Farm")) farms.push_back(farmOf(farm));
    }
    return farms;
  }

 private:
  OvFarmSettings farmOf(const pugi::xml_node& node) {
    auto farm = recordOf<OvFarmSettings>(node);
    for (const pugi::xml_node& child : node) farm.Locations.push_back(recordOf<OvLocationSettings>(child));
    std::sort(farm.Locations.begin(), farm.Locations.end(), CompareLocations);
    farm.AutoLaunchApps = autoLaunchApps(node);
    return farm;
  }

  template <typename Record>
  Record recordOf(const pugi::xml_node& node) {
    if (++records_ > kMaximumRecords) throw std::length_error("too many farms and locations");
    Record record;
    orvane::forEachAttribute(record, [&node](const char* name, auto& field) { read(node.attribute(name), field); });
    return record;
  }

  size_t records_ = 0;
};

}  // namespace

bool ParseConfigurationFile(const std::string& xmlText, std::deque<OvFarmSettings>& farms) {
  try {
    pugi::xml_document document;
    if (!document.load_buffer(xmlText.data(), xmlText.size())) return false;
    farms = ConfigurationReader().farmsOf(document);
    return true;
  } catch (const std::exception&) {
    return false;  // the caller has words of its own for a configuration that can't be used
  }
}

void SplitString(const std::wstring& text, const std::wstring& separator, std::deque<std::wstring>& out) {
  std::deque<std::wstring> items;  // apart from `out`, which may hold the text
  if (!text.empty()) {
    size_t start = 0;
    size_t end = separator.empty() ? std::wstring::npos : text.find(separator);
    for (; end != std::wstring::npos; end = text.find(separator, start)) {
      items.push_back(text.substr(start, end - start));
      start = end + separator.size();
    }
    items.push_back(text.substr(start));
  }
  out = std::move(items);
}

bool CompareLocations(const OvLocationSettings& left, const OvLocationSettings& right) {
  return left.Number < right.Number;
}

}  // namespace OvCommon
