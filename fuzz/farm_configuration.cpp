// Any bytes as a server farm configuration: what is refused changes nothing, and what is read and written again in full
// reads the same.

#include <cstdint>
#include <cstdlib>
#include <pugixml.hpp>
#include <set>
#include <sstream>
#include <string>

#include "Files/FarmAttributes.h"
#include "Files/ServerFarmConfiguration.h"

namespace {

using namespace OvCommon;

void require(bool holds) {
  if (!holds) abort();
}

std::string textOf(const std::wstring& text) { return pugi::as_utf8(text); }
std::string textOf(int number) { return std::to_string(number); }
std::string textOf(bool set) { return set ? "yes" : "no"; }
std::string textOf(const std::deque<std::wstring>& items) {
  std::wstring joined;
  for (size_t i = 0; i < items.size(); ++i) joined += (i > 0 ? L"," : L"") + items[i];
  std::deque<std::wstring> split;
  SplitString(joined, L",", split);
  require(split == items);
  return textOf(joined);
}

template <typename Record>
void write(pugi::xml_node element, const Record& record) {
  orvane::forEachAttribute(record, [&element](const char* name, const auto& field) {
    element.append_attribute(name).set_value(textOf(field).c_str());
  });
}

std::string written(const std::deque<OvFarmSettings>& farms) {
  pugi::xml_document document;
  pugi::xml_node list = document.append_child("ServerFarms");
  for (const OvFarmSettings& farm : farms) {
    pugi::xml_node element = list.append_child("Farm");
    write(element, farm);
    int number = 0;
    for (const std::wstring& application : farm.AutoLaunchApps) {
      const std::string name = "AutoLaunchApp" + std::to_string(++number);
      element.append_attribute(name.c_str()).set_value(textOf(application).c_str());
    }
    for (const OvLocationSettings& location : farm.Locations) write(element.append_child("Location"), location);
  }
  std::ostringstream text;
  document.save(text);
  return text.str();
}

// Locations of the same number are in no particular order.
bool isOrdered(const OvFarmSettings& farm) {
  std::set<int> numbers;
  for (const OvLocationSettings& location : farm.Locations) {
    require(numbers.empty() || *numbers.rbegin() <= location.Number);
    numbers.insert(location.Number);
  }
  return numbers.size() == farm.Locations.size();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const std::deque<OvFarmSettings> before(1);
  std::deque<OvFarmSettings> farms = before;
  if (!ParseConfigurationFile({reinterpret_cast<const char*>(data), size}, farms)) {
    require(farms == before);
    return 0;
  }
  bool ordered = true;
  for (const OvFarmSettings& farm : farms) ordered = isOrdered(farm) && ordered;
  std::deque<OvFarmSettings> again;
  require(ParseConfigurationFile(written(farms), again));
  require(again.size() == farms.size() && (!ordered || again == farms));
  return 0;
}
