// store-connections FILE COUNT ADDRESS PORT: puts connections into a store, whose file it makes.

#include <cstdlib>
#include <iostream>
#include <string>

#include "Model/OvFarmManager.h"
#include "Model/OvLocation.h"

namespace {

// There are no passwords to keep.
class NoSecrets : public orvane::SecretStore {
 public:
  Item load(const std::string&, const std::string&) override { return {.reading = Reading::kAbsent}; }
  bool save(const std::string&, const std::string&, std::span<const uint8_t>) override { return false; }
};

// All runs at once, on this thread.
class AtOnce : public orvane::SerialQueue, public orvane::MainQueue {
 public:
  void post(orvane::Work work) override { work(); }
  bool isCurrentThread() const override { return true; }
};

}  // namespace

int main(int count, char** values) {
  if (count != 5) {
    std::cerr << "Usage: store-connections FILE COUNT ADDRESS PORT\n";
    return 2;
  }
  const auto queue = std::make_shared<AtOnce>();
  OvFarmManager manager(values[1], std::make_shared<MCCachedKeychain>(std::make_shared<NoSecrets>()), queue, queue);
  for (int number = 1; number <= atoi(values[2]); ++number) {
    const auto farm = std::make_shared<OvFarm>();
    farm->setName("Connection " + std::to_string(number));
    const auto location = std::make_shared<OvLocation>();
    location->setName("Office");
    location->setBrokers({values[3]});
    location->setProtocol(0);  // HTTP
    location->setPort(atoi(values[4]));
    OvLocationList locations;
    locations.push_back(location);
    farm->setLocations(locations);
    manager.addFarm(farm);
  }
  manager.save();
  return EXIT_SUCCESS;
}
