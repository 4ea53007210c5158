// Logging in, with as many questions to the user as that takes.

#include <algorithm>

#include "Orchestration/Connect.h"

namespace {

// What a user may put right by typing: wrong data, name or password; an account that may not log in now; an expired
// password or account.
constexpr int kRetryCodes[] = {13, 87, 1326, 1327, 1330, 1793};

}  // namespace

bool OvBrokerClientController::updateCredentialsForFarm(Connect& connect) const {
  struct Held {
    OvCredentials credentials;
    bool isAnonymous;
    bool disallowsSaving;
  };
  OvFarm& farm = *connect.farm;
  const Held held = onMain([&] {
    return Held{farm.credentials(), farm.anonymousLogin(), farm.disallowSaveCredentials()};
  });

  // The farm's own stay untouched until the broker has taken new ones, so that there is nothing to put back.
  OvCredentials credentials = held.credentials;
  std::optional<OvError> retryError;
  for (;;) {
    if (!connect.isRunning()) return false;
    if (held.isAnonymous || (!credentials.isEmpty() && credentials.credentialsAreValid())) {
      try {
        connect.client->authenticate();
        break;
      } catch (const OvException& exception) {
        credentials.setCredentialsAreValid(false);
        if (!connect.isRunning()) return false;
        if (held.isAnonymous || std::ranges::find(kRetryCodes, exception.getErrorCode()) == std::end(kRetryCodes)) {
          return connect.fail(exception);
        }
        retryError = OvU_MakeNSError(exception.getErrorCode(), exception.getErrorText());
      }
    }
    const auto answer = promptForCredentialsWithOldCredentials(connect, credentials, held.disallowsSaving, retryError);
    if (!answer) {
      connect.task->cancel();
      return false;
    }
    credentials = *answer;
    configureBrokerClient(*connect.client, &credentials, false, nullptr);
    credentials.setCredentialsAreValid(true);
  }

  if (credentials == held.credentials) return true;
  return onMain([&] {
    if (!connect.isRunning()) return false;  // whoever cancelled may have put the farm back as it was
    farm.setCredentials(credentials);
    return true;
  });
}

std::optional<OvCredentials> OvBrokerClientController::promptForCredentialsWithOldCredentials(
    const Connect& connect, const OvCredentials& oldCredentials, bool shouldDisallowSave,
    const std::optional<OvError>& retryError) {
  using Receiver = Connect::Receiver;
  return connect.ask(std::optional<OvCredentials>(), [&](Receiver& receiver, Receiver::CredentialsBlock block) {
    receiver.brokerClientControllerPromptCredentialsWithOldCredentials(
        oldCredentials, std::move(block), shouldDisallowSave, retryError ? &*retryError : nullptr);
  });
}
