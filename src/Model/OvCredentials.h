#pragma once

#include "Model/RecordFields.h"
#include "Model/SecretText.h"

#define ORVANE_CREDENTIALS_FIELDS(ROW)                                                                   \
  ROW(std::string, username, Username, {}, "username", archived(&Record::needToSave_))                   \
  ROW(SecretText, password, Password, {}, nullptr, neverArchived()) /* the farm store keeps it apart */  \
  ROW(std::string, domain, Domain, {}, "domain", archived(&Record::needToSave_))                         \
  ROW(std::string, preferredDomain, PreferredDomain, {}, "preferredDomain",                              \
      archived()) /* the configuration's, for the prompt */                                              \
  ROW(bool, disableUserDomain, DisableUserDomain, false, "disableUserDomain", archived()) /* likewise */ \
  ROW(bool, needToSave, NeedToSave, false, "doSave", archived())                                         \
  ROW(bool, credentialsAreValid, CredentialsAreValid, false, "credentialsAreValid",                      \
      archived()) /* may be sent without asking the user */

/// As whom a farm is used. A value; no lock. Comparing takes in the password, which no archive has.
class OvCredentials {
  ORVANE_RECORD(Credentials, ORVANE_CREDENTIALS_FIELDS)

 public:
  OvCredentials() = default;
  /// Takes all fields of `other`; does nothing if it is null.
  void setEqualToCredentials(const OvCredentials* other);

  /// Whether there is no user name; password and domain play no part.
  bool isEmpty() const { return username_.empty(); }
  /// Forgets the user, and keeps what the configuration said of domains.
  void clear();
  /// The broker refused them: forgets the password, and the user too unless they are to be saved.
  void invalidateCredentials();
};

#undef ORVANE_CREDENTIALS_FIELDS
