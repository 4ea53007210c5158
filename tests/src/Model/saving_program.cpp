// Saves a list of farms to a file for ever, another one each time, and prints a line before each.
//   saving_program FILE

#include <cstdio>

#include "FarmStoreFixture.h"

int main(int, char** arguments) {
  const auto queue = std::make_shared<PumpedQueue>();
  OvFarmManager manager(arguments[1], std::make_shared<MCCachedKeychain>(std::make_shared<FakeSecretStore>()), queue,
                        queue);
  for (int number = 0; number < 20; ++number) manager.addFarm(farmNamed(std::to_string(number)));
  for (int round = 0;; ++round) {
    for (const auto& farm : manager.farms()) farm->setUserDescription(std::to_string(round));
    puts("saving");
    fflush(stdout);
    manager.save();
    queue->pump();
  }
}
